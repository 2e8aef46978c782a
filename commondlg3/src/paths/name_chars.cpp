#include "commondlg3/name_chars.h"

#include <gen_helpers2/path.h>

#include <algorithm>
#include <bitset>
#include <string_view>

namespace commondlg3 {
namespace {

std::string char_at(std::string_view chars, int index)
{
    return index >= 0 && index < static_cast<int>(chars.size()) ? std::string(1, chars[index])
                                                                : std::string();
}

// One pass whatever the size of the set: names are cleaned by the thousand, and most have nothing to remove.
bool remove_chars(std::string& text, std::string_view chars)
{
    std::bitset<256> disabled;
    for (const char c : chars)
        disabled.set(static_cast<unsigned char>(c));
    const auto end = std::remove_if(text.begin(), text.end(),
                                    [&](char c) { return disabled[static_cast<unsigned char>(c)]; });
    const bool changed = end != text.end();
    text.erase(end, text.end());
    return changed;
}

} // namespace

bool check_file_name_for_chars(const std::string& name, const std::string& chars)
{
    return !gen_helpers2::path_t(name).is_empty() && check_string_for_disabled_symbols(name, chars);
}

bool check_folder_name_for_chars(const std::string& name)
{
    return check_file_name_for_chars(name, disabled_folder_chars);
}

bool check_string_for_disabled_symbols(const std::string& text, const std::string& chars)
{
    return text.find_first_of(chars) == std::string::npos;
}

std::string create_disabled_char_string(int index)
{
    return char_at(disabled_file_chars, index);
}

std::string create_disabled_char_string(const std::string& chars, int index)
{
    return char_at(chars, index);
}

std::string create_disabled_folder_char_string(int index)
{
    return char_at(disabled_folder_chars, index);
}

bool replace_disabled_chars(std::string& text, const std::string& chars)
{
    return remove_chars(text, chars);
}

bool replace_disabled_chars(std::string& text)
{
    return remove_chars(text, disabled_file_chars);
}

bool replace_disabled_chars_in_folder(std::string& text)
{
    return remove_chars(text, disabled_folder_chars);
}

} // namespace commondlg3
