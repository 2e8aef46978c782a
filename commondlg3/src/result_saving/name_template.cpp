#include "commondlg3/name_chars.h"
#include "commondlg3/result_saving_pp.h"

#include <cctrl2/collection_controller.h>
#include <rdmgr2/result_directory_manager.h>

#include <algorithm>
#include <locale>
#include <string>

namespace commondlg3 {
namespace {

constexpr char placeholder = '@';

} // namespace

bool result_saving_pp_t::replace_wrong_ats(std::string& text)
{
    constexpr std::size_t longest = rdmgr2::ResultDirectoryManager::max_digits;
    const std::size_t start = text.find(placeholder);
    if (start == std::string::npos)
        return false;
    const std::size_t end = std::min(text.find_first_not_of(placeholder, start), text.size());
    bool changed = false;
    const std::size_t second = text.find(placeholder, end);
    if (second != std::string::npos) {
        text.erase(std::remove(text.begin() + static_cast<std::ptrdiff_t>(second), text.end(), placeholder),
                   text.end());
        changed = true;
    }
    if (end - start > longest) {
        text.erase(start + longest, end - start - longest);
        changed = true;
    }
    return changed;
}

bool result_saving_pp_t::filter_result_template(std::string& text)
{
    const std::locale locale;
    while (!text.empty() && std::isspace(text.back(), locale))
        text.pop_back();
    const bool chars_changed = replace_disabled_chars(text);
    const bool ats_changed = replace_wrong_ats(text);
    if (text.find(placeholder) != std::string::npos &&
        !rdmgr2::ResultDirectoryManager::validateResultDirectoryPattern(text))
        return chars_changed || ats_changed;
    text = cctrl2::ICollectionController::get()->getDefaultResultDirectoryName(true);
    return true;
}

} // namespace commondlg3
