#pragma once

#include "commondlg3/dialog_base.h"
#include "commondlg3/message_options.h"
#include "commondlg3/message_window.h"
#include "commondlg3/pref_base.h"

#include <wx_helpers1/static_picture_ctrl.h>

#include <wx/checkbox.h>
#include <wx/scrolwin.h>

#include <optional>
#include <string>
#include <vector>

namespace commondlg3 {

class long_text_t;
class message_extras_t;

/// Breaks a text into lines of at most `max_len` bytes, at spaces; a line feed always ends a line. A line
/// without a space that reaches the limit gives an empty line and loses its first byte: never pass a limit
/// that is not longer than the longest word. Linear in the length of the text. Any thread.
COMMONDLG3_EXPORT std::vector<std::string> create_multi_line(std::size_t max_len, const std::string& text);

/// The lines joined by "\n".
COMMONDLG3_EXPORT std::string content_for_label(const std::vector<std::string>& lines);

/// What a message window shows: icon, texts, check box, buttons. It ends by its end signal, with wxID_OK for
/// the first button and wxID_CANCEL for the second. Use it alone only to embed a message in a window of your
/// own.
///
/// The texts scroll when they are taller than the screen has room for, and can be selected. GUI thread.
class COMMONDLG3_EXPORT error_warning_panel_t : public pref_base_t
{
public:
    explicit error_warning_panel_t(const message_window_t& window, const message_options_t& options = {});

    /// Whether its layout is there. A window around it without it would say nothing.
    /// @since 3.1
    bool can_be_loaded(const std::string& resource_file, const std::string& catalog_name) const;

    void on_init_dialog() override;
    void on_ok() override;
    void on_cancel() override;
    void on_update_ui_settings() override;

    /// Takes another message, which is shown by refill().
    void set_window(const message_window_t& window, const message_options_t& options = {})
    {
        m_window = window;
        m_options = options;
    }
    /// Shows the present message in the controls that are there.
    void refill();

    /// The widest line of the headline or of the explanation, in pixels; -1 breaks at every space. Smaller
    /// values are ignored. Without it lines are some sixty characters wide in every script, and no word is
    /// cut.
    void set_max_main_msg_width(int width);
    /// The same for the explanation.
    void set_max_supp_msg_width(int width);
    /// What the window needs above and below the panel, in pixels; the texts scroll where the rest of the
    /// screen is too low for them. 0 as long as nothing is set.
    /// @since 3.1
    void set_height_around(int height);
    /// Shows an animation in place of the still icon.
    void set_animation(const wx_helpers1::wxAnimation& animation);
    /// Hands the check box's state to its definition and, with `commit`, has it saved.
    void save_check_box_state(bool commit) const;
    message_window_t get_window_data() const { return m_window; }
    /// @since 3.1
    const message_options_t& get_options() const { return m_options; }

    /// Details of more than five lines are folded away at first.
    /// @since 3.1
    bool are_details_folded() const { return m_folds && m_folded; }
    /// Folds long details away, or shows them; short ones are always shown.
    /// @since 3.1
    void fold_details(bool folded);
    /// Raised when the panel needs another size.
    /// @since 3.1
    gen_helpers2::signal_t<>& get_resized_signal() { return m_resized; }

    /// Title, texts and details as text, for the clipboard.
    std::string get_text_for_clipboard(const std::string& title) const;
    /// The texts alone, without details that are folded away.
    /// @since 3.1
    std::string get_shown_text() const;
    /// Copies what is selected, or everything when nothing is.
    void copy(const std::string& title) const;
    /// Scrolls the texts for Page Up, Page Down, Home and End; false for any other key or when nothing
    /// scrolls.
    bool scroll_by_key(int key_code);
    /// Whether the texts are taller than their room.
    bool is_scrolled() const;

protected:
    /// Shows the picture of the message, or that of its icon.
    void load_images();
    /// Shows texts, check box and buttons.
    void fill_controls();
    /// Shows the texts, broken into lines.
    void fill_text_controls();
    /// Puts a text into one of the labels, broken into lines, in a font. An empty text changes nothing.
    void fill_static_text(wxStaticText* label, bool main, const std::string& text, const wxFont& font);
    /// The widest line of that label, in characters of average width.
    int max_string_len_in_label(bool main) const;

private:
    void fill_buttons();
    void fill_extras();
    bool has_long_details() const;
    const std::string& shown_details() const;
    int height_beside_texts() const;
    void arrange_extras(int text_width);
    void fill_check_box();
    int max_width(bool main) const;
    int default_text_width() const;
    int default_line_width(const std::string& text, int char_width) const;
    int most_width(bool main, int natural) const;
    void fit_texts();
    void put_labels(bool scrolls);
    void show_long_text(bool is_long);
    bool is_long() const;
    std::vector<wxStaticText*> labels() const;

    message_window_t m_window;
    message_options_t m_options;
    gen_helpers2::signal_t<> m_resized;
    int m_height_around = 0;
    bool m_folds = false; // its details are long
    bool m_folded = true;
    wxStaticText* m_main = nullptr;
    wxStaticText* m_supplemental = nullptr;
    wxStaticText* m_details = nullptr;
    wxScrolledWindow* m_text_area = nullptr;
    wx_helpers1::static_picture_ctrl_t* m_icon = nullptr;
    wxCheckBox* m_check_box = nullptr;
    long_text_t* m_long_text = nullptr;   // once a text was too long for labels
    message_extras_t* m_extras = nullptr; // once a message had any
    std::optional<int> m_max_main_width;  // what the host has set
    std::optional<int> m_max_supp_width;
};

/// The modal window around an error_warning_panel_t; made by show_modal(const message_window_t&, wxWindow*).
class COMMONDLG3_EXPORT error_warning_dialog_t : public dialog_base_t
{
public:
    explicit error_warning_dialog_t(const message_window_t& window, const message_options_t& options = {});
    ~error_warning_dialog_t() override;

    /// Another message, shown when the dialog is run again.
    void set_window(const message_window_t& window, const message_options_t& options = {});

    /// The panel, from construction on. It belongs to the dialog.
    error_warning_panel_t* get_panel() const { return m_panel; }

    bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                const std::string& catalog_name, const std::string& object_name) override;
    void on_init_dialog() override;
    void on_cancel() override;
    void on_update_ui_settings() override;

protected:
    /// The panel ended with wxID_OK or wxID_CANCEL: ends the window with the message's answer.
    virtual void on_end_panel(generic_base_t<wxPanel>* panel, int code);

private:
    void present();
    void on_panel_resized();
    void on_key(wxKeyEvent& event);

    message_window_t m_window;
    error_warning_panel_t* m_panel; // a window from the first showing on
    bool m_stale = false;           // shows another message than it holds
};

} // namespace commondlg3
