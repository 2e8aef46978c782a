#pragma once

#include <commondlg3/message_window.h>

#include <nlohmann/json.hpp>

class wxWindow;

namespace gallery {

inline constexpr char center_object[] = "dlg.message_center";
inline constexpr char message_object[] = "dlg.error_warning_dialog";

enum class message_sample_t
{
    error,
    warning,
    success,
    information,
    progress
};

/// A record of a message window by the names of its fields, with the catalog's sample texts.
nlohmann::json sample_data(message_sample_t sample);
nlohmann::json with_check_box(nlohmann::json data);
/// Delete and Keep, in place of OK and Cancel.
nlohmann::json with_named_buttons(nlohmann::json data);
/// Long details, and buttons that help to report the message.
nlohmann::json with_support(nlohmann::json data);
/// Several messages at once, one of them three times.
nlohmann::json storm_data();
/// 300 lines of explanation.
nlohmann::json with_long_text(nlohmann::json data);
/// One word of 10,000 characters.
nlohmann::json with_long_word(nlohmann::json data);

/// The record that this data describes. A check box with a name keeps what it is told among the silenced
/// messages of this product; another reports it by JSON lines.
commondlg3::message_window_t message_from(const nlohmann::json& data);

/// Shows the message window and reports its opening and its answer. Returns the answer.
int open_message(const nlohmann::json& data, wxWindow* parent);
/// Several messages at once; the answer is that of the last.
int open_message_center(const nlohmann::json& data, wxWindow* parent);
/// The same through show_msg_box().
int open_message_box(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
