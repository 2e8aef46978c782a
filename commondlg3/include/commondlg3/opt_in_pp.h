#pragma once

#include "commondlg3/pref_base.h"

#include <cstdint>
#include <string>

class wxRadioButton;

namespace commondlg3 {

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
/// "not decided". To ask at a first start use opt_in_dlg_t, which embeds this page. GUI thread.
class COMMONDLG3_EXPORT opt_in_pp_t : public pref_base_t
{
public:
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

    void on_init_dialog() override;
    void on_update_ui_settings() override;
    /// Selects an answer.
    void set_conset(bool agree);
    /// Selects what was stored, as a new page would, and forgets what was chosen.
    void start_again(user_consent_t stored);
    bool save_settings() override;

private:
    bool has_controls() const;
    void rewrap();
    void on_size(wxSizeEvent& event);

    std::string m_record;
    wxRadioButton* m_agree = nullptr;
    wxRadioButton* m_refuse = nullptr;
    wxRadioButton* m_neither = nullptr;
    wxStaticText* m_question = nullptr;
    wxStaticText* m_explanation = nullptr;
    wxStaticText* m_record_label = nullptr;
    wxTextCtrl* m_record_text = nullptr;
};

} // namespace commondlg3
