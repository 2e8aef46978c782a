#pragma once

#include <optional>
#include <string>
#include <vector>

class wxWindow;

namespace bench {

/// The windows whose openings are compared: ours, and the toolkit's own message windows with the same texts.
enum class kind_t
{
    message,            ///< two texts, OK and Cancel, the warning icon
    message_check_box,  ///< the same with a check box
    message_long,       ///< a text of 1 MB without a blank
    example,            ///< the gallery's dialog: two text fields with labels and limits, three buttons
    result_saving,      ///< the page about saving results in a dialog of the gallery
    page_result_saving, ///< that page inside a window that is open already: choosing it in the preferences
    page_consent,       ///< the same with the page that asks for consent
    preferences,        ///< the gallery's preferences, with the page about sampling
    ask,                ///< the library's dialogs that ask for a file,
    clipboard,          ///< show a text,
    consent,            ///< and ask for consent
    native,             ///< wxMessageDialog
    rich,               ///< wxRichMessageDialog, which has a check box
    generic             ///< wxGenericMessageDialog
};

std::optional<kind_t> kind_of(const std::string& name);

/// All from before the window's construction.
struct opening_t
{
    double drawn_ms = 0;   ///< until it was drawn first
    double painted_ms = 0; ///< until it is on the screen and nothing is left to do
    double ended_ms = 0;   ///< until it has been ended and destroyed
};

/// Opens a window, ends it as soon as it is painted.
opening_t open(kind_t kind, wxWindow* parent);

double median(std::vector<double> values);

} // namespace bench
