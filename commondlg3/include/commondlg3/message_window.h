#pragma once

#include "commondlg3/export.h"

#include <cpil/varg_list.h>
#include <gen_helpers2/intrusive_pointer.h>
#include <wx_helpers1/picture.h>

#include <string>

class wxWindow;

namespace commondlg3 {

/// The check box by which a user silences a message. The caller implements it, over whatever keeps the
/// answer; the message window reads it before showing and stores the new state when it ends.
class i_check_box_definition
{
public:
    virtual void add_ref() = 0;
    virtual void release() = 0;

    /// The name under which the answer is kept; for settings pages that list what was silenced.
    virtual std::string get_name() const = 0;
    /// The state before the user ever chose.
    virtual bool get_default_checked() const = 0;
    /// Forgets the stored answer, so that the message shows again.
    virtual void reset() = 0;

    /// True when the user chose earlier to silence the message: it is then not shown.
    virtual bool is_checked() const = 0;
    virtual void set_checked(bool checked) = 0;
    /// Saves the state that set_checked() was given.
    virtual void commit() = 0;
    /// Already translated.
    virtual std::string get_label() const = 0;

protected:
    virtual ~i_check_box_definition() = default;
};

inline void intrusive_ptr_add_ref(i_check_box_definition* definition)
{
    definition->add_ref();
}
inline void intrusive_ptr_release(i_check_box_definition* definition)
{
    definition->release();
}

/// A modal error or warning window, as a value: fill it, hand it to show_modal(), read the code of the
/// button.
///
///     auto window = message_window_t::simple_warning_wnd(
///         "commondlg", "collect.overwrite", "collect.overwrite_details",
///         message_window_t::button_type_t::yes_no, {}, {});
///     if (show_modal(window, this) == message_window_t::result_yes) ...
///
/// Use it when the user must answer before going on. For problems of a page use its heading block, for the
/// course of a long job its log: windows that pop up stop the user. Texts are UTF-8, already translated; GUI
/// thread.
class COMMONDLG3_EXPORT message_window_t
{
public:
    /// Which buttons the window shows; 7 and above look like 0.
    enum class button_type_t : int
    {
        close = 0,                ///< Close
        yes_no = 1,               ///< Yes, No
        close_unreported = 2,     ///< a Close button whose press is answered with result_none
        ok_cancel = 3,            ///< OK, Cancel
        close_unreported_too = 4, ///< the same
        retry_cancel = 5,         ///< Retry, Cancel
        none = 6                  ///< no button; the close box ends it
    };

    /// The pictures that there are; see `picture` for another one.
    enum class icon_types_t : int
    {
        error = 0,
        warning = 1,
        success = 2,
        information = 3,
        progress = 4
    };

    /// What show_modal() returns.
    enum result_t
    {
        result_close = 0,     ///< Close, Escape or the close box
        result_yes = 1,       ///< Yes
        result_no = 2,        ///< No
        result_ok = 3,        ///< OK
        result_cancel = 4,    ///< Cancel
        result_retry = 5,     ///< Retry
        result_no_parent = 6, ///< of show_msg_box(): neither a parent nor a main window
        result_none = 7       ///< silenced, not loaded, or ended in a way that means no choice
    };

    message_window_t() = default;

    /// These take a text from a catalog: the headline, the explanation, the details. What get_message() says of
    /// missing ones holds.
    void set_main_message(const std::string& catalog, const std::string& key,
                          const CPIL_2_18::generic::varg_list& args);
    /// See set_main_message().
    void set_supplemental_message(const std::string& catalog, const std::string& key,
                                  const CPIL_2_18::generic::varg_list& args);
    /// See set_main_message().
    void set_details_message(const std::string& catalog, const std::string& key,
                             const CPIL_2_18::generic::varg_list& args);
    /// The catalog's text, or a text that says what is missing.
    static std::string get_message(const std::string& catalog, const std::string& key,
                                   const CPIL_2_18::generic::varg_list& args);

    /// An error with two texts of a catalog and a Close button.
    static message_window_t simple_error_wnd(const std::string& catalog, const std::string& main_key,
                                             const std::string& supplemental_key,
                                             const CPIL_2_18::generic::varg_list& main_args,
                                             const CPIL_2_18::generic::varg_list& supplemental_args);
    /// A warning with two texts of a catalog and these buttons.
    static message_window_t simple_warning_wnd(const std::string& catalog, const std::string& main_key,
                                               const std::string& supplemental_key, button_type_t button_type,
                                               const CPIL_2_18::generic::varg_list& main_args,
                                               const CPIL_2_18::generic::varg_list& supplemental_args);
    /// The same with a check box by which the user silences it.
    static message_window_t warning_wnd_with_check(const std::string& catalog, const std::string& main_key,
                                                   const std::string& supplemental_key,
                                                   button_type_t button_type,
                                                   gen_helpers2::sptr_t<i_check_box_definition> check_box,
                                                   const CPIL_2_18::generic::varg_list& main_args,
                                                   const CPIL_2_18::generic::varg_list& supplemental_args);

    /// An unknown type is an assertion and an empty picture.
    static wx_helpers1::picture_t get_icon_by_type(icon_types_t type);

    std::string main_message;         ///< the headline
    std::string supplemental_message; ///< the explanation
    std::string details_message;      ///< technical details, shown below the explanation
    bool reserved_flag = false;       ///< not read by the library
    button_type_t button_type = button_type_t::close;
    icon_types_t icon_type = icon_types_t::error;
    std::string reserved_text;         ///< not read by the library
    bool second_reserved_flag = false; ///< not read by the library
    gen_helpers2::sptr_t<i_check_box_definition> check_box;
    wx_helpers1::picture_t picture; ///< instead of the icon's own, when not empty
};

/// Shows the window over `parent` (null: over the main window) and waits for the answer. A window that the
/// user has silenced, or that cannot be loaded, answers result_none at once.
COMMONDLG3_EXPORT int show_modal(const message_window_t& window, wxWindow* parent);

} // namespace commondlg3
