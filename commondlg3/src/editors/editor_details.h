#pragma once

#include "commondlg3/editor_pp.h"
#include "editor_looks.h"
#include "editor_trial.h"

#include <memory>
#include <string>
#include <vector>

class wxSizer;

namespace commondlg3 {

/// What the page of editors shows beyond their names: what is known of each beside its entry, its command, and
/// what can be done with it. Controls are made when they are needed first. GUI thread; owned by the page,
/// whose windows it makes.
class editor_details_t
{
public:
    explicit editor_details_t(editor_pp_t& page);
    ~editor_details_t();

    /// The list has other editors, or another default, or more is known of them.
    void show_list();
    /// The selected editor is another one, or more is known of it.
    void show_selected();
    void try_editor();
    /// Whether this can be done with the selected editor.
    bool can_be_renamed() const;
    /// Labels that break their lines; null ones are not made yet.
    std::vector<wxStaticText*> get_labels() const;

private:
    bool has(editor_pp_t::flags_t flag) const;
    wxButton* make_button(const char* name, const std::string& label);
    void insert_below_list(wxSizer* sizer, wxWindow* window, bool behind_buttons);
    void make_buttons_of_custom();
    void show_trial(caption_panel_t::severity_t severity, const std::string& text);

    editor_pp_t& m_page;
    wxStaticText* m_command = nullptr;
    wxButton* m_try = nullptr;
    wxButton* m_rename = nullptr;
    wxButton* m_remove = nullptr;
    std::unique_ptr<field_message_t> m_tried;
    std::string m_tried_name;
    editor_trial_t m_trial;
};

} // namespace commondlg3
