#pragma once

#include <wx_helpers1/text.h>

#include <wx/utils.h>

#include <string>

namespace commondlg3 {

/// The label of a button as a text. Some languages put the letter into parentheses behind the word.
inline std::string without_mnemonic(const std::string& label)
{
    return wx_helpers1::from_wx(
        wxStripMenuCodes(wx_helpers1::to_wx(label), wxStrip_Mnemonics | wxStrip_CJKMnemonics));
}

} // namespace commondlg3
