/// Labels that break their lines at the width that a layout gives them.
#pragma once

#include <vector>

class wxStaticText;
class wxWindow;

namespace commondlg3 {

/// Lays `window` out and gives each label the height that its text needs at the width it got. Nothing is
/// squeezed for it: what does not fit hangs over the lower edge until there is room. A window that is
/// narrower than its contents is left alone, as one is that its host has not laid out yet.
///
/// For a handler of size events, which then must not let the toolkit lay out as well.
/// @return whether a height changed, so that whoever is around is to be laid out again
bool fit_wrapped_labels(wxWindow& window, const std::vector<wxStaticText*>& labels);

} // namespace commondlg3
