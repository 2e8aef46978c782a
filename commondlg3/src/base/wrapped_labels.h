/// Labels that break their lines at the width that a layout gives them.
#pragma once

#include <vector>

class wxStaticText;
class wxWindow;

namespace commondlg3 {

/// Lays a window out by its sizer, but never smaller than its contents: what does not fit hangs over the
/// edges until the host makes room, where the toolkit would squeeze controls into less than they can be drawn
/// in, and complain of it.
void lay_out_unsqueezed(wxWindow& window);

/// The same, and gives each label the height that its text needs at the width it got. Null ones are passed
/// over.
///
/// For a handler of size events, which then must not let the toolkit lay out as well.
/// @return whether a height changed, so that whoever is around is to be laid out again
bool fit_wrapped_labels(wxWindow& window, const std::vector<wxStaticText*>& labels);

/// The same for a page; a host that scrolls it learns that there is more, or less, to scroll.
void rewrap_page(wxWindow& page, const std::vector<wxStaticText*>& labels);

} // namespace commondlg3
