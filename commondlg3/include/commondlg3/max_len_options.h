#pragma once

#include <string>

namespace commondlg3 {

/// The length limit of a text control, and how the message that explains it names the field.
struct max_len_options_t
{
    static constexpr long no_limit_given = -1;
    static constexpr long default_max_length = 10000;

    max_len_options_t() : max_length(default_max_length) {}

    /// @param field_name_ as the user knows the field, already translated; empty: the catalog's "text"
    /// @param max_length_ in characters; -1 means that none was given, and the default holds
    /// @param details_key_ catalog key of the message's body; empty: "max_len_details"
    max_len_options_t(const std::string& field_name_, long max_length_, const std::string& details_key_ = {})
        : max_length(max_length_), field_name(field_name_), details_key(details_key_)
    {
    }

    /// The limit in force, in characters.
    long effective_max_length() const
    {
        return max_length == no_limit_given ? default_max_length : max_length;
    }

    long max_length;
    std::string field_name;
    std::string details_key;
};

} // namespace commondlg3
