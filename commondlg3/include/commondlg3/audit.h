#pragma once

#include "commondlg3/export.h"

#include <string>
#include <vector>

class wxWindow;

namespace commondlg3 {

/// What is wrong with a window for somebody who enlarges texts, reads another script, has no mouse, or only
/// hears the screen.
/// @since 3.1
struct audit_finding_t
{
    /// One of:
    /// - "no_size", "outside", "overlapping": a control without room, beyond its window, over another
    /// - "text_cut": a text that needs more room than it has
    /// - "beyond_screen": the window, or a button of it
    /// - "tab_misses", "tab_trapped": a control that Tab never reaches, or never leaves
    /// - "no_focus": no control has the keyboard, or another window is active
    /// - "no_name", "same_name", "other_name": a control that a screen reader cannot tell from another, or
    ///   tells by another name than the one that is seen
    /// - "same_mnemonic": two controls with one letter
    /// - "low_contrast": a text below 4.5 to 1
    /// - "raw_key", "other_language": a text that is no text, or not one of the window's language
    std::string kind;
    /// From the window's name down to that of the control, with "/" between.
    std::string control;
    /// What was found there: the text, the second control, the figure.
    std::string detail;
};

/// Looks for what a machine can see to be wrong with a window. For hosts, in their tests, over every window
/// that they open and in every language:
///
///     for (const commondlg3::audit_finding_t& finding : commondlg3::audit_window(&dialog))
///         std::cerr << finding.kind << ' ' << finding.control << ' ' << finding.detail << '\n';
///
/// It says nothing about texts that are hard to understand, or an order of controls that makes no sense:
/// not instead of looking, or of listening to a screen reader.
///
/// The window must be on the screen, active and painted, and nothing may lie over it: contrast is taken
/// from what the screen shows (nowhere else is it known; under Wayland it is left out). The focus goes
/// through the window once in each direction and comes back, with what that does to fields: they check what
/// they hold. For a control the answer is about the top-level window that it is in; a null window has no
/// findings. GUI thread.
/// @since 3.1
COMMONDLG3_EXPORT std::vector<audit_finding_t> audit_window(wxWindow* window);

} // namespace commondlg3
