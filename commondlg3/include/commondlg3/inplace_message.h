#pragma once

#include "commondlg3/export.h"

#include <gen_helpers2/error_code.h>
#include <gen_helpers2/intrusive_pointer.h>
#include <gen_helpers2/variant_bag.h>
#include <wx_helpers1/picture.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace commondlg3 {

/// One button of an in-place message.
struct message_button_t
{
    message_button_t(std::int32_t button_id, const std::string& label, bool is_default)
        : id(button_id), text(label), flag(is_default)
    {
    }

    std::int32_t id;  ///< what the caller's callback gets when it is pressed
    std::string text; ///< the label, translated, '&' before the letter that is reached with Alt
    bool flag;        ///< the default button
};

/// The head of an entry of the in-place message control.
///
/// The records of this header are what a caller hands to an inplace_ctrl_t: plain data, shared by reference
/// count, without a window of their own. Make them with new and keep them in their `ptr_t`. Texts are UTF-8.
/// A record is not locked: fill it before it is handed over, or on the GUI thread.
///
///     standard_message_t::ptr_t message(new standard_message_t);
///     message->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::error);
///     message->caption = "Samples could not be collected";
///     message->message = "The process <b>render_server</b> has ended.";
///     message->set_buttons(standard_message_t::standard_buttons_t::close_retry);
///     control->add_message(message, callback);
class COMMONDLG3_EXPORT header_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<header_t>;

    header_t() = default;
    virtual ~header_t();

    wx_helpers1::picture_t picture; ///< the icon: still, animated, or none
    std::string caption;            ///< the bold first line

    void add_ref() const noexcept { m_count.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept
    {
        if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

protected:
    // The count belongs to the object, not to its value.
    header_t(const header_t& other) : picture(other.picture), caption(other.caption) {}
    header_t& operator=(const header_t& other)
    {
        picture = other.picture;
        caption = other.caption;
        return *this;
    }

private:
    mutable std::atomic<long> m_count{0};
};

inline void intrusive_ptr_add_ref(const header_t* record) noexcept
{
    record->add_ref();
}
inline void intrusive_ptr_release(const header_t* record) noexcept
{
    record->release();
}

/// One message: head, text and buttons.
class COMMONDLG3_EXPORT message_t : public header_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<message_t>;

    /// HTML in which people write freely: '<' and '&' that are no markup show as themselves. Nothing that it
    /// names is ever opened.
    std::string message;
    std::vector<message_button_t> buttons; ///< from left to right
    std::int32_t default_button = -1;      ///< index into `buttons`; -1: none

    /// Writes "msg", "cap" and, for a still picture, "img" (the text of an XPM image). Buttons are not
    /// written. Always succeeds.
    gen_helpers2::error_code_t save(gen_helpers2::variant_bag_t& bag) const;
    /// Reads them back. A key that is missing leaves its field as it was, a value that is no text too, with
    /// an assertion. A picture that cannot be read gives an empty one. Always succeeds.
    gen_helpers2::error_code_t load(const gen_helpers2::variant_bag_t& bag);

    /// An index beyond the end gives a shared button with id 0 and no text.
    const message_button_t& get_button(unsigned int index) const;
};

/// A message whose buttons the caller puts together.
class COMMONDLG3_EXPORT interactive_message_t : public message_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<interactive_message_t>;

    /// Adds a button at the end; the first of a message without a default becomes it.
    void add_button(int id, const std::string& text);
    /// Makes the first button with this id the default. False, changing nothing, when there is none.
    bool set_default_button(int id);
    /// The id of the default button; -1 when there is none.
    int get_default_button() const;
    /// Renames every button with this id.
    void set_button_name(int id, const std::string& text);
    /// Without buttons, and without a default one.
    void clear_buttons();
};

/// A message with one of the usual sets of buttons and icons.
class COMMONDLG3_EXPORT standard_message_t : public interactive_message_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<standard_message_t>;

    /// Ids of the buttons of the sets; those of your own may be any others.
    enum button_id_t
    {
        button_close = 1,
        button_yes = 2,
        button_no = 3,
        button_ok = 4,
        button_cancel = 5,
        button_retry = 7
    };

    /// The sets of buttons, from left to right as they are named.
    enum class standard_buttons_t : int
    {
        close = 0,
        yes_no = 1,
        yes_no_retry = 2,
        ok_cancel = 3,
        ok_cancel_retry = 4,
        close_retry = 5
    };

    /// The icons that there are.
    enum class icon_types_t : int
    {
        error = 0,       ///< something failed
        warning = 1,     ///< something may fail
        success = 2,     ///< something is done
        information = 3, ///< something to know
        progress = 4     ///< the busy animation
    };

    /// Replaces the buttons by a set; an unknown one is Close alone. No button is flagged, and
    /// `default_button` holds the number of the set: call set_default_button() to choose one.
    void set_buttons(standard_buttons_t kind);

    /// An unknown type is an assertion and the error icon. GUI thread.
    static wx_helpers1::picture_t get_icon_by_type(icon_types_t type);
};

/// What a progress entry shows: like a message; its buttons are not used, as it has a Cancel button of its
/// own.
class COMMONDLG3_EXPORT progress_message_t : public message_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<progress_message_t>;
};

/// For entries with contents of the caller's; inplace_ctrl_t does not show them yet.
class COMMONDLG3_EXPORT custom_message_t : public header_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<custom_message_t>;
};

} // namespace commondlg3
