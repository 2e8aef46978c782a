#pragma once

#include "commondlg3/export.h"
#include "commondlg3/message_options.h"
#include "commondlg3/message_window.h"

#include <cfgmgr2/property_storage.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace commondlg3 {

/// A message that the user has silenced: what it said, and what is answered for the user.
/// @since 3.1
struct silenced_message_t
{
    std::string name;
    std::string main_message;
    std::string supplemental_message;
    std::string details_message;
    message_window_t::button_type_t button_type = message_window_t::button_type_t::close;
    message_window_t::icon_types_t icon_type = message_window_t::icon_types_t::error;
    int answer = message_window_t::result_none; ///< a message_window_t::result_t
    std::string answer_label;                   ///< of a button that the host named; without its "&"
    std::int64_t silenced_at = 0;               ///< seconds since 1970; 0 when it is not known

    /// As it looked, without its check box.
    [[nodiscard]] message_window_t get_window() const;

    friend bool operator==(const silenced_message_t& a, const silenced_message_t& b)
    {
        return a.name == b.name && a.answer == b.answer && a.silenced_at == b.silenced_at;
    }
};

/// Keeps which messages the user has silenced, for hosts that have no place of their own for it.
///
///     silenced_messages_t silenced(settings);              // a storage that the host opened
///     message_window_t window = ...;                       // Yes and No
///     if (silenced.ask("collect.overwrite", window, this) == message_window_t::result_yes)
///         overwrite();
///
/// ask() shows the message with a check box; once the user has ticked it, the answer that was given then is
/// given at once. A host that calls show_modal() itself gives its message the check box of make_check_box().
/// silenced_messages_pp_t is the page on which users find again what they have silenced.
///
/// Not for a question whose answer must be thought about each time, as whether to delete something: leave
/// that one without a check box.
///
/// Objects on one storage see the same messages; what is made of them may outlive them. What is changed by
/// the user's choice in a window is written to the disk by itself, in the background; an error is in the log.
/// Records that make no sense are passed over, and such a message is shown. GUI thread.
/// @since 3.1
class COMMONDLG3_EXPORT silenced_messages_t
{
public:
    using storage_t = gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage>;

    /// Keeps the messages in the child "silenced_messages" of the storage. Null remembers nothing.
    explicit silenced_messages_t(storage_t storage);

    /// Newest first.
    [[nodiscard]] std::vector<silenced_message_t> get_all() const;
    /// Nothing when no message of that name is silenced.
    [[nodiscard]] std::optional<silenced_message_t> find(const std::string& name) const;

    /// A check box for this message. The name tells the message from all others of the product, and stays
    /// the same from version to version.
    [[nodiscard]] gen_helpers2::sptr_t<i_check_box_definition> make_check_box(const std::string& name,
                                                                              const message_window_t& window);

    /// Asks by a message window, or gives the answer that was given when the message was silenced. A silenced
    /// message without a question answers what its button would. "Retry" is not remembered, as it would be
    /// tried for ever, nor is an answer that destroys, as it would be given unseen: such a message has no
    /// check box.
    /// @return what show_modal() does
    int ask(const std::string& name, message_window_t window, wxWindow* parent,
            const message_options_t& options = {});

    /// Puts a message among the silenced ones, in place of one of its name. Without a name nothing happens.
    void silence(const silenced_message_t& message);
    /// These are shown again. Of names that are not there nothing happens.
    void restore(const std::vector<std::string>& names);
    /// Writes the storage.
    [[nodiscard]] gen_helpers2::error_code_t save();

private:
    storage_t m_storage;
};

} // namespace commondlg3
