#pragma once

#include "commondlg3/dialog_base.h"
#include "commondlg3/opt_in_pp.h"

#include <string>

namespace commondlg3 {

/// Asks once, in a dialog of its own, whether the user agrees to the collection of usage data.
///
///     opt_in_dlg_t dialog(opt_in_pp_t::user_consent_t::not_decided);
///     dialog.get_answer_signal().connect(this, [](bool agreed) { store(agreed); });
///     dialog.show_modal(parent);
///
/// OK can be pressed only after an answer was chosen. Cancel, Escape and the close box decide nothing: the
/// signal is not raised, and the host asks again another time. In the preferences use opt_in_pp_t. GUI
/// thread.
class COMMONDLG3_EXPORT opt_in_dlg_t : public dialog_base_t
{
public:
    explicit opt_in_dlg_t(opt_in_pp_t::user_consent_t consent);
    ~opt_in_dlg_t() override;

    /// Raised on OK: whether the user agrees.
    gen_helpers2::signal_t<bool>& get_answer_signal() { return m_answer_signal; }
    /// As opt_in_pp_t::set_record(); before the dialog is shown.
    void set_record(const std::string& record) { m_record = record; }
    /// What was given, or what OK decided: a choice that was cancelled is none.
    opt_in_pp_t::user_consent_t get_consent() const { return m_consent; }

    void on_init_dialog() override;
    virtual void on_input(wxCommandEvent& event);
    void on_ok() override;
    /// Forgets the choice: shown again, the dialog asks as it did at first.
    void on_cancel() override;

private:
    void allow_ok();

    opt_in_pp_t::user_consent_t m_consent;
    std::string m_record;
    gen_helpers2::signal_t<bool> m_answer_signal;
    opt_in_pp_t* m_page = nullptr; // owned by the panel that it stands in
};

} // namespace commondlg3
