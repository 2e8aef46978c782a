// The same for paths, settings and preference pages.
#include "interface.h"

#include <commondlg3/ask_dlg.h>
#include <commondlg3/clipboard_dlg.h>
#include <commondlg3/editor_data.h>
#include <commondlg3/editor_pp.h>
#include <commondlg3/experimental_options_panel.h>
#include <commondlg3/feature_config.h>
#include <commondlg3/file_finder_pp.h>
#include <commondlg3/language_info.h>
#include <commondlg3/name_chars.h>
#include <commondlg3/opt_in_dlg.h>
#include <commondlg3/opt_in_pp.h>
#include <commondlg3/path_info.h>
#include <commondlg3/path_validation.h>
#include <commondlg3/result_saving_data.h>
#include <commondlg3/result_saving_pp.h>
#include <commondlg3/search_dirs_panel.h>
#include <commondlg3/search_dirs_tab.h>

#include <string>
#include <vector>

using namespace commondlg3;
using std::string;
using std::vector;

namespace {

using language_t = language_info::language_t;
using gen_helpers2::path_t;
using gen_helpers2::system_editor_t;
using gen_helpers2::variant_bag_t;

void name_paths()
{
    named<void(const string&)>(&path_info_t::set_path);
    named<void(const path_t&)>(&path_info_t::set_path);
    named<path_t() const>(&path_info_t::get_path, &path_info_t::extract_path);
    named<string() const>(&path_info_t::as_string, &path_info_t::get_extension);
    named<bool() const>(&path_info_t::is_str_path, &path_info_t::is_ok, &path_info_t::is_file,
                        &path_info_t::is_directory, &path_info_t::is_exists);
    named<bool(const vector<string>&) const>(&path_info_t::check_extension);
    named_free(path_info_t(), path_info_t(path_t()), path_info_t(string()), &check_file_name_for_chars,
               &check_folder_name_for_chars, &check_string_for_disabled_symbols,
               static_cast<string (*)(int)>(&create_disabled_char_string),
               static_cast<string (*)(const string&, int)>(&create_disabled_char_string),
               &create_disabled_folder_char_string,
               static_cast<bool (*)(string&, const string&)>(&replace_disabled_chars),
               static_cast<bool (*)(string&)>(&replace_disabled_chars), &replace_disabled_chars_in_folder,
               static_cast<bool (*)(wxTextCtrl*, bool, const string&)>(&validate_path<wxTextCtrl>));
}

void name_editors()
{
    static_assert(language_info::cpp == 0 && language_info::csharp == 1 && language_info::fortran == 2 &&
                  language_info::other == 3);
    named_free(&language_info::get_language, &language_info::get_language_by_name,
               &language_info::get_localized_name, &language_info::get_extensions);
    using data = editor_data_t;
    named<gen_helpers2::generic_iterator_t<language_t>() const>(&data::get_languages);
    named_free(&data::is_supported_language, static_cast<bool (data::*)()>(&data::load_system_info),
               &data::fill_env_var_editor, &data::get_storage,
               static_cast<string (*)(const data::editor_t&)>(&data::dump));
    named<bool(language_t)>(&data::set_selected_language, &data::load_system_info);
    named<language_t() const>(&data::get_selected_language);
    named<bool(language_t, const system_editor_t&)>(&data::add_editor);
    named<bool(language_t, const data::editor_t&)>(&data::add_editor_ex);
    named<bool(language_t, const string&)>(&data::remove_editor, &data::set_default_editor_name,
                                           &data::set_selected_editor_name);
    named<bool(language_t, bool)>(&data::remove_editors_ex);
    named<bool(language_t, gen_helpers2::generic_iterator_t<system_editor_t>)>(&data::set_editors);
    named<bool(language_t, const string&, const system_editor_t&)>(&data::set_editor);
    named<gen_helpers2::generic_iterator_t<system_editor_t>(language_t) const>(&data::get_editors);
    named<system_editor_t(language_t, const string&) const>(&data::get_editor);
    named<data::editor_t(language_t, const string&) const>(&data::get_editor_ex);
    named<data::editor_type_t(language_t, const string&) const>(&data::get_editor_type);
    named<string(language_t) const>(&data::get_default_editor_name, &data::get_selected_editor_name,
                                    &data::get_system_default_editor_name, &data::dump);
    named<bool(const string&)>(&data::load_system_info);
    named<void(const variant_bag_t&)>(&data::load);
    named<void(variant_bag_t&) const>(&data::save);
    named<bool(const data::storage_t&)>(&data::load_storage_info);
    named<bool(const data::storage_t&) const>(&data::save_storage_info);
    const data::editor_t from_system = system_editor_t("name", "display name", "executable", "command line");
    named_free(system_editor_t(from_system));
    using page = editor_pp_t;
    named_free(page::system_default_suffix, page::browse_editor_display_name, &page::get_cmd_line_args);
    named<void()>(&page::load_settings, &page::update_shown_controls);
    named<void(wxCommandEvent&)>(&page::on_language_changed, &page::on_editor_list_clicked,
                                 &page::on_cmd_line_edit, &page::on_set_as_default);
    named<string() const>(&page::get_selected_editor_name);
    named<void(language_t, const system_editor_t&)>(&page::fill_info_message);
    named<void(language_t)>(&page::update_state_for_language);
}

struct saving_names_t : result_saving_pp_t
{
    using result_saving_pp_t::result_saving_pp_t;
    void on_radio_disk(wxCommandEvent&) override {}
    void on_radio_proj(wxCommandEvent&) override {}
    void on_text_edit(wxCommandEvent&) override {}
    void on_folder_text_edit(wxCommandEvent&) override {}
    void on_button_browse(wxCommandEvent&) override {}
    void on_resize(wxSizeEvent&) override {}
    static void name()
    {
        named_free(&result_saving_pp_t::replace_wrong_ats, &result_saving_pp_t::filter_result_template);
        named<void()>(&saving_names_t::load_messages, &saving_names_t::load_settings,
                      &saving_names_t::update_shown_controls);
        named<void(bool)>(&saving_names_t::process_enable_controls);
        named<void(const string&, const string&)>(&saving_names_t::show_warning_message);
        using temp = result_saving_data_t::temp_storing_t;
        using project = result_saving_data_t::project_storing_t;
        result_saving_data_t data(static_cast<temp>(0), static_cast<project>(1), true, "template", "folder");
        data.set_proj_default_folder(data.get_proj_default_folder());
        data.set_temp_storing(data.get_temp_storing());
        data.set_proj_storing(data.get_proj_storing());
        data.set_vs_accessibility(data.get_vs_accessibility());
        data.set_name_template(data.get_name_template());
        data.set_folder(data.get_folder());
        named_free(data);
    }
};

struct directories_names_t : search_dirs_tab_t
{
    using search_dirs_tab_t::search_dirs_tab_t;
    void on_button_up(wxCommandEvent&) override {}
    void on_button_down(wxCommandEvent&) override {}
    void on_button_remove(wxCommandEvent&) override {}
    void on_more_button_clicked(vdxpropgrid2::click_data_t) override {}
    void on_resize(wxSizeEvent&) override {}
    static void name()
    {
        using names = directories_names_t;
        named_free(static_cast<void (names::*)()>(&names::set_data), &names::add_dirs, &names::add_dir,
                   &names::on_dir_updated, &names::on_editing_finished);
        named<void()>(&names::load_settings, &names::set_grid_headers, &names::load_images,
                      &names::load_messages, &names::fill_controls, &names::fill_dirs, &names::fill_grid,
                      &names::remove_messages);
        named<void(const dirs_t&)>(&names::fill_container);
        named<void(int)>(&names::remove_row, &names::set_dir_error_mode);
        named<wxSize() const>(&names::GetMinSize);
        named<bool(const path_info_t&, int)>(&names::validate_dir);
        named<string(int, const string&) const>(&names::get_directory_error_msg);
        named<void(const string&, int)>(&names::push_message);
        named<caption_panel_t*() const>(&names::get_caption_panel);
    }
};

struct features_names_t : experimental_options_panel_t
{
    using experimental_options_panel_t::experimental_options_panel_t;
    void on_checkbox(wxCommandEvent&) override {}
    static void name()
    {
        using names = features_names_t;
        using info = experimental_options_panel_t::feature_info_t;
        named<void()>(&names::load_settings, &names::load_feature_list);
        named<void(const info&)>(&names::add_feature);
        named<void(const string&, const string&, bool)>(&names::add_checkbox);
        named<bool() const>(&names::is_experimental_on, &names::is_restart_requested,
                            &names::prompt_restart_now);
        named_free(info() == info());
    }
};

// A product's own list of what is turned on.
struct active_t : active_features_config_t
{
    void clear() override {}
    void load() override {}
    bool save() override { return true; }
    void turn_on(const feature_info_t&) override {}
    bool is_turned_on(const feature_info_t&) override { return false; }
    string get_config_filename() const override { return {}; }
};

struct consent_names_t : opt_in_pp_t
{
    using opt_in_pp_t::opt_in_pp_t;
    static void name()
    {
        named<void(bool)>(&consent_names_t::set_conset);
        named_free(&consent_names_t::consent);
        static_assert(static_cast<int>(user_consent_t(1)) == 1);
    }
};

struct consent_dialog_names_t : opt_in_dlg_t
{
    using opt_in_dlg_t::opt_in_dlg_t;
    void on_input(wxCommandEvent&) override {}
};

} // namespace

void name_pages()
{
    name_paths();
    name_editors();
    saving_names_t::name();
    directories_names_t::name();
    features_names_t::name();
    consent_names_t::name();
    named_free(sizeof(consent_dialog_names_t), active_t(), feature_list_config_impl_t(path_t()).get_count(),
               active_features_config_impl_t(path_t()).get_config_filename());
    named<string() const>(&ask_dlg_t::get_filename);
    named<void(const string&)>(&ask_dlg_t::set_filename);
    named<void(wxCommandEvent&)>(&ask_dlg_t::on_btn_browse_file);
    named<wxSize() const>(&ask_dlg_t::calculate_min_size);
    named<void()>(&ask_dlg_t::full_resize_update, &clipboard_dlg_t::fill_controls);
    named<void(wxSizeEvent&)>(&clipboard_dlg_t::on_resize);
    file_finder_pp_t page(FF_2_13::make_search_dir_container(cfgmgr2::make_memory_property_storage()));
    named_free(page.get_panel());
    search_dirs_panel_t older((FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>()));
    named_free(older.get_type());
}
