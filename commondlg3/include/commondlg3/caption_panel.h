#pragma once

#include "commondlg3/caption_label.h"
#include "commondlg3/pref_base.h"

#include <wx_helpers1/style.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class wxBitmapButton;

namespace wx_helpers1 {
class static_picture_ctrl_t;
class wxStaticPicture;
} // namespace wx_helpers1

namespace commondlg3 {

class parent_layout_t;

/// The heading of a page or dialog: a caption, a description below it, and one of the messages that wait,
/// with arrows to step through the others.
///
/// Use it for what is wrong, or worth knowing, about what the page shows, for as long as it is so. What is
/// told once belongs in a message window (show_modal()), a single notice of the page in
/// simple_message_panel_t, a growing list in inplace_ctrl_t.
///
///     m_heading = new caption_panel_t(this, title, description);
///     sizer->Insert(0, m_heading, 0, wxEXPAND);                       // in a vertical sizer
///     m_bad_port = m_heading->add_message(caption_panel_t::severity_t::error, text);
///     ...
///     m_heading->remove_message(m_bad_port);                          // once it is fixed
///
/// Messages are kept the most severe first, and in the order of their arrival within a severity. A message
/// that comes first is shown at once; one that does not waits. One with an empty text is kept but never
/// shown. A single message has no arrows; between those of several stands which of how many is shown. Screen
/// readers are told that as well, and the severity as a word.
///
/// The panel's height follows its texts at the width that it gets: in a vertical box sizer with wxEXPAND
/// within the one layout, elsewhere by laying its parent out again. Texts are UTF-8 bytes, shown as they
/// stand. Ownership: a window, destroyed by its parent. GUI thread. An unknown id or index is no error.
class COMMONDLG3_EXPORT caption_panel_t : public pref_base_t
{
public:
    /// The lower, the more severe. Any other value is shown as a warning.
    enum class severity_t : std::int32_t
    {
        critical,
        error,
        warning,
        information
    };

    /// A message of the heading.
    struct message_info_t
    {
        std::int32_t id = 0;
        severity_t severity = severity_t::critical;
        std::string text;
    };

    explicit caption_panel_t(wxWindow* parent);
    caption_panel_t(wxWindow* parent, const std::string& caption, const std::string& description);
    ~caption_panel_t() override;

    /// The bold first line.
    void set_caption(const std::string& text);
    /// An empty text hides the description.
    void set_description(const std::string& text);

    /// @return the message's id, from 0 upwards, never used again
    int add_message(severity_t severity, const std::string& text);
    /// Replaces the text, also on the screen where it is the shown one. An empty text is never shown: the
    /// pane keeps the one before until another message is shown.
    void edit_message(int id, const std::string& text);
    /// Forgets the message. When it is the shown one the first of the rest takes its place, unless its text
    /// is empty.
    void remove_message(int id);
    /// Forgets all messages, and nothing else: what is shown stays on the screen until the next message, or
    /// until the pane is hidden.
    void clear_messages();

    /// Where the message stands, or -1. A negative id is an assertion.
    int get_message_index(int id) const;
    /// A copy; a record with id 0, severity critical and an empty text when there is none.
    message_info_t get_message(int id) const;
    int get_message_count() const { return static_cast<int>(m_messages.size()); }
    /// The id of the message that stands there, or -1.
    int get_message_id(int index) const;
    /// -1 when none is shown.
    int get_current_id() const { return m_current_id; }

    /// Shows a message. Unforced, it does not displace another one that is as severe or more; the message
    /// with id 0, though, is displaced by any.
    void show_message(int id, bool force);
    /// From the last to the first, and the other way round.
    void show_next_message();
    /// The other way round.
    void show_prev_message();
    /// Shows the arrows when there are two messages or more. @return whether that changed anything
    bool update_buttons();
    /// Forgets which message is shown; the pane stays as it is.
    void hide_message_pane();

    /// Raised with the id each time a message has been shown, also by the user's stepping.
    gen_helpers2::signal_t<int>& get_shown_signal() { return m_shown_signal; }
    /// Raised with the id after show_next_message() and show_prev_message(), which the arrows call: the page can
    /// point at what the message is about.
    /// @since 3.1
    gen_helpers2::signal_t<int>& get_stepped_signal() { return m_stepped_signal; }

    /// Whether the page around is read only. The reader may step through the messages all the same.
    void set_read_only(bool read_only);
    bool get_read_only() const { return m_read_only; }
    /// From now on the pane is not shown any more; messages are kept as before.
    void disable();

    /// Bold caption, plain description, both in the style's colour.
    void set_style(wx_helpers1::style_t style);
    /// Gives the arrows their pictures, which change places in a window from right to left.
    void set_button_images();
    /// Takes fonts, colours and pictures of the theme; called at each change of it.
    virtual void on_ui_changed();
    /// The picture that stands beside a message.
    static wx_helpers1::wxStaticPicture get_picture(severity_t severity);

    virtual void on_size(wxSizeEvent& event);
    bool InformFirstDirection(int direction, int size, int available_other_dir) override;

protected:
    /// The constructors' part that makes the controls and shows these texts.
    void init(const std::string& caption, const std::string& description);
    /// Makes caption and description, without their texts.
    void create_top_controls();

private:
    std::vector<message_info_t>::iterator find(int id);
    std::vector<message_info_t>::const_iterator find(int id) const;
    void create_message_pane();
    void learn_message_delta();
    bool has_all_controls() const;
    int message_width(int panel_width) const;
    bool wrap_labels(int width);
    void update_min_height();
    void show_pane(bool shown);
    void step(int by);
    bool show_position(const message_info_t& message);
    void hide_messages();
    void number_buttons();
    void tell_message(const message_info_t& message);
    std::string describe(const message_info_t& message) const;
    void announce(const message_info_t& message);

    gen_helpers2::signal_t<int> m_shown_signal;
    gen_helpers2::signal_t<int> m_stepped_signal;
    std::unique_ptr<parent_layout_t> m_parent_layout;
    std::vector<message_info_t> m_messages;
    std::int32_t m_next_id = 0;
    std::int32_t m_current_id = -1;
    bool m_disabled = false;
    bool m_read_only = false;
    bool m_in_size = false;
    int m_line_height = 0;
    int m_message_delta = 0;
    int m_picture_width = 0;
    wx_helpers1::style_t m_style = wx_helpers1::style_t::normal;
    caption_label_t* m_caption = nullptr;
    caption_label_t* m_description = nullptr;
    wxPanel* m_pane = nullptr;
    wx_helpers1::static_picture_ctrl_t* m_picture = nullptr;
    caption_label_t* m_message = nullptr;
    wxBitmapButton* m_previous = nullptr;
    wxStaticText* m_position = nullptr;
    wxBitmapButton* m_next = nullptr;
};

} // namespace commondlg3
