#pragma once

#include <gen_helpers2/signal.h>
#include <vdx/event_log.h>

#include <wx/panel.h>

#include <string>

class wxCheckBox;
class wxChoice;
class wxStaticText;
class wxTextCtrl;
class wxToggleButton;

namespace commondlg3 {

/// The bar below a log: finds a text, and hides the lines that do not matter now. Made, and hidden, when it
/// is first asked for: most logs are never searched. Escape leads back to where the reader was when it was
/// opened; its close button stays.
class search_bar_t : public wxPanel, public gen_helpers2::subscriber_base_t
{
public:
    search_bar_t(wxWindow* parent, vdxcfrw7::CEventLog& log);
    ~search_bar_t() override;

    void search(vdxcfrw7::CEventLog::search_t what);
    /// Null: all entries.
    void show_only(const vdxcfrw7::CMessageElement* element);

private:
    void make_controls();
    void make_sizers(wxWindow* previous, wxWindow* next, wxWindow* close);
    wxToggleButton* make_option(const wxString& label, const std::string& name);
    wxToggleButton* make_badge(int severity);
    void open();
    void close(bool go_back);
    void look();
    void find(bool forward);
    void filter();
    void filter(const vdxcfrw7::CMessageElement* only);
    void tell_found();
    void tell_hidden();
    void tell_counts();
    void fit();
    void on_parent_size(wxSizeEvent& event);
    void tell(wxStaticText* where, const std::string& text);
    void on_key(wxKeyEvent& event);
    std::string get_text() const;
    vdxcfrw7::find_options_t get_options() const;

    vdxcfrw7::CEventLog& m_log;
    wxTextCtrl* m_text;
    wxToggleButton* m_match_case;
    wxToggleButton* m_whole_words;
    wxToggleButton* m_expression;
    wxStaticText* m_found;
    wxChoice* m_severity;
    wxToggleButton* m_errors;
    wxToggleButton* m_warnings;
    wxCheckBox* m_only_matching;
    wxCheckBox* m_only_entry;
    wxStaticText* m_hidden;
    vdxcfrw7::CEventLog::reading_t m_before;
};

} // namespace commondlg3
