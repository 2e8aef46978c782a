#include "example_dialog.h"

#include "json_report.h"
#include "missing_resource.h"
#include "window_run.h"

#include <commondlg3/message_window.h>
#include <commondlg3/resources.h>
#include <cpil/catalog.h>
#include <wx_helpers1/text.h>

#include <string>

namespace gallery {

example_dialog_t::example_dialog_t(const example_record_t& record) : m_record(record)
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
    set_resource_object("dlg.example");
    set_help_topic("gallery.example");
    set_help_id(1);
}

void example_dialog_t::set_max_text_limit()
{
    m_name = commondlg3::from_xrc<wxTextCtrl>(this, "m_name");
    m_notes = commondlg3::from_xrc<wxTextCtrl>(this, "m_notes");
    set_max_len_options(m_name, {text("example.field.name"), max_name_length,
                                 CPIL_2_18::i18n::catalog_key("example.limit_hint.name")});
    set_max_len_options(m_notes, {text("example.field.notes"), max_notes_length,
                                  CPIL_2_18::i18n::catalog_key("example.limit_hint.notes")});
    dialog_base_t::set_max_text_limit();
}

void example_dialog_t::on_init_dialog()
{
    m_name->ChangeValue(wx_helpers1::to_wx(m_record.name));
    m_notes->ChangeValue(wx_helpers1::to_wx(m_record.notes));
    m_name->SetFocus();
    fit_to_contents();
    centre_on_parent();
}

bool example_dialog_t::save_settings()
{
    m_record.name = wx_helpers1::from_wx(m_name->GetValue());
    m_record.notes = wx_helpers1::from_wx(m_notes->GetValue());
    return true;
}

void show_help(const std::string& object, const std::string& topic, wxWindow* parent)
{
    report_signal(object, "help", topic);
    auto window = commondlg3::message_window_t::simple_error_wnd("gallery", "example.help.title",
                                                                 "example.help.text", {}, {});
    window.icon_type = commondlg3::message_window_t::icon_types_t::information;
    commondlg3::show_modal(window, parent);
}

int open_example_dialog(const nlohmann::json& data, wxWindow* parent)
{
    constexpr auto object = example_dialog_t::object_name;
    return window_run_t::run(object, parent, {own_layout(object)}, [&](window_run_t& run) {
        example_dialog_t dialog({get_string(data, "name", ""), get_string(data, "notes", "")});
        dialog.get_help_signal().connect(&dialog, [&dialog](const std::string& topic) {
            show_help(example_dialog_t::object_name, topic, &dialog);
        });
        run.show(dialog);
        run.set_data({{"name", dialog.get_data().name}, {"notes", dialog.get_data().notes}});
    });
}

} // namespace gallery
