#pragma once

#include "commondlg3/pref_base.h"
#include "commondlg3/silenced_messages.h"

#include <gen_helpers2/signal.h>
#include <wx/dataview.h>

#include <string>
#include <vector>

namespace commondlg3 {

/// The preference page that lists which messages the user has silenced, when, and what is answered instead;
/// each can be looked at again and brought back.
///
///     auto* page = new silenced_messages_pp_t(silenced);   // the parent's window owns it
///     page->create(parent);
///     ...
///     page->save_settings();                               // into the storage
///     result = silenced.save();                            // and on to the disk: the host's affair
///
/// What was brought back is gone from the list at once and from the storage with save_settings(): until then
/// load_settings() has it all again. Not for settings of another kind: those stand where they belong. When
/// the layout could not be loaded the page is empty and saves nothing. GUI thread.
/// @since 3.1
class COMMONDLG3_EXPORT silenced_messages_pp_t : public pref_base_t
{
public:
    explicit silenced_messages_pp_t(const silenced_messages_t& messages);
    ~silenced_messages_pp_t() override;

    void on_init_dialog() override;
    void on_update_ui_settings() override;
    /// Takes what is silenced now. What was brought back and not saved is silenced again.
    void load_settings();
    /// The same from another storage, which is the page's from then on.
    void load_settings(const silenced_messages_t& messages);
    /// Has the messages that were brought back shown again.
    bool save_settings() override;

    [[nodiscard]] bool is_changed() const { return !m_restored.empty(); }
    /// Raised when is_changed() may answer otherwise than before.
    gen_helpers2::signal_t<>& get_changed_signal() { return m_changed_signal; }

    /// Those that are listed, newest first.
    const std::vector<silenced_message_t>& get_messages() const { return m_messages; }
    /// Names of those that were brought back since the page was loaded or saved.
    const std::vector<std::string>& get_restored() const { return m_restored; }

    /// Brings these rows back; what is no row is passed over.
    void restore(const std::vector<int>& rows);
    /// Brings all of them back.
    void restore_all();
    /// Shows the message of a row as it looked. What is answered then changes nothing.
    void show_message(int row);

    virtual void on_show(wxCommandEvent& event);
    virtual void on_restore(wxCommandEvent& event);
    virtual void on_restore_all(wxCommandEvent& event);

private:
    class rows_t;

    bool has_controls() const;
    void make_list(wxWindow* area);
    void fill_list(int selected);
    void update_buttons();
    void on_size(wxSizeEvent& event);
    void on_key(wxKeyEvent& event);
    void fit_columns();
    std::vector<int> get_selected() const;
    void select(int row);

    silenced_messages_t m_stored;
    std::vector<silenced_message_t> m_messages;
    std::vector<std::string> m_restored;
    gen_helpers2::signal_t<> m_changed_signal;
    wxStaticText* m_description = nullptr;
    wxStaticText* m_none = nullptr;
    wxWindow* m_area = nullptr;
    wxDataViewCtrl* m_list = nullptr;
    wxObjectDataPtr<rows_t> m_rows;
    wxButton* m_show = nullptr;
    wxButton* m_restore = nullptr;
    wxButton* m_restore_all = nullptr;
};

} // namespace commondlg3
