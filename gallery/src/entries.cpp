#include "entries.h"

#include "advanced_panel_page.h"
#include "caption_page.h"
#include "command_page.h"
#include "consent_page.h"
#include "editor_page.h"
#include "example_dialog.h"
#include "example_page.h"
#include "experimental_page.h"
#include "log_page.h"
#include "message_entries.h"
#include "open_source_dialog.h"
#include "preferences_entry.h"
#include "result_saving_page.h"
#include "search_dirs_page.h"
#include "silenced_page.h"
#include "simple_message_page.h"
#include "small_dialogs.h"

#include <cfgmgr2/message_catalog.h>
#include <cpil/catalog.h>

#include <map>

namespace gallery {
namespace {

using CPIL_2_18::i18n::catalog_key;
using nlohmann::json;

entry_t message(const std::string& id, json data)
{
    return {id,
            catalog_key("gallery.category.messages"),
            message_object,
            "message_entries.cpp",
            std::move(data),
            open_message};
}

template <class Open>
entry_t dialog(const std::string& id, const char* object, const char* source, const Open& open,
               json data = nullptr)
{
    return {id, catalog_key("gallery.category.dialogs"), object, source, std::move(data), open};
}

template <class Open>
entry_t page(const std::string& id, const char* object, const char* source, const Open& open,
             json data = nullptr)
{
    return {id, catalog_key("gallery.category.pages"), object, source, std::move(data), open};
}

json with_texts_of(message_sample_t sample, json extra = json::object())
{
    json data = sample_data(sample);
    data.update(extra);
    return data;
}

std::vector<entry_t> make_entries()
{
    using sample = message_sample_t;
    const json undecided = {{"consent", 0}};
    return {
        message("message_error", with_texts_of(sample::error)),
        message("message_warning", with_texts_of(sample::warning)),
        message("message_success", with_texts_of(sample::success)),
        message("message_information", with_texts_of(sample::information)),
        message("message_progress", with_texts_of(sample::progress)),
        message("message_yes_no", with_texts_of(sample::warning, {{"button_type", 1}})),
        message("message_ok_cancel", with_texts_of(sample::warning, {{"button_type", 3}})),
        message("message_retry_cancel", with_texts_of(sample::error, {{"button_type", 5}})),
        message("message_no_buttons", with_texts_of(sample::information, {{"button_type", 6}})),
        message("message_check_box", with_check_box(sample_data(sample::warning))),
        message("message_named_buttons", with_named_buttons(sample_data(sample::warning))),
        message("message_support", with_support(sample_data(sample::error))),
        {"message_storm", catalog_key("gallery.category.messages"), center_object, "message_entries.cpp",
         storm_data(), open_message_center},
        message("message_long", with_long_text(sample_data(sample::error))),
        message("message_long_word", with_long_word(sample_data(sample::error))),
        {"message_box", catalog_key("gallery.category.messages"), "show_msg_box", "message_entries.cpp",
         sample_data(sample::warning), open_message_box},
        dialog("dialog_example", example_dialog_t::object_name, "example_dialog.cpp", open_example_dialog),
        page("page_example", example_page_t::object_name, "example_page.cpp", open_example_page),
        page("log", log_object, "log_page.cpp", open_log),
        page("log_progress", log_object, "log_progress.cpp", open_progress_page),
        page("log_walk", log_object, "log_workers.cpp", open_walk_page),
        page("log_command", log_object, "command_page.cpp", open_command_page),
        page("log_flood", log_object, "log_workers.cpp", open_flood_page),
        page("caption", caption_page_t::object_name, "caption_page.cpp", open_caption_page),
        page("simple_message", simple_message_page_t::object_name, "simple_message_page.cpp",
             open_simple_message_page),
        page("advanced_panel", advanced_panel_page_t::object_name, "advanced_panel_page.cpp",
             open_advanced_panel_page),
        dialog("preferences", preferences_object, "preferences_entry.cpp", open_preferences),
        page("page_result_saving", result_saving_page_t::object_name, "result_saving_page.cpp",
             open_result_saving_page),
        page("page_editor", editor_page_t::object_name, "editor_page.cpp", open_editor_page),
        dialog("open_source", open_source_dialog_t::object_name, "open_source_dialog.cpp",
               open_open_source_dialog),
        page("page_experimental", experimental_page_t::object_name, "experimental_page.cpp",
             open_experimental_page),
        page("page_silenced", silenced_object, "silenced_page.cpp", open_silenced_page),
        page("page_consent", consent_page_t::object_name, "consent_page.cpp", open_consent_page, undecided),
        dialog("dialog_consent", consent_dialog_object, "consent_page.cpp", open_consent_dialog, undecided),
        dialog("dialog_ask", ask_object, "small_dialogs.cpp", open_ask_dialog),
        dialog("dialog_clipboard", clipboard_object, "small_dialogs.cpp", open_clipboard_dialog),
        page("page_search_dirs", search_dirs_page_t::object_name, "search_dirs_windows.cpp",
             open_search_dirs_tab),
        page("panel_search_dirs", "panel.search_dir", "search_dirs_windows.cpp", open_search_dirs_panel),
        page("page_file_finder", "pref.file_finder_pp", "search_dirs_windows.cpp", open_file_finder_page),
    };
}

} // namespace

const std::vector<entry_t>& entries()
{
    static std::map<std::string, std::vector<entry_t>> all;
    auto& in_language = all[cfgmgr2::get_language()];
    if (in_language.empty())
        in_language = make_entries();
    return in_language;
}

bool open_object(const std::string& object, const nlohmann::json& data, wxWindow* parent)
{
    std::string name = object;
    json given = data;
    // The pages of the search directories are one page with different lists.
    if (const auto category = category_of_page(object)) {
        name = search_dirs_page_t::object_name;
        if (given.is_null() || (given.is_object() && !given.contains("category")))
            given["category"] = static_cast<int>(*category);
    }
    for (const entry_t& entry : entries())
        if (entry.object == name || entry.id == name) {
            entry.open(given.is_null() ? entry.data : given, parent);
            return true;
        }
    return false;
}

} // namespace gallery
