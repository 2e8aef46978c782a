#pragma once

#include <string>

namespace commondlg3 {

/// The label of a button as a text. Some languages put the letter into parentheses behind the word.
inline std::string without_mnemonic(std::string label)
{
    const auto letter = label.find('&');
    if (letter == std::string::npos)
        return label;
    const bool behind = letter > 0 && label[letter - 1] == '(' && label.find(')', letter) == label.size() - 1;
    return behind ? label.substr(0, letter - 1) : label.erase(letter, 1);
}

} // namespace commondlg3
