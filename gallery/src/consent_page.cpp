#include "consent_page.h"

#include "json_report.h"
#include "missing_resource.h"
#include "window_run.h"

#include <commondlg3/message_window.h>
#include <commondlg3/opt_in_dlg.h>
#include <commondlg3/preferences_frame.h>
#include <commondlg3/text_utils.h>

#include <string>

namespace gallery {
namespace {

using nlohmann::json;
using user_consent_t = opt_in_pp_t::user_consent_t;

json json_of(user_consent_t consent)
{
    return {{"consent", static_cast<int>(consent)}};
}

user_consent_t consent_from(const json& data)
{
    gen_helpers2::error_code_t ignored;
    const int number = get_int(data, "consent", static_cast<int>(load_consent(ignored)));
    return number == 1 || number == 2 ? static_cast<user_consent_t>(number) : user_consent_t::not_decided;
}

} // namespace

std::string consent_page_t::get_title() const
{
    return text("preferences.page.consent");
}

std::string consent_page_t::get_search_words() const
{
    return text("preferences.page.consent.words");
}

gen_helpers2::error_code_t consent_page_t::load()
{
    const auto result = m_store->load();
    m_stored = get_consent(*m_store->get());
    return result;
}

commondlg3::pref_base_t* consent_page_t::create(wxWindow* parent)
{
    m_page = new opt_in_pp_t(m_stored);
    m_page->set_record(get_usage_record());
    m_page->set_keeper(make_usage_data_keeper([this] {
        set_consent(*m_store->get(), user_consent_t::refused);
        const auto result = m_store->save();
        if (result.failed())
            return result;
        m_stored = user_consent_t::refused;
        if (auto* frame = dynamic_cast<commondlg3::preferences_frame_t*>(wxGetTopLevelParent(m_page)))
            frame->take_as_ours(m_store->get_path());
        return remove_usage_record();
    }));
    m_page->create(parent);
    return m_page.get();
}

void consent_page_t::show_kept()
{
    m_stored = get_consent(*m_store->get());
    m_page->start_again(m_stored);
}

bool consent_page_t::is_changed() const
{
    return m_page && (m_page->is_changed() || m_page->get_consent() != m_stored);
}

void consent_page_t::store()
{
    m_page->save_settings();
    set_consent(*m_store->get(), m_page->get_consent());
}

void consent_page_t::stored()
{
    m_stored = m_page->get_consent();
    if (m_stored != user_consent_t::given)
        remove_usage_record();
}

gen_helpers2::variant_bag_t consent_page_t::get_settings() const
{
    gen_helpers2::variant_bag_t settings;
    settings.put("consent", static_cast<int>(m_page ? m_page->get_selected() : m_stored));
    return settings;
}

void consent_page_t::set_settings(const gen_helpers2::variant_bag_t& settings)
{
    const auto& value = settings.get<gen_helpers2::variant_t>("consent");
    if (value.can_get<int>() && value.get<int>() != 0)
        m_page->set_conset(value.get<int>() == static_cast<int>(user_consent_t::given));
}

// Nobody is led to an answer.
gen_helpers2::variant_bag_t consent_page_t::get_defaults() const
{
    return {};
}

json consent_page_t::get_data() const
{
    return json_of(m_page ? m_page->get_consent() : m_stored);
}

int open_consent_page(const json& data, wxWindow* parent)
{
    constexpr auto object = consent_page_t::object_name;
    return window_run_t::run(
        object, parent, {library_layout(object), own_layout("dlg.page_frame")}, [&](window_run_t& run) {
            auto* page = new opt_in_pp_t(consent_from(data));
            page->set_record(get_usage_record());
            if (get_bool(data, "keeper", false))
                page->set_keeper(
                    make_usage_data_keeper([] { return save_consent(user_consent_t::refused); }));
            run.show_page(page, text("preferences.page.consent"),
                          [page] { return json_of(page->get_consent()); });
        });
}

int open_consent_dialog(const json& data, wxWindow* parent)
{
    return window_run_t::run(consent_dialog_object, parent, {library_layout(consent_dialog_object)},
                             [&](window_run_t& run) {
                                 commondlg3::opt_in_dlg_t dialog(consent_from(data));
                                 dialog.set_record(get_usage_record());
                                 dialog.get_answer_signal().connect(&dialog, [](bool agreed) {
                                     report_signal(consent_dialog_object, "answer", agreed);
                                 });
                                 run.show(dialog);
                                 run.set_data(json_of(dialog.get_consent()));
                             });
}

void ask_for_consent_once(wxWindow* parent)
{
    gen_helpers2::error_code_t read;
    if (load_consent(read) != user_consent_t::not_decided || read.failed())
        return;
    commondlg3::opt_in_dlg_t dialog(user_consent_t::not_decided);
    dialog.set_record(get_usage_record());
    dialog.get_answer_signal().connect(&dialog, [&dialog](bool agreed) {
        const auto result = save_consent(agreed ? user_consent_t::given : user_consent_t::refused);
        if (result.succeeded())
            return;
        commondlg3::message_window_t window;
        window.main_message = commondlg3::translate_message("preferences.not_written");
        window.supplemental_message = text("consent.not_written_details");
        window.details_message = result.message();
        commondlg3::show_modal(window, &dialog);
    });
    dialog.show_modal(parent);
}

} // namespace gallery
