#pragma once

#include "commondlg3/generic_base.h"

#include <wx/weakref.h>

#include <string>

namespace commondlg3 {

/// The base of top-level dialogs, modal or not, whose layout comes from the resource file.
///
/// Use it for a window that asks and ends; for something that lives inside another window use pref_base_t; to
/// tell the user something use show_modal(message_window_t).
///
///     class ask_t : public dialog_base_t
///     {
///     public:
///         ask_t() { set_resource_object("dlg.ask"); set_help_topic("ask"); set_help_id(1); }
///     };
///     ask_t ask;
///     if (ask.show_modal(parent) == wxID_OK) ...
///
/// The layout is loaded at the first show; a failed load shows nothing, answers 0, and is tried again at the
/// next. OK ends with 5100, Cancel and Escape with 5101, the close box with the return code, which
/// on_cancel() may change; on_ok() may change that of OK. A dialog on the stack of its caller ends with it.
/// GUI thread.
class COMMONDLG3_EXPORT dialog_base_t : public generic_base_t<dummy>
{
public:
    dialog_base_t();
    ~dialog_base_t() override;

    /// Runs the dialog and returns the code that it ended with, or 0 when its layout cannot be loaded.
    int show_modal(wxWindow* parent);
    /// Shows or hides the dialog without waiting. Returns what Show() does; false when it cannot be loaded.
    bool show_nonmodal(wxWindow* parent, bool show);
    /// Fills and lays out the dialog before it appears, rather than under the eyes of the user.
    bool Show(bool show = true) override;

    bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                const std::string& catalog_name, const std::string& object_name) override;
    void end_dialog(int code) override;
    /// Raises the help signal with the topic; without a topic nothing happens.
    void on_help() override;
    void handle_ok(wxCommandEvent& event) override;
    void help_activated() override;

    void handle_close(wxCloseEvent& event);
    void handle_dialog_help(wxHelpEvent& event);

    /// What the help signal says; empty: there is no help.
    void set_help_topic(const std::string& topic) { m_help_topic = topic; }
    /// Raised with the topic when help is asked for.
    gen_helpers2::_internal::signal_t<const std::string&>& get_help_signal() { return m_help_signal; }

    /// The title, in the encoding of the current locale (UTF-8 as a rule); any bytes come back as they were
    /// set.
    void set_title(const std::string& title);
    std::string get_title() const;

    /// A size for this dialog: the given fractions of its parent's, but at least `min`, in pixels.
    wxSize get_proportional_size(float fx, float fy, const wxSize& min) const;

    int get_return_code() const { return m_return_code; }

protected:
    /// For on_ok() and on_cancel(): the code that the dialog will end with.
    void set_return_code(int code) { m_return_code = code; }
    /// For on_init_dialog(): the least size that the sizer needs, now and as the dialog's minimum. A dialog
    /// that may need more than the screen has must scroll what it shows.
    void fit_to_contents();
    /// The same for a dialog whose labels wrap: at least `width` pixels wide, and as high as that makes them.
    void fit_to_contents(int width);
    /// After either: a dialog that is higher or wider than the screen is made smaller, and scrolls to what has
    /// no room in `content` any more; the buttons below that stay in sight. What is no wxScrolledWindow itself
    /// is put into one then.
    /// @since 3.1
    void keep_on_screen(wxWindow* content);
    /// What a dialog that is open does about its size when the desktop's fonts, scale or theme have changed:
    /// again what it last asked of the functions above, and it stays on the screen. A dialog that finds its
    /// size in another way overrides it. It is not made smaller than the user had made it larger.
    /// @since 3.1
    virtual void fit_again();
    /// A dialog that has grown stays wholly on its screen.
    /// @since 3.1
    void keep_in_sight();
    /// For windows that add to their layout: its sizer, or a new one where the layout has none.
    /// @since 3.1
    wxSizer* need_sizer();
    /// For on_init_dialog(): over the middle of the parent's window, wholly on its screen.
    void centre_on_parent();

private:
    bool load(wxWindow* parent);
    void fit_in_turn();
    void on_look_settled();

    /// Which of the functions that fit was asked last: to its contents, with this width, or neither.
    enum class fit_t
    {
        none,
        contents,
        width
    };
    fit_t m_fit = fit_t::none;
    int m_fit_width = 0;
    wxSize m_fitted;                      ///< the client size that came of it
    wxWeakRef<wxWindow> m_kept_on_screen; ///< what was given to keep_on_screen(), or the area around it
    bool m_follows = false;               ///< the area's contents
    bool m_outdated = false;              ///< the look changed while it was hidden

    int m_return_code = 0;
    gen_helpers2::_internal::signal_t<const std::string&> m_help_signal;
    std::string m_help_topic;

    wxDECLARE_EVENT_TABLE();
};

} // namespace commondlg3
