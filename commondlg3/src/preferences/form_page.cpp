#include "commondlg3/form_page.h"
#include "commondlg3/message_window.h"
#include "commondlg3/resources.h"

#include <wx_helpers1/text.h>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/radiobut.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

#include <functional>
#include <utility>

namespace commondlg3 {
namespace {

using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

/// The controls of a form, as its layout has them.
class form_t : public pref_base_t
{
public:
    explicit form_t(const form_page_t::layout_t& layout)
    {
        set_resource_file(create_resource_filename(layout.archive, layout.member));
        m_catalog_name = layout.catalog;
        set_resource_object(layout.object);
    }
};

/// Those that the page makes itself.
class made_form_t : public pref_base_t
{
public:
    explicit made_form_t(std::function<void(wxPanel&)> make_controls)
        : m_make_controls(std::move(make_controls))
    {
    }

    bool load_from_xml_resource(wxWindow* parent, const std::string&, const std::string&,
                                const std::string&) override
    {
        Create(parent);
        m_make_controls(*this);
        return true;
    }

private:
    std::function<void(wxPanel&)> m_make_controls;
};

/// The empty variant for a control that holds none.
variant_t value_of(const wxWindow& control)
{
    if (const auto* box = dynamic_cast<const wxCheckBox*>(&control))
        return box->GetValue();
    if (const auto* button = dynamic_cast<const wxRadioButton*>(&control))
        return button->GetValue();
    if (const auto* number = dynamic_cast<const wxSpinCtrl*>(&control))
        return number->GetValue();
    if (const auto* choice = dynamic_cast<const wxChoice*>(&control))
        return choice->GetSelection();
    if (const auto* text = dynamic_cast<const wxTextEntry*>(&control))
        return wx_helpers1::from_wx(text->GetValue());
    return {};
}

// What a control cannot hold, it does not take.
void put_value(wxWindow& control, const variant_t& value)
{
    if (auto* box = dynamic_cast<wxCheckBox*>(&control)) {
        box->SetValue(value.get<bool>());
    } else if (auto* button = dynamic_cast<wxRadioButton*>(&control)) {
        button->SetValue(value.get<bool>());
    } else if (auto* number = dynamic_cast<wxSpinCtrl*>(&control)) {
        if (value.get<int>() >= number->GetMin() && value.get<int>() <= number->GetMax())
            number->SetValue(value.get<int>());
    } else if (auto* choice = dynamic_cast<wxChoice*>(&control)) {
        if (value.get<int>() >= 0 && value.get<int>() < static_cast<int>(choice->GetCount()))
            choice->SetSelection(value.get<int>());
    } else if (auto* text = dynamic_cast<wxTextEntry*>(&control)) {
        text->ChangeValue(wx_helpers1::to_wx(value.get<std::string>()));
    }
}

} // namespace

form_page_t::form_page_t(settings_file_ptr_t file, std::string name, layout_t layout)
    : m_file(std::move(file)), m_name(std::move(name)), m_layout(std::move(layout))
{
}

form_page_t::form_page_t(settings_file_ptr_t file, std::string name)
    : form_page_t(std::move(file), std::move(name), layout_t())
{
}

form_page_t::~form_page_t() = default;

void form_page_t::make_controls(wxPanel&) {}

void form_page_t::add(const std::string& name, const std::string& control, variant_t usual)
{
    m_fields.push_back({name, control, std::move(usual)});
}

std::string form_page_t::text(const std::string& key) const
{
    return message_window_t::get_message(m_layout.catalog, key, {});
}

wxWindow* form_page_t::find(const std::string& control) const
{
    return m_page ? from_xrc<wxWindow>(m_page.get(), control) : nullptr;
}

gen_helpers2::error_code_t form_page_t::load()
{
    return m_file->load();
}

gen_helpers2::error_code_t form_page_t::save()
{
    return m_file->save();
}

std::vector<gen_helpers2::path_t> form_page_t::get_files() const
{
    if (m_file->get_path().is_empty())
        return {};
    return {m_file->get_path()};
}

pref_base_t* form_page_t::create(wxWindow* parent)
{
    if (m_layout.object.empty())
        m_page = new made_form_t([this](wxPanel& page) { make_controls(page); });
    else
        m_page = new form_t(m_layout);
    m_page->create(parent);
    set_settings(get_kept());
    return m_page.get();
}

variant_bag_t form_page_t::get_kept() const
{
    variant_bag_t kept;
    const bool is_there = m_file->get()->has_child(m_name);
    for (const field_t& field : m_fields) {
        const auto value = is_there ? m_file->get()->get_child(m_name)->get_value(field.name) : variant_t();
        kept.put(field.name, value.type() == field.usual.type() ? value : field.usual);
    }
    return kept;
}

bool form_page_t::is_changed() const
{
    if (!m_page)
        return false;
    const variant_bag_t kept = get_kept();
    return with_entered(kept) != kept;
}

void form_page_t::store()
{
    const auto kept = m_file->get()->get_child(m_name);
    for (const auto& item : get_settings())
        if (kept->get_value(std::string(item.name())) != item.value())
            kept->set_value(std::string(item.name()), item.value());
}

variant_bag_t form_page_t::get_settings() const
{
    return with_entered(get_kept());
}

variant_bag_t form_page_t::with_entered(variant_bag_t settings) const
{
    for (const field_t& field : m_fields)
        if (const wxWindow* control = find(field.control)) {
            const variant_t value = value_of(*control);
            if (value.type() == field.usual.type())
                settings.put(field.name, value);
        }
    return settings;
}

void form_page_t::set_settings(const variant_bag_t& settings)
{
    for (const field_t& field : m_fields) {
        const variant_t* value = settings.find_value(field.name);
        wxWindow* control = find(field.control);
        if (value && control && value->type() == field.usual.type())
            put_value(*control, *value);
    }
}

variant_bag_t form_page_t::get_defaults() const
{
    variant_bag_t usual;
    for (const field_t& field : m_fields)
        usual.put(field.name, field.usual);
    return usual;
}

std::vector<preferences_page_t::setting_t> form_page_t::get_setting_controls() const
{
    std::vector<setting_t> settings;
    for (const field_t& field : m_fields)
        settings.push_back({field.name, find(field.control), std::string()});
    return settings;
}

} // namespace commondlg3
