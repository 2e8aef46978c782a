#include "commondlg3/path_validation.h"

#include "base/kept_text.h"
#include "commondlg3/generic_base.h"
#include "commondlg3/name_chars.h"
#include "commondlg3/text_utils.h"
#include "disk_question.h"
#include "path_field.h"

#include <cfgmgr2/message_catalog.h>
#include <cpil/catalog.h>
#include <cpil/strings.h>
#include <gen_helpers2/environment.h>
#include <rdmgr2/result_directory_manager.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/gdicmn.h>

#include <algorithm>
#include <memory>

namespace commondlg3 {
namespace {

using gen_helpers2::path_t;

const std::string& restriction_text()
{
    return kept_text(CPIL_2_18::i18n::catalog_key("restricted_symbols_message"));
}

const std::string& empty_field_text()
{
    return kept_text(CPIL_2_18::i18n::catalog_key("pref.result_saving.undefined_tooltip_text"));
}

wxColour text_colour()
{
    const auto* settings = wx_helpers1::ui_settings_t::get();
    return settings ? settings->get_colour(wx_helpers1::ui_colour::text) : wxColour();
}

// Where a position of the old text is in the new one: characters that were removed before it do not count.
long moved(const wxString& text, long position, const std::string& disabled_chars)
{
    std::string before = wx_helpers1::from_wx(text.Left(position));
    replace_disabled_chars(before, disabled_chars);
    return static_cast<long>(wx_helpers1::to_wx(before).length());
}

void put_back(wxTextCtrl* ctrl, const wxString& old_value, const wxString& new_value,
              const std::string& disabled_chars)
{
    const long caret = moved(old_value, ctrl->GetInsertionPoint(), disabled_chars);
    long from = 0;
    long to = 0;
    ctrl->GetSelection(&from, &to);
    from = moved(old_value, from, disabled_chars);
    to = moved(old_value, to, disabled_chars);
    ctrl->ChangeValue(new_value);
    if (from != to)
        ctrl->SetSelection(from, to);
    else
        ctrl->SetInsertionPoint(caret);
}

struct cleaned_t
{
    bool looked_at = false;
    bool acceptable = true;
    std::string tooltip;
};

// Cleans the field without marking it: a caller that knows more marks it once, since each change of a tool
// tip restarts its hover timer.
cleaned_t clean(wxTextCtrl* ctrl, bool check_path, const std::string& disabled_chars)
{
    if (!cfgmgr2::getMessageCatalog("commondlg") || !ctrl)
        return {};
    const wxString value = ctrl->GetValue();
    if (value.empty())
        return {true, true, empty_field_text()};
    std::string text = wx_helpers1::from_wx(value);
    const bool removed = replace_disabled_chars(text, disabled_chars);
    int error_position = -1;
    const bool valid = !check_path || path_t::validate(text, true, error_position);
    if (removed)
        put_back(ctrl, value, wx_helpers1::to_wx(text), disabled_chars);
    cleaned_t cleaned{true, valid, std::string()};
    if (removed || !valid)
        cleaned.tooltip = get_restricted_chars_text(disabled_chars);
    if (removed && !valid)
        cleaned.tooltip = empty_field_text() + "\n\n" + cleaned.tooltip;
    return cleaned;
}

std::vector<std::string> folders_of_environment()
{
    std::vector<std::string> folders;
    const std::string path = gen_helpers2::get_environ_value("PATH");
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(':', start), path.size());
        folders.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return folders;
}

} // namespace

wxColour get_path_error_colour()
{
    return *wxStockGDI::GetColour(wxStockGDI::COLOUR_RED);
}

std::string get_restricted_chars_text(const std::string& chars)
{
    std::string listed;
    for (int i = 0; i < static_cast<int>(chars.size()); ++i)
        listed += (i ? "  " : "") + create_disabled_char_string(chars, i);
    return get_disabled_tooltip_text(restriction_text(), listed, true);
}

bool clean_path_field(wxTextCtrl* ctrl, const std::string& disabled_chars)
{
    return clean(ctrl, true, disabled_chars).acceptable;
}

template <class Ctrl>
bool validate_path(Ctrl* ctrl, bool check_path, const std::string& disabled_chars)
{
    const cleaned_t cleaned = clean(ctrl, check_path, disabled_chars);
    if (cleaned.looked_at)
        set_color_and_tooltip(ctrl, cleaned.tooltip,
                              cleaned.tooltip.empty() ? text_colour() : get_path_error_colour());
    return cleaned.acceptable;
}

template COMMONDLG3_EXPORT bool validate_path<wxTextCtrl>(wxTextCtrl*, bool, const std::string&);

std::string find_in_folders(const std::string& name, const std::vector<std::string>& folders)
{
    const path_t path(name);
    if (path.is_absolute())
        return path.exists() ? name : std::string();
    for (const std::string& folder : folders) {
        path_t found(folder);
        if (found.is_absolute() && found.append(path).exists())
            return found.as_string();
    }
    return std::string();
}

std::optional<path_message_t> check_path(path_t path, bool must_exist)
{
    using rdmgr2::ResultDirectoryManager;
    if (!path.normalize() || !path.is_absolute())
        return path_message_t::empty_relative;
    if (must_exist)
        return path.exists() ? std::optional<path_message_t>() : path_message_t::nonexisting;
    for (path_t at = path; !at.is_empty(); at = at.get_branch()) {
        if (ResultDirectoryManager::isReservedDirectoryName(CPIL_2_18::strings::to_upper(at.get_leaf())))
            return path_message_t::nonexisting_parent_dir;
        if (at.exists())
            return std::nullopt;
    }
    return path_message_t::nonexisting_parent_dir;
}

template <class Base>
std::string generic_base_t<Base>::find_in_environment(const std::string& name)
{
    return find_in_folders(name, folders_of_environment());
}

template <class Base>
std::string generic_base_t<Base>::find_in_search_paths(const std::string& name)
{
    return find_in_folders(name, m_search_paths);
}

template <class Base>
template <class Ctrl>
bool generic_base_t<Base>::check_file_or_folder(Ctrl* ctrl, bool must_exist, bool, bool search_environment)
{
    if (!ctrl)
        return false;
    const bool chars_ok = clean_path_field(ctrl, disabled_folder_chars);
    const path_t typed(wx_helpers1::from_wx(ctrl->GetValue()));
    // The look may outlive this page.
    const auto wrong = std::make_shared<std::optional<path_message_t>>();
    const auto look = [=, folders = search_environment ? m_search_paths : std::vector<std::string>()] {
        path_t path = typed;
        if (search_environment && !path.is_absolute()) {
            std::string found = find_in_folders(typed.as_string(), folders_of_environment());
            if (found.empty())
                found = find_in_folders(typed.as_string(), folders);
            if (!found.empty())
                path = path_t(found);
        }
        *wrong = check_path(path, must_exist);
    };
    std::optional<path_message_t> verdict;
    if (!chars_ok)
        verdict = path_message_t::empty_relative;
    else if (ask_disk(look, patience_on_ok))
        verdict = *wrong;
    tell_path_verdict(ctrl, verdict, !typed.is_empty());
    return !verdict;
}

template <class Base>
void generic_base_t<Base>::tell_path_verdict(wxTextCtrl* ctrl, std::optional<path_message_t> wrong,
                                             bool has_path)
{
    mark_path_field(ctrl, wrong, has_path);
    if (m_path_checks_told)
        m_path_checked_signal.emit(!wrong);
}

template <class Base>
std::string generic_base_t<Base>::get_path_trouble(path_message_t wrong) const
{
    return m_path_messages[static_cast<std::size_t>(wrong)] + " " +
           m_path_messages[static_cast<std::size_t>(path_message_t::enter_valid_path)];
}

template <class Base>
void generic_base_t<Base>::mark_path_field(wxTextCtrl* ctrl, std::optional<path_message_t> wrong,
                                           bool has_path)
{
    set_color_and_tooltip(ctrl, wrong ? get_path_trouble(*wrong) : std::string(),
                          wrong && has_path ? get_path_error_colour() : text_colour());
}

template COMMONDLG3_EXPORT std::string generic_base_t<wxPanel>::find_in_environment(const std::string&);
template COMMONDLG3_EXPORT std::string generic_base_t<wxPanel>::find_in_search_paths(const std::string&);
template COMMONDLG3_EXPORT bool generic_base_t<wxPanel>::check_file_or_folder<wxTextCtrl>(wxTextCtrl*, bool,
                                                                                          bool, bool);
template COMMONDLG3_EXPORT std::string generic_base_t<wxPanel>::get_path_trouble(path_message_t) const;
template COMMONDLG3_EXPORT void
generic_base_t<wxPanel>::tell_path_verdict(wxTextCtrl*, std::optional<path_message_t>, bool);
template COMMONDLG3_EXPORT void generic_base_t<wxPanel>::mark_path_field(wxTextCtrl*,
                                                                         std::optional<path_message_t>, bool);

} // namespace commondlg3
