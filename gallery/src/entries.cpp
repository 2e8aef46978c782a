#include "entries.h"

#include "advanced_panel_page.h"
#include "caption_page.h"
#include "consent_page.h"
#include "editor_page.h"
#include "example_dialog.h"
#include "example_page.h"
#include "experimental_page.h"
#include "log_page.h"
#include "message_entries.h"
#include "open_source_dialog.h"
#include "preferences_dialog.h"
#include "result_saving_page.h"
#include "search_dirs_page.h"
#include "simple_message_page.h"
#include "small_dialogs.h"

#include <cpil/catalog.h>

namespace gallery {
namespace {

using CPIL_2_18::i18n::catalog_key;
using nlohmann::json;

entry_t message(const std::string& id, json data)
{
    return {id, catalog_key("gallery.category.messages"), message_object,
            [data = std::move(data)](wxWindow* parent) { return open_message(data, parent); }};
}

json with_texts_of(message_sample_t sample, json extra = json::object())
{
    json data = sample_data(sample);
    data.update(extra);
    return data;
}

} // namespace

const std::vector<entry_t>& entries()
{
    using sample = message_sample_t;
    static const std::vector<entry_t> all = {
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
        message("message_long", with_long_text(sample_data(sample::error))),
        message("message_long_word", with_long_word(sample_data(sample::error))),
        {"message_box", catalog_key("gallery.category.messages"), "show_msg_box",
         [](wxWindow* parent) { return open_message_box(sample_data(sample::warning), parent); }},
        {"dialog_example", catalog_key("gallery.category.dialogs"), example_dialog_t::object_name,
         [](wxWindow* parent) { return open_example_dialog(json(), parent); }},
        {"page_example", catalog_key("gallery.category.pages"), example_page_t::object_name,
         [](wxWindow* parent) { return open_example_page(json(), parent); }},
        {"log", catalog_key("gallery.category.pages"), log_object,
         [](wxWindow* parent) { return open_log(json(), parent); }},
        {"log_walk", catalog_key("gallery.category.pages"), log_object, open_walk_page},
        {"log_flood", catalog_key("gallery.category.pages"), log_object, open_flood_page},
        {"caption", catalog_key("gallery.category.pages"), caption_page_t::object_name,
         [](wxWindow* parent) { return open_caption_page(json(), parent); }},
        {"simple_message", catalog_key("gallery.category.pages"), simple_message_page_t::object_name,
         [](wxWindow* parent) { return open_simple_message_page(json(), parent); }},
        {"advanced_panel", catalog_key("gallery.category.pages"), advanced_panel_page_t::object_name,
         [](wxWindow* parent) { return open_advanced_panel_page(json(), parent); }},
        {"preferences", catalog_key("gallery.category.dialogs"), preferences_dialog_t::object_name,
         open_preferences},
        {"page_result_saving", catalog_key("gallery.category.pages"), result_saving_page_t::object_name,
         [](wxWindow* parent) { return open_result_saving_page(json(), parent); }},
        {"page_editor", catalog_key("gallery.category.pages"), editor_page_t::object_name,
         [](wxWindow* parent) { return open_editor_page(json(), parent); }},
        {"open_source", catalog_key("gallery.category.dialogs"), open_source_dialog_t::object_name,
         [](wxWindow* parent) { return open_open_source_dialog(json(), parent); }},
        {"page_experimental", catalog_key("gallery.category.pages"), experimental_page_t::object_name,
         [](wxWindow* parent) { return open_experimental_page(json(), parent); }},
        {"page_consent", catalog_key("gallery.category.pages"), consent_page_t::object_name,
         [](wxWindow* parent) {
             return open_consent_page({{"consent", 0}}, parent);
         }},
        {"dialog_consent", catalog_key("gallery.category.dialogs"), consent_dialog_object,
         [](wxWindow* parent) {
             return open_consent_dialog({{"consent", 0}}, parent);
         }},
        {"dialog_ask", catalog_key("gallery.category.dialogs"), ask_object,
         [](wxWindow* parent) { return open_ask_dialog(json(), parent); }},
        {"dialog_clipboard", catalog_key("gallery.category.dialogs"), clipboard_object,
         open_clipboard_dialog},
        {"page_search_dirs", catalog_key("gallery.category.pages"), search_dirs_page_t::object_name,
         [](wxWindow* parent) { return open_search_dirs_tab(json(), parent, FF_2_13::category_sources); }},
        {"panel_search_dirs", catalog_key("gallery.category.pages"), "panel.search_dir",
         [](wxWindow* parent) { return open_search_dirs_panel(json(), parent); }},
        {"page_file_finder", catalog_key("gallery.category.pages"), "pref.file_finder_pp",
         [](wxWindow* parent) { return open_file_finder_page(json(), parent); }},
    };
    return all;
}

bool open_object(const std::string& object, const nlohmann::json& data)
{
    if (object == message_object)
        open_message(data.is_null() ? sample_data(message_sample_t::error) : data, nullptr);
    else if (object == "show_msg_box")
        open_message_box(data.is_null() ? sample_data(message_sample_t::warning) : data, nullptr);
    else if (object == example_dialog_t::object_name)
        open_example_dialog(data, nullptr);
    else if (object == example_page_t::object_name)
        open_example_page(data, nullptr);
    else if (object == log_object)
        open_log(data, nullptr);
    else if (object == caption_page_t::object_name)
        open_caption_page(data, nullptr);
    else if (object == simple_message_page_t::object_name)
        open_simple_message_page(data, nullptr);
    else if (object == advanced_panel_page_t::object_name)
        open_advanced_panel_page(data, nullptr);
    else if (object == preferences_dialog_t::object_name)
        open_preferences(nullptr);
    else if (object == result_saving_page_t::object_name)
        open_result_saving_page(data, nullptr);
    else if (object == editor_page_t::object_name)
        open_editor_page(data, nullptr);
    else if (object == open_source_dialog_t::object_name)
        open_open_source_dialog(data, nullptr);
    else if (object == experimental_page_t::object_name)
        open_experimental_page(data, nullptr);
    else if (object == consent_page_t::object_name)
        open_consent_page(data, nullptr);
    else if (object == consent_dialog_object)
        open_consent_dialog(data, nullptr);
    else if (object == ask_object)
        open_ask_dialog(data, nullptr);
    else if (object == clipboard_object)
        open_clipboard_dialog(nullptr);
    else if (const auto category = category_of_page(object))
        open_search_dirs_tab(data, nullptr, *category);
    else if (object == "panel.search_dir")
        open_search_dirs_panel(data, nullptr);
    else if (object == "pref.file_finder_pp")
        open_file_finder_page(data, nullptr);
    else
        return false;
    return true;
}

} // namespace gallery
