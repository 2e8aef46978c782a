#pragma once

#include "commondlg3/audit.h"

#include <wx/toplevel.h>

#include <string>
#include <vector>

namespace commondlg3 {

/// A window while it is looked at, and what was found.
class audited_window_t
{
public:
    explicit audited_window_t(wxTopLevelWindow& top);

    wxTopLevelWindow& top() const { return m_top; }
    /// All that can be seen, parents before their children.
    const std::vector<wxWindow*>& get_shown() const { return m_shown; }
    /// The part of a place that no parent hides.
    static wxRect get_seen_part(const wxWindow& window, wxRect place);
    static std::string get_path(const wxWindow& window);

    void add(const char* kind, const wxWindow& window, const std::string& detail);
    std::vector<audit_finding_t> take_findings() { return std::move(m_findings); }

private:
    void collect(wxWindow& parent);

    wxTopLevelWindow& m_top;
    std::vector<wxWindow*> m_shown;
    std::vector<audit_finding_t> m_findings;
};

bool has_letters(const std::string& text);

// Each adds what it finds.
void audit_places(audited_window_t& window);
void audit_texts(audited_window_t& window);
void audit_keyboard(audited_window_t& window);
void audit_names(audited_window_t& window);

} // namespace commondlg3
