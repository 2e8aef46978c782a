#pragma once

#include "entries.h"
#include <wx_helpers1/window_size.h>

#include <commondlg3/pref_base.h>

#include <wx/button.h>
#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>

#include <string>
#include <vector>

namespace gallery {

/// The searchable list of every window and page, with what it is for, and a button that opens it.
class main_panel_t : public commondlg3::pref_base_t
{
public:
    main_panel_t();
    void on_init_dialog() override;
    void on_update_ui_settings() override;
    /// Opens the source of the entry that is selected, if one is.
    void show_code_of_selected();

private:
    void fill_list();
    void show_selected();
    void open_selected();
    void on_key(wxKeyEvent& event);
    const entry_t* selected() const;

    wxSearchCtrl* m_search = nullptr;
    wxListBox* m_list = nullptr;
    wxStaticText* m_category = nullptr;
    wxStaticText* m_name = nullptr;
    wxStaticText* m_description = nullptr;
    wxStaticText* m_status = nullptr;
    wxButton* m_open = nullptr;
    wxButton* m_code = nullptr;
    std::vector<const entry_t*> m_found; ///< the entries in the list, in its order
};

class main_window_t : public wxFrame, private gen_helpers2::subscriber_base_t
{
public:
    main_window_t();

private:
    void restore_size();
    void make_menus();
    void change_language(const std::string& language);
    void fill();

    main_panel_t* m_panel = nullptr;
    wx_helpers1::window_size_t m_size;
};

} // namespace gallery
