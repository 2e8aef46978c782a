// Names every class, operation and value of the dialogs, messages and panels, as a product does that was
// written against their documentation: what is missing, hidden or has other arguments does not compile or
// link.
#include "interface.h"

#include <commondlg3/advanced_panel.h>
#include <commondlg3/caption_panel.h>
#include <commondlg3/choosers.h>
#include <commondlg3/dialog_base.h>
#include <commondlg3/error_warning_dialog.h>
#include <commondlg3/help_flavor.h>
#include <commondlg3/image_loader.h>
#include <commondlg3/message_window.h>
#include <commondlg3/pref_base.h>
#include <commondlg3/resources.h>
#include <commondlg3/simple_message_panel.h>
#include <commondlg3/text_utils.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>

#include <string>
#include <type_traits>

using namespace commondlg3;
using CPIL_2_18::generic::varg_list;
using std::string;

namespace {

template <class Base>
struct base_names_t : Base
{
    using base_t =
        std::conditional_t<std::is_base_of_v<wxPanel, Base>, generic_base_t<wxPanel>, generic_base_t<dummy>>;
    static void name()
    {
        named<bool()>(&base_names_t::save_settings);
        named<bool(wxWindow*, const string&, const string&, const string&)>(
            &base_names_t::load_from_xml_resource);
        named<void(int)>(&base_names_t::end_dialog);
        named<void()>(&base_names_t::on_init_dialog, &base_names_t::on_ok, &base_names_t::on_cancel,
                      &base_names_t::on_help, &base_names_t::on_update_ui_settings,
                      &base_names_t::load_auxiliary_strings, &base_names_t::set_max_text_limit);
        named<void(wxCommandEvent&)>(&base_names_t::handle_ok, &base_names_t::handle_cancel,
                                     &base_names_t::handle_help, &base_names_t::on_max_len,
                                     &base_names_t::on_text_changed);
        named<void(wxTimerEvent&)>(&base_names_t::handle_timer_event);
        named<void(wxInitDialogEvent&)>(&base_names_t::handle_init_dialog_event);
        named<void(wxCloseEvent&)>(&base_names_t::handle_close);
        named<max_len_options_t(wxTextCtrl*)>(&base_names_t::gen_max_len_options);
        named<void(wxWindowList&)>(&base_names_t::on_update_ui_settings_recursively);
        named<void(wxStaticText*, const string&, wxFont)>(&base_names_t::set_multiline_text);
        named_free(&base_names_t::m_btn_ok, &base_names_t::m_btn_cancel, &base_names_t::m_btn_help);
    }
};

struct image_names_t : image_loader_t
{
    static void name()
    {
        named<void()>(&image_names_t::create_image_names_map, &image_names_t::create_animation_names_map);
        named<wx_helpers1::wxStaticPicture(image_type_t)>(&image_names_t::load_image);
        named_free(&image_loader_t::get);
        // The names are the library's, at their places.
        static_assert(
            image_loader_t::advanced_close == 0 && image_loader_t::up == 8 && image_loader_t::down == 9 &&
            image_loader_t::cross == 10 && image_loader_t::error12 == 11 &&
            image_loader_t::severity_critical == 15 && image_loader_t::error24 == 19 &&
            image_loader_t::scroll_left_normal == 23 && image_loader_t::scroll_right_disabled == 30 &&
            image_loader_t::advanced_cb_close == 31 && image_loader_t::advanced_cb_open_disabled == 38);
        static_assert(image_loader_t::progress == 0);
        image_loader_t::get().load_animation(image_loader_t::progress);
    }
};

struct check_box_t : gen_helpers2::ref_counted_of_t<i_check_box_definition>
{
    string get_name() const override { return {}; }
    bool get_default_checked() const override { return false; }
    void reset() override {}
    bool is_checked() const override { return true; }
    void set_checked(bool) override {}
    void commit() override {}
    string get_label() const override { return {}; }
};

struct panel_names_t : error_warning_panel_t
{
    static void name()
    {
        named<void()>(&panel_names_t::load_images, &panel_names_t::fill_controls,
                      &panel_names_t::fill_text_controls);
        named<void(wxStaticText*, bool, const string&, const wxFont&)>(&panel_names_t::fill_static_text);
        named<int(bool) const>(&panel_names_t::max_string_len_in_label);
        named<void(int)>(&panel_names_t::set_max_main_msg_width, &panel_names_t::set_max_supp_msg_width);
        named<void(const wx_helpers1::wxAnimation&)>(&panel_names_t::set_animation);
        named<void(bool) const>(&panel_names_t::save_check_box_state);
        named<message_window_t() const>(&panel_names_t::get_window_data);
    }
};

struct message_dialog_names_t : error_warning_dialog_t
{
    static void name()
    {
        named<error_warning_panel_t*() const>(&message_dialog_names_t::get_panel);
        named<void(generic_base_t<wxPanel>*, int)>(&message_dialog_names_t::on_end_panel);
    }
};

struct caption_names_t : caption_panel_t
{
    using caption_panel_t::caption_panel_t;
    static void name()
    {
        using severity = caption_panel_t::severity_t;
        static_assert(static_cast<int>(severity::critical) == 0 &&
                      static_cast<int>(severity::information) == 3);
        named<void(const string&, const string&)>(&caption_names_t::init);
        named<void()>(&caption_names_t::create_top_controls, &caption_names_t::clear_messages,
                      &caption_names_t::show_next_message, &caption_names_t::show_prev_message,
                      &caption_names_t::hide_message_pane, &caption_names_t::disable,
                      &caption_names_t::set_button_images, &caption_names_t::on_ui_changed);
        named<void(const string&)>(&caption_names_t::set_caption, &caption_names_t::set_description);
        named<int(severity, const string&)>(&caption_names_t::add_message);
        named<void(int, const string&)>(&caption_names_t::edit_message);
        named<void(int)>(&caption_names_t::remove_message);
        named<int(int) const>(&caption_names_t::get_message_index, &caption_names_t::get_message_id);
        named<message_info_t(int) const>(&caption_names_t::get_message);
        named<int() const>(&caption_names_t::get_message_count);
        named<void(int, bool)>(&caption_names_t::show_message);
        named<bool()>(&caption_names_t::update_buttons);
        named<void(bool)>(&caption_names_t::set_read_only);
        named<bool() const>(&caption_names_t::get_read_only);
        named<void(wx_helpers1::style_t)>(&caption_names_t::set_style);
        named<void(wxSizeEvent&)>(&caption_names_t::on_size);
        named_free(&caption_panel_t::get_picture);
    }
};

struct label_names_t : caption_label_t
{
    static void name()
    {
        named<void(const string&)>(&label_names_t::set_label);
        named<bool(int)>(&label_names_t::wrap_to_width);
        named<int() const>(&label_names_t::get_line_num);
        named<void(int)>(&label_names_t::update_delta);
        named<wxSize() const>(&label_names_t::DoGetBestSize);
        named<void(int, int, int, int, int)>(&label_names_t::DoSetSize);
    }
};

struct folding_names_t : advanced_panel_t
{
    static void name()
    {
        named<void(const string&)>(&folding_names_t::init, &folding_names_t::set_caption);
        named<void(wxWindow*, int, int, int, wxObject*)>(&folding_names_t::add);
        named<void(wxSizer*, int, int, int, wxObject*)>(&folding_names_t::add);
        named<void()>(&folding_names_t::clear, &folding_names_t::update_min_size,
                      &folding_names_t::load_button_images, &folding_names_t::propagate_button_images,
                      &folding_names_t::apply_colors, &folding_names_t::reset_border,
                      &folding_names_t::on_open_close);
        named<void(bool)>(&folding_names_t::open);
        named<bool() const>(&folding_names_t::is_opened);
        named<bool()>(&folding_names_t::Layout);
        named<bool(bool)>(&folding_names_t::Enable);
        named<void(bool, int, wxImage&)>(&folding_names_t::set_button_image);
        named<void(wxSizeEvent&)>(&folding_names_t::on_resize);
    }
};

} // namespace

void name_messages()
{
    base_names_t<dialog_base_t>::name();
    base_names_t<pref_base_t>::name();
    named<void(wxWindow*)>(&pref_base_t::create);
    named<bool(wxTextCtrl*, bool, bool, bool)>(&pref_base_t::check_file_or_folder<wxTextCtrl>);
    named<string(const string&)>(&pref_base_t::find_in_environment, &pref_base_t::find_in_search_paths);
    named<int(wxWindow*)>(&dialog_base_t::show_modal);
    named<bool(wxWindow*, bool)>(&dialog_base_t::show_nonmodal);
    named<void(wxCloseEvent&)>(&dialog_base_t::handle_close);
    named<void(wxHelpEvent&)>(&dialog_base_t::handle_dialog_help);
    named<void()>(&dialog_base_t::help_activated);
    named<void(const string&)>(&dialog_base_t::set_help_topic, &dialog_base_t::set_title);
    named<string() const>(&dialog_base_t::get_title);
    named<wxSize(float, float, const wxSize&) const>(&dialog_base_t::get_proportional_size);
    image_names_t::name();
    panel_names_t::name();
    message_dialog_names_t::name();
    caption_names_t::name();
    label_names_t::name();
    named<void(simple_message_panel_t::severity_t, const string&)>(&simple_message_panel_t::set_message);
    named<void(bool)>(&simple_message_panel_t::enable);
    named<void(wxSizeEvent&)>(&simple_message_panel_t::on_size);
    named<void()>(&simple_message_panel_t::on_ui_changed);
    folding_names_t::name();
    named_free(&create_resource_filename, &from_xrc<wxButton>, &global_show_help_flavor::initialize,
               &global_show_help_flavor::get, &translate_message, &set_1st_letter_uppercase,
               &restore_line_endings, &set_bold_font, &wrap_by_parent, &process_max_width, &get_text_extent,
               &set_color_and_tooltip, &set_tooltip, &get_disabled_tooltip_text, &move_to_visible_area,
               &show_msg_box, &set_vdxc_icon, &file_dlg, &folder_dlg, &font_dlg, &color_dlg,
               &process_browse_folder, static_cast<int (*)(const message_window_t&, wxWindow*)>(&show_modal),
               &create_multi_line, &content_for_label, &message_window_t::get_message,
               &message_window_t::simple_error_wnd, &message_window_t::simple_warning_wnd,
               &message_window_t::warning_wnd_with_check, &message_window_t::get_icon_by_type);
    named<wxColour(int) const>(&wx_helpers1::ui_settings_t::get_color);
    named<void(const string&, const string&, const varg_list&)>(&message_window_t::set_main_message,
                                                                &message_window_t::set_supplemental_message,
                                                                &message_window_t::set_details_message);
    message_window_t silenced;
    silenced.button_type = static_cast<message_window_t::button_type_t>(0);
    silenced.icon_type = static_cast<message_window_t::icon_types_t>(0);
    silenced.check_box = gen_helpers2::sptr_t<i_check_box_definition>(new check_box_t);
    show_modal(silenced, nullptr);
    const max_len_options_t options("field", -1, "key");
    named_free(options.max_length);
}
