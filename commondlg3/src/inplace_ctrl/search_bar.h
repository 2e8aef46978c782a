#pragma once

#include <gen_helpers2/signal.h>
#include <vdx/event_log.h>

#include <wx/panel.h>

#include <string>

class wxCheckBox;
class wxChoice;
class wxStaticText;
class wxTextCtrl;

namespace commondlg3 {

/// The bar below a log: finds a text, and hides the lines that do not matter now. Hidden until it is asked
/// for.
class search_bar_t : public wxPanel, public gen_helpers2::subscriber_base_t
{
public:
    search_bar_t(wxWindow* parent, vdxcfrw7::CEventLog& log);

    void search(vdxcfrw7::CEventLog::search_t what);

private:
    void open();
    void close();
    void find(bool forward);
    void filter();
    void tell_hidden();
    void on_key(wxKeyEvent& event);
    std::string get_text() const;

    vdxcfrw7::CEventLog& m_log;
    wxTextCtrl* m_text;
    wxChoice* m_severity;
    wxCheckBox* m_only_matching;
    wxStaticText* m_answer;
};

} // namespace commondlg3
