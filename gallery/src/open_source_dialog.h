#pragma once

#include <commondlg3/dialog_base.h>
#include <commondlg3/editor_data.h>

#include <nlohmann/json.hpp>

#include <string>

class wxSpinCtrl;

namespace gallery {

/// Opens a source file of the user's choice at a line, in the editor that the preferences name for its
/// language. Stays open, so that another can follow; a failure is told in a message window.
class open_source_dialog_t : public commondlg3::dialog_base_t
{
public:
    static constexpr char object_name[] = "dlg.open_source";

    open_source_dialog_t(const commondlg3::editor_data_t& editors, const std::string& file, int line);

    nlohmann::json get_data() const;

    void on_init_dialog() override;

protected:
    void fit_again() override;

private:
    std::string get_file() const;
    commondlg3::editor_data_t::system_editor_t get_editor() const;
    void browse();
    void open();
    void show_editor();

    commondlg3::editor_data_t m_editors;
    std::string m_first_file;
    int m_first_line;
    wxTextCtrl* m_file = nullptr;
    wxSpinCtrl* m_line = nullptr;
    wxStaticText* m_editor = nullptr;
};

/// The editor for this file that the preferences name; one without a name where there is none.
commondlg3::editor_data_t::system_editor_t get_users_editor(const std::string& file);

/// Opens a file at a line in the editor that the preferences name, and tells the user over `parent` when that
/// failed; JSON lines tell it of `object`.
void open_in_users_editor(const std::string& object, const std::string& file, int line, wxWindow* parent);

/// Opens it, with the editors of the preferences, and reports by JSON lines.
int open_open_source_dialog(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
