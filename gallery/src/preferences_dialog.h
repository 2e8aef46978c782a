#pragma once

#include "preferences_page.h"
#include "preferences_search.h"
#include "window_size.h"

#include <cfgmgr2/property_storage.h>
#include <commondlg3/dialog_base.h>

#include <memory>
#include <string>
#include <vector>

class wxListBox;
class wxScrolledWindow;
class wxSearchCtrl;

namespace gallery {

/// The product's preferences: a list of pages, the chosen page, and OK, Apply and Cancel.
///
/// OK and Apply write what was changed on the pages that were looked at; when something cannot be written the
/// user is told, the dialog stays open and the pages keep what they hold. Cancel writes nothing at all. Size
/// and page are remembered when the dialog ends with OK.
///
/// The search field leaves in the list the pages that bear all its words, and marks the settings that do;
/// Enter goes to the first of them.
class preferences_dialog_t : public commondlg3::dialog_base_t
{
public:
    static constexpr char object_name[] = "dlg.preferences";

    /// @param first_page its resource object; empty: the one that was seen last
    explicit preferences_dialog_t(const std::string& first_page = {});
    ~preferences_dialog_t() override;

    nlohmann::json get_data() const;

    void on_init_dialog() override;
    void handle_ok(wxCommandEvent& event) override;
    void fit_again() override;

    /// Whether the user wants what was written to take effect by a restart.
    bool wants_restart() const { return m_wants_restart; }

private:
    struct shown_page_t
    {
        std::unique_ptr<preferences_page_t> page;
        commondlg3::pref_base_t* window = nullptr; // owned by the page area
    };

    void fit();
    void make_room();
    void tell_once_shown(const std::string& reasons);
    void fill_list();
    void search();
    void on_search_key(wxKeyEvent& event);
    /// Shows a page, by its place among all of them; -1: none.
    void select(int page);
    void fit_page();
    void on_idle(wxIdleEvent& event);
    int get_selected() const;
    void create_page(shown_page_t& page);
    void put_page(const shown_page_t& page, bool in_sight);
    bool apply();
    void update_apply();
    void restore();
    void remember();
    void prompt_restart();
    void tell(const char* main_key, const char* details_key, const std::string& reason);

    std::vector<shown_page_t> m_pages;
    std::string m_first_page;
    int m_least_list_width = 0;
    window_size_t m_given_size;
    wxSize m_fitted; ///< what the page needed when the area was last fitted to it
    int m_reported = -1;
    gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage> m_remembered;
    std::vector<int> m_listed; ///< the pages in the list, in its order
    found_marks_t m_marks;
    bool m_told = false;
    bool m_wants_restart = false;
    wxSearchCtrl* m_search = nullptr;
    wxStaticText* m_nothing_found = nullptr;
    wxListBox* m_list = nullptr;
    wxScrolledWindow* m_area = nullptr;
    wxPanel* m_out_of_sight = nullptr; ///< holds the pages that are not seen
    wxButton* m_apply = nullptr;
};

/// Opens it, with {"page": object} at that page, and reports by JSON lines.
int open_preferences(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
