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
    named<void, const string&>(&path_info_t::set_path);
    named<void, const path_t&>(&path_info_t::set_path);
    named_const<path_t>(&path_info_t::get_path);
    named_const<string>(&path_info_t::as_string);
    named_const<bool>(&path_info_t::is_str_path);
    named_const<path_t>(&path_info_t::extract_path);
    named_const<bool>(&path_info_t::is_ok);
    named_const<bool>(&path_info_t::is_file);
    named_const<bool>(&path_info_t::is_directory);
    named_const<bool>(&path_info_t::is_exists);
    named_const<string>(&path_info_t::get_extension);
    named_const<bool, const vector<string>&>(&path_info_t::check_extension);
    named_free(path_info_t());
    named_free(path_info_t(path_t()));
    named_free(path_info_t(string()));
    named_free(&check_file_name_for_chars);
    named_free(&check_folder_name_for_chars);
    named_free(&check_string_for_disabled_symbols);
    named_free(static_cast<string (*)(int)>(&create_disabled_char_string));
    named_free(static_cast<string (*)(const string&, int)>(&create_disabled_char_string));
    named_free(&create_disabled_folder_char_string);
    named_free(static_cast<bool (*)(string&, const string&)>(&replace_disabled_chars));
    named_free(static_cast<bool (*)(string&)>(&replace_disabled_chars));
    named_free(&replace_disabled_chars_in_folder);
    named_free(static_cast<bool (*)(wxTextCtrl*, bool, const string&)>(&validate_path<wxTextCtrl>));
}

void name_editors()
{
    static_assert(language_info::cpp == 0 && language_info::csharp == 1 && language_info::fortran == 2 &&
                  language_info::other == 3);
    named_free(&language_info::get_language);
    named_free(&language_info::get_language_by_name);
    named_free(&language_info::get_localized_name);
    named_free(&language_info::get_extensions);
    using data = editor_data_t;
    named_const<gen_helpers2::generic_iterator_t<language_t>>(&data::get_languages);
    named_free(&data::is_supported_language);
    named<bool, language_t>(&data::set_selected_language);
    named_const<language_t>(&data::get_selected_language);
    named<bool, language_t, const system_editor_t&>(&data::add_editor);
    named<bool, language_t, const data::editor_t&>(&data::add_editor_ex);
    named<bool, language_t, const string&>(&data::remove_editor);
    named<bool, language_t, bool>(&data::remove_editors_ex);
    named<bool, language_t, gen_helpers2::generic_iterator_t<system_editor_t>>(&data::set_editors);
    named<bool, language_t, const string&, const system_editor_t&>(&data::set_editor);
    named_const<gen_helpers2::generic_iterator_t<system_editor_t>, language_t>(&data::get_editors);
    named_const<system_editor_t, language_t, const string&>(&data::get_editor);
    named_const<data::editor_t, language_t, const string&>(&data::get_editor_ex);
    named_const<data::editor_type_t, language_t, const string&>(&data::get_editor_type);
    named_const<string, language_t>(&data::get_default_editor_name);
    named_const<string, language_t>(&data::get_selected_editor_name);
    named_const<string, language_t>(&data::get_system_default_editor_name);
    named<bool, language_t, const string&>(&data::set_default_editor_name);
    named<bool, language_t, const string&>(&data::set_selected_editor_name);
    named_free(static_cast<bool (data::*)()>(&data::load_system_info));
    named<bool, language_t>(&data::load_system_info);
    named<bool, const string&>(&data::load_system_info);
    named_free(&data::fill_env_var_editor);
    named<void, const variant_bag_t&>(&data::load);
    named_const<void, variant_bag_t&>(&data::save);
    named_free(&data::get_storage);
    named<bool, const data::storage_t&>(&data::load_storage_info);
    named_const<bool, const data::storage_t&>(&data::save_storage_info);
    named_const<string, language_t>(&data::dump);
    named_free(static_cast<string (*)(const data::editor_t&)>(&data::dump));
    const data::editor_t from_system = system_editor_t("name", "display name", "executable", "command line");
    named_free(system_editor_t(from_system));
    using page = editor_pp_t;
    named_free(page::system_default_suffix);
    named_free(page::browse_editor_display_name);
    named<void>(&page::load_settings);
    named<void, wxCommandEvent&>(&page::on_language_changed);
    named<void, wxCommandEvent&>(&page::on_editor_list_clicked);
    named<void, wxCommandEvent&>(&page::on_cmd_line_edit);
    named<void, wxCommandEvent&>(&page::on_set_as_default);
    named_const<string>(&page::get_selected_editor_name);
    named_free(&page::get_cmd_line_args);
    named<void, language_t, const system_editor_t&>(&page::fill_info_message);
    named<void>(&page::update_shown_controls);
    named<void, language_t>(&page::update_state_for_language);
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
        named_free(&result_saving_pp_t::replace_wrong_ats);
        named_free(&result_saving_pp_t::filter_result_template);
        named<void>(&saving_names_t::load_messages);
        named<void>(&saving_names_t::load_settings);
        named<void, bool>(&saving_names_t::process_enable_controls);
        named<void>(&saving_names_t::update_shown_controls);
        named<void, const string&, const string&>(&saving_names_t::show_warning_message);
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
        named_free(static_cast<void (names::*)()>(&names::set_data));
        named<void>(&names::load_settings);
        named<void>(&names::set_grid_headers);
        named<void>(&names::load_images);
        named<void>(&names::load_messages);
        named<void>(&names::fill_controls);
        named<void>(&names::fill_dirs);
        named<void>(&names::fill_grid);
        named<void, const dirs_t&>(&names::fill_container);
        named_free(&names::add_dirs);
        named_free(&names::add_dir);
        named<void, int>(&names::remove_row);
        named_free(&names::on_dir_updated);
        named_free(&names::on_editing_finished);
        named_const<wxSize>(&names::GetMinSize);
        named<bool, const path_info_t&, int>(&names::validate_dir);
        named_const<string, int, const string&>(&names::get_directory_error_msg);
        named<void, const string&, int>(&names::push_message);
        named<void>(&names::remove_messages);
        named<void, int>(&names::set_dir_error_mode);
        named_const<caption_panel_t*>(&names::get_caption_panel);
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
        named<void>(&names::load_settings);
        named<void>(&names::load_feature_list);
        named<void, const info&>(&names::add_feature);
        named<void, const string&, const string&, bool>(&names::add_checkbox);
        named_const<bool>(&names::is_experimental_on);
        named_const<bool>(&names::is_restart_requested);
        named_const<bool>(&names::prompt_restart_now);
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
        named<void, bool>(&consent_names_t::set_conset);
        named_data(&consent_names_t::consent);
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
    named_free(sizeof(consent_dialog_names_t));
    named_free(active_t());
    named_free(feature_list_config_impl_t(path_t()).get_count());
    named_free(active_features_config_impl_t(path_t()).get_config_filename());
    named_const<string>(&ask_dlg_t::get_filename);
    named<void, const string&>(&ask_dlg_t::set_filename);
    named<void, wxCommandEvent&>(&ask_dlg_t::on_btn_browse_file);
    named_const<wxSize>(&ask_dlg_t::calculate_min_size);
    named<void>(&ask_dlg_t::full_resize_update);
    named<void>(&clipboard_dlg_t::fill_controls);
    named<void, wxSizeEvent&>(&clipboard_dlg_t::on_resize);
    file_finder_pp_t page((FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>()));
    named_free(page.get_panel());
    search_dirs_panel_t older((FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>()));
    named_free(older.get_type());
}
