#include "example_page.h"

#include "example_dialog.h"
#include "json_report.h"
#include "missing_resource.h"
#include "page_host.h"
#include "window_run.h"

#include <commondlg3/resources.h>

#include <cpil/catalog.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>

#include <wx/stattext.h>

#include <algorithm>

namespace gallery {

example_page_t::example_page_t(const example_record_t& record) : m_record(record)
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
    set_resource_object("pref.example");
    set_help_id(1);
}

void example_page_t::set_max_text_limit()
{
    m_name = commondlg3::from_xrc<wxTextCtrl>(this, "m_name");
    m_notes = commondlg3::from_xrc<wxTextCtrl>(this, "m_notes");
    set_max_len_options(m_name, {text("example.field.name"), max_name_length,
                                 CPIL_2_18::i18n::catalog_key("example.limit_hint.name")});
    set_max_len_options(m_notes, {text("example.field.notes"), max_notes_length,
                                  CPIL_2_18::i18n::catalog_key("example.limit_hint.notes")});
    pref_base_t::set_max_text_limit();
}

void example_page_t::on_init_dialog()
{
    if (!m_name || !m_notes)
        return;
    m_name->ChangeValue(wx_helpers1::to_wx(m_record.name));
    m_notes->ChangeValue(wx_helpers1::to_wx(m_record.notes));
    m_name->SetFocus();
}

void example_page_t::on_update_ui_settings()
{
    constexpr int columns = 50;
    pref_base_t::on_update_ui_settings();
    auto* description = commondlg3::from_xrc<wxStaticText>(this, "m_description");
    if (!description)
        return;
    const int width = std::min(columns * GetCharWidth(), wxGetDisplaySize().x * 2 / 3);
    wx_helpers1::set_wrap_width(description, width);
    description->SetMinSize(wxSize(width, wx_helpers1::height_for_width(description, width)));
}

void example_page_t::on_help()
{
    show_help(object_name, "gallery.example_page", this);
}

bool example_page_t::save_settings()
{
    if (!m_name || !m_notes)
        return true;
    m_record.name = wx_helpers1::from_wx(m_name->GetValue());
    m_record.notes = wx_helpers1::from_wx(m_notes->GetValue());
    return true;
}

int open_example_page(const nlohmann::json& data, wxWindow* parent)
{
    constexpr auto object = example_page_t::object_name;
    return window_run_t::run(object, parent, {own_layout(object)}, [&](window_run_t& run) {
        auto* page = new example_page_t({get_string(data, "name", ""), get_string(data, "notes", "")});
        page_host_t host(page);
        report_end_of(*page, object);
        run.show(host);
        run.set_data({{"name", page->get_data().name}, {"notes", page->get_data().notes}});
    });
}

} // namespace gallery
