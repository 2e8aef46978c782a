#pragma once

#include <gen_helpers2/signal.h>
#include <wx_helpers1/picture.h>

#include <string>
#include <vector>

class wxDataViewEvent;
class wxDataViewItem;
class wxDataViewTreeCtrl;

namespace commondlg3 {

/// The list of pages: each with its picture, below the heading of its group, with a dot when it was changed.
/// Pages are known by their place among all of them.
class page_list_t
{
public:
    static constexpr int none = -1;

    struct row_t
    {
        int page;
        std::string title;
        std::string group;
        wx_helpers1::wxStaticPicture icon;
    };

    /// @param control from the layout
    explicit page_list_t(wxDataViewTreeCtrl* control);

    /// What is shown from now on; what was selected stays so where it is among them.
    void show(const std::vector<row_t>& rows);
    void mark_changed(int page, bool changed);
    void select(int page);
    int get_selected() const { return m_selected; }
    /// The first page in it; none when it is empty.
    int get_first() const { return m_rows.empty() ? none : m_rows.front().page; }
    void set_focus();
    /// Draws the pictures anew, in the theme's ink.
    void refresh_icons();
    /// Wide enough for all that is shown.
    void fit_width();
    wxDataViewTreeCtrl* get_control() const { return m_control; }

    /// The user has chosen a page.
    gen_helpers2::signal_t<int>& get_selected_signal() { return m_selected_signal; }

private:
    void on_selection(wxDataViewEvent& event);
    int find(const wxDataViewItem& item) const;

    wxDataViewTreeCtrl* m_control;
    int m_least_width;
    std::vector<row_t> m_rows;
    std::vector<void*> m_items;    ///< one a row
    std::vector<void*> m_headings; ///< the row's heading, null without one
    std::vector<bool> m_changed;
    int m_selected = none;
    gen_helpers2::signal_t<int> m_selected_signal;
};

} // namespace commondlg3
