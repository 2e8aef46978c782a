#pragma once

#include "commondlg3/export.h"
#include "commondlg3/max_len_options.h"
#include "commondlg3/path_messages.h"

#include <gen_helpers2/signal.h>
#include <wx_helpers1/modal_flavor.h>

#include <wx/dialog.h>
#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace commondlg3 {

/// The window base of all dialogs: a dialog whose modal runs go through the platform.
class COMMONDLG3_EXPORT dummy : public wx_helpers1::modal_flavor<wxDialog>
{
};

/// The common base of every dialog, panel and preference page: one lifecycle, one way of applying the fonts,
/// a length limit with a message for every text control.
///
/// Do not derive from it directly: derive from dialog_base_t (top-level dialogs) or pref_base_t (pages and
/// panels), which bind its handlers and load the layout.
///
///     my_page_t::my_page_t() { set_resource_object("pref.mine"); }
///     void my_page_t::on_init_dialog() { m_name = from_xrc<wxTextCtrl>(this, "m_name"); ... }
///     bool my_page_t::save_settings()
///     {
///         m_data.name = wx_helpers1::from_wx(m_name->GetValue());
///         return true;
///     }
///
/// Lifecycle: constructed, hidden -> first init-dialog event (size, buttons, fonts, limits, path messages,
/// then on_init_dialog()) -> shown -> OK, Cancel or closing -> end_dialog(code). Later init-dialog events,
/// and every change of the user-interface settings, apply the fonts again and nothing else.
///
/// Ownership: windows belong to their parents in the toolkit's way; subscriptions and the timer end with the
/// object. Everything runs on the GUI thread. Missing standard buttons are no error: their members stay null.
template <class Base>
class COMMONDLG3_EXPORT generic_base_t : public Base, public gen_helpers2::_internal::subscriber_base_t
{
public:
    using end_signal_t = gen_helpers2::_internal::signal_t<generic_base_t<Base>*, int>;

    generic_base_t();
    ~generic_base_t() override;

    /// Raised by the default end_dialog() with (this, code); the owner of an embedded panel decides what it
    /// means.
    end_signal_t& get_end_signal() { return m_end_signal; }

    // What a derived class overrides, in the order of a window's life.

    /// Stores what the controls hold; false when it could not be stored. Does nothing, with success, here.
    virtual bool save_settings();
    /// Makes the window and its controls of a layout, with labels from that catalog; false, with the reason in the
    /// log, when it cannot.
    virtual bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                        const std::string& catalog_name, const std::string& object_name) = 0;
    /// Ends the window with a code (wxID_OK, wxID_CANCEL or one of its own). Raises the end signal here.
    virtual void end_dialog(int code);
    /// Fills the controls; called once, with buttons looked up, fonts applied, limits in force.
    virtual void on_init_dialog();
    /// OK was chosen; calls save_settings() here.
    virtual void on_ok();
    /// Cancel was chosen or the window is closed.
    virtual void on_cancel();
    /// Help was asked for; does nothing here.
    virtual void on_help();
    /// Fonts, theme or scale changed; gives every child the configured font here.
    virtual void on_update_ui_settings();
    virtual void handle_ok(wxCommandEvent& event);
    /// Takes texts from the catalog that are shown later; here those about paths and limits.
    virtual void load_auxiliary_strings();
    /// Puts the limits on the direct child text controls. Register limits with set_max_len_options() before
    /// it runs: in the constructor, or in an override that calls this one last. Deeper controls are the
    /// derived class's own.
    virtual void set_max_text_limit();
    virtual void handle_timer_event(wxTimerEvent& event);

    // Handlers that the event tables bind.
    void handle_init_dialog_event(wxInitDialogEvent& event);
    void handle_close(wxCloseEvent& event);
    void handle_cancel(wxCommandEvent& event);
    void handle_help(wxCommandEvent& event);

    /// A copy of the control's options; a control that nobody registered gets the default ones first.
    max_len_options_t gen_max_len_options(wxTextCtrl* ctrl);
    virtual void on_max_len(wxCommandEvent& event);
    virtual void on_text_changed(wxCommandEvent& event);
    /// Gives all these windows and their children the text font; each keeps its own slant and weight.
    void on_update_ui_settings_recursively(wxWindowList& children);
    /// Puts a long text into a label of this dialog and wraps it to the dialog. Meant for dialogs.
    void set_multiline_text(wxStaticText* label, const std::string& text, wxFont font);

    // Typed paths; panels and pages only.

    /// Whether the field holds a path that can be used: an absolute one that exists, or, unless `must_exist`,
    /// that could be made below something that exists. Takes forbidden characters out of the field, colours
    /// it and says in its tool tip, and to screen readers, what is wrong. A disk that does not answer within
    /// two seconds is believed to have it.
    /// @param folder whether a folder is meant; changes nothing in what is accepted
    /// @param search_environment look for a name that is not absolute in "PATH", then in the search paths
    template <class Ctrl>
    bool check_file_or_folder(Ctrl* ctrl, bool must_exist, bool folder, bool search_environment);
    /// Full path of a name in the directories of "PATH"; of an absolute one itself; empty if it is not there.
    std::string find_in_environment(const std::string& name);
    /// The same in this panel's search paths.
    std::string find_in_search_paths(const std::string& name);
    /// Folders, in the order in which they are looked through.
    void set_search_paths(const std::vector<std::string>& paths) { m_search_paths = paths; }
    /// Raised by check_file_or_folder() with its answer, once asked for.
    gen_helpers2::signal_t<bool>& get_path_checked_signal() { return m_path_checked_signal; }
    /// Asks for that signal; not asked for at first.
    void tell_path_checks(bool tell) { m_path_checks_told = tell; }

    /// -1: the window has no help, and its help button is disabled.
    int get_help_id() const { return m_help_id; }
    void set_help_id(int id) { m_help_id = id; }
    bool is_loaded() const { return m_loaded; }
    bool is_initialized() const { return m_initialized; }
    const std::string& get_resource_object() const { return m_resource_object; }
    const std::string& get_resource_file() const { return m_resource_file; }
    const std::string& get_catalog_name() const { return m_catalog_name; }

protected:
    /// The name of the layout in the resource file; for the constructor.
    void set_resource_object(const std::string& name) { m_resource_object = name; }
    /// For windows whose layout does not come from the library's own resource file.
    void set_resource_file(const std::string& file) { m_resource_file = file; }
    /// Registers a limit, which set_max_text_limit() puts into force.
    void set_max_len_options(wxTextCtrl* ctrl, const max_len_options_t& options);
    /// Limits one text control: what set_max_text_limit() does for each direct child.
    void limit_text(wxTextCtrl* ctrl);
    /// Colours a path field and explains why, as check_file_or_folder() does; plain when nothing is wrong.
    void mark_path_field(wxTextCtrl* ctrl, std::optional<path_message_t> wrong, bool has_path);
    /// The same, and raises the signal when it was asked for.
    /// @since 3.1
    void tell_path_verdict(wxTextCtrl* ctrl, std::optional<path_message_t> wrong, bool has_path);
    /// What a field's tool tip says of it.
    /// @since 3.1
    std::string get_path_trouble(path_message_t wrong) const;

    end_signal_t m_end_signal;
    gen_helpers2::_internal::signal_t<> m_derived_signal; ///< for derived classes; never raised here
    wxButton* m_btn_ok = nullptr;
    wxButton* m_btn_cancel = nullptr;
    wxButton* m_btn_help = nullptr;
    std::string m_resource_object;
    std::string m_reserved_name; ///< not used here
    std::string m_resource_file;
    std::string m_catalog_name;
    std::string m_reserved_text; ///< not used here
    std::string m_unknown_text;
    std::vector<std::string> m_path_messages; ///< by path_message_t
    std::vector<std::string> m_search_paths;
    gen_helpers2::signal_t<bool> m_path_checked_signal;
    bool m_path_checks_told = false;
    int m_help_id = -1;
    bool m_loaded = false;
    bool m_initialized = false;
    wxTimer m_timer;
    std::map<wxTextCtrl*, max_len_options_t> m_max_len_options;
    wxSize m_min_size{0, 0};
    bool m_just_initialized = false; ///< the toolkit's init-dialog event has been anticipated

private:
    void subscribe_to_ui_settings();

    bool m_subscribed = false;
    bool m_telling_limit = false;
};

extern template class generic_base_t<dummy>;
extern template class generic_base_t<wxPanel>;

} // namespace commondlg3
