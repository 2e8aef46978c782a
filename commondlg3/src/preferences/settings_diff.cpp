#include "settings_diff.h"

#include "commondlg3/text_utils.h"

#include <gen_helpers2/strings.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace commondlg3 {
namespace {

using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

std::string without_colon(std::string text)
{
    for (const char* colon : {":", "\xEF\xBC\x9A"}) { // the full-width one as well
        const std::string end = colon;
        if (text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0)
            text.resize(text.size() - end.size());
    }
    return text;
}

std::string text_of_value(const variant_t& value)
{
    switch (value.type()) {
    case gen_helpers2::variant_type_t::boolean:
        return value.get<bool>() ? translate_message("preferences.on") : translate_message("preferences.off");
    case gen_helpers2::variant_type_t::integer:
    case gen_helpers2::variant_type_t::integer64:
        return std::to_string(value.get<long long>());
    case gen_helpers2::variant_type_t::real:
        return wx_helpers1::from_wx(wxString::FromDouble(value.get<double>()));
    default:
        return gen_helpers2::replace_invalid_utf8(value.get<std::string>());
    }
}

void append_texts(const variant_bag_t& bag, std::string& text)
{
    for (const auto& item : bag) {
        if (item.is_child()) {
            append_texts(*item.child(), text);
        } else if (const std::string value = text_of_value(item.value()); !value.empty()) {
            text += (text.empty() ? "" : ", ") + value;
        }
    }
}

/// All items of that name, as people read them.
std::string text_of(const variant_bag_t& bag, std::string_view name)
{
    constexpr std::size_t most_bytes = 300; // a row of a list
    std::string text;
    append_texts(pick_settings(bag, {std::string(name)}), text);
    return text.size() > most_bytes
               ? gen_helpers2::replace_invalid_utf8(text.substr(0, most_bytes)) + "\xE2\x80\xA6"
               : text;
}

std::string label_of(const wxWindow& control)
{
    const auto* labelled = dynamic_cast<const wxControl*>(&control);
    const bool has_own =
        dynamic_cast<const wxCheckBox*>(&control) || dynamic_cast<const wxRadioButton*>(&control);
    if (labelled && has_own)
        return wx_helpers1::from_wx(labelled->GetLabelText());
    for (const wxWindow* before = control.GetPrevSibling(); before; before = before->GetPrevSibling())
        if (const auto* label = dynamic_cast<const wxStaticText*>(before))
            return wx_helpers1::from_wx(label->GetLabelText());
    return {};
}

std::vector<std::string> names_of_changed(const variant_bag_t& before, const variant_bag_t& after)
{
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const auto& item : after) {
        const std::string name(item.name());
        if (seen.insert(name).second && pick_settings(before, {name}) != pick_settings(after, {name}))
            names.push_back(name);
    }
    return names;
}

} // namespace

variant_bag_t pick_settings(const variant_bag_t& from, const std::vector<std::string>& names)
{
    variant_bag_t picked;
    for (const auto& item : from) {
        if (std::find(names.begin(), names.end(), item.name()) == names.end())
            continue;
        if (item.is_child())
            picked.add_child(item.name(), *item.child());
        else
            picked.add_value(item.name(), item.value());
    }
    return picked;
}

std::string get_setting_title(const preferences_page_t& page, const std::string& name)
{
    for (const auto& setting : page.get_setting_controls()) {
        if (setting.name != name)
            continue;
        std::string title = setting.title;
        if (title.empty() && setting.control)
            title = label_of(*setting.control);
        if (!title.empty())
            return without_colon(title);
    }
    return name;
}

variant_bag_t pick_changed(const variant_bag_t& before, const variant_bag_t& after)
{
    return pick_settings(after, names_of_changed(before, after));
}

std::vector<setting_change_t> find_changes(const preferences_page_t& page, const variant_bag_t& before,
                                           const variant_bag_t& after)
{
    std::vector<setting_change_t> changes;
    for (const std::string& name : names_of_changed(before, after))
        changes.push_back({name, get_setting_title(page, name), text_of(before, name), text_of(after, name)});
    return changes;
}

} // namespace commondlg3
