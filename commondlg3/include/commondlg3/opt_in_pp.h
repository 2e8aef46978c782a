#pragma once

#include "commondlg3/pref_base.h"

#include <gen_helpers2/error_code.h>

#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <utility>

class wxButton;
class wxRadioButton;

namespace commondlg3 {

/// What a host keeps of what it reports, for the user to see and to be rid of. Implemented by hosts that want
/// their users to do so on the page about consent.
/// @since 3.1
class COMMONDLG3_EXPORT usage_data_keeper_t
{
public:
    /// A record that was written, and when.
    struct written_t
    {
        std::time_t when = 0;
        std::string text; ///< UTF-8
    };

    virtual ~usage_data_keeper_t();

    /// The record that was written last; nothing when none is there. Called on another thread, since a disk
    /// may hang.
    virtual std::optional<written_t> read_last_written() const = 0;
    /// Keeps that the user does not agree any more, and deletes the record at once. GUI thread.
    /// @return why that failed; the page then says so and stays as it is
    [[nodiscard]] virtual gen_helpers2::error_code_t withdraw() = 0;
};

/// The preference page that asks whether the user agrees to the collection of usage data.
///
///     auto* page = new opt_in_pp_t(stored_consent);
///     page->set_record(record_that_would_be_sent);
///     page->create(parent);                        // the parent owns it
///     ...
///     page->save_settings();
///     store(page->get_consent());
///
/// Nobody is led to an answer: for a user who has not decided, neither choice is selected, and saving keeps
/// "not decided". With set_keeper() the page also shows when and what was written last, and withdraws a
/// consent at once, without waiting for the host's OK. To ask at a first start use opt_in_dlg_t, which embeds
/// this page. GUI thread.
class COMMONDLG3_EXPORT opt_in_pp_t : public pref_base_t
{
public:
    /// The user's answer; hosts store its number.
    enum class user_consent_t : std::int32_t
    {
        not_decided = 0,
        given = 1,
        refused = 2
    };

    explicit opt_in_pp_t(user_consent_t stored);
    ~opt_in_pp_t() override;

    /// What was given, or what the last save_settings() took from the choices: for hosts to read.
    user_consent_t consent;
    user_consent_t get_consent() const { return consent; }
    /// What the choices say now.
    user_consent_t get_selected() const;
    /// Whether the choices say anything else than get_consent().
    [[nodiscard]] bool is_changed() const;

    /// The record as it would be sent, UTF-8, shown as it stands; before create(). Without one the page does
    /// not show that part.
    void set_record(const std::string& record) { m_record = record; }

    /// Shows what was written last, and lets the user withdraw a consent that was given; before create().
    /// @since 3.1
    void set_keeper(std::shared_ptr<usage_data_keeper_t> keeper) { m_keeper = std::move(keeper); }
    /// Shows the record that was written last, or again the one that would be.
    /// @since 3.1
    virtual void on_show_written(wxCommandEvent& event);
    /// Has the keeper withdraw the consent and delete the record; get_consent() is "refused" then.
    /// @since 3.1
    virtual void on_withdraw(wxCommandEvent& event);

    void on_init_dialog() override;
    void on_update_ui_settings() override;
    /// Selects an answer.
    void set_conset(bool agree);
    /// Selects what was stored, as a new page would, and forgets what was chosen.
    /// @since 3.1
    void start_again(user_consent_t stored);
    bool save_settings() override;

private:
    bool has_controls() const;
    void rewrap();
    void on_size(wxSizeEvent& event);

    void make_written();
    void make_written_buttons();
    void ask_keeper();
    void show_written(const std::optional<usage_data_keeper_t::written_t>& written);
    void set_written_text(const std::string& text);

    std::string m_record;
    std::shared_ptr<usage_data_keeper_t> m_keeper;
    std::string m_written; ///< the text of the last record
    bool m_shows_written = false;
    wxStaticText* m_written_label = nullptr;
    wxButton* m_show_written = nullptr;
    wxButton* m_withdraw = nullptr;
    wxRadioButton* m_agree = nullptr;
    wxRadioButton* m_refuse = nullptr;
    wxRadioButton* m_neither = nullptr;
    wxStaticText* m_question = nullptr;
    wxStaticText* m_explanation = nullptr;
    wxStaticText* m_record_label = nullptr;
    wxTextCtrl* m_record_text = nullptr;
};

} // namespace commondlg3
