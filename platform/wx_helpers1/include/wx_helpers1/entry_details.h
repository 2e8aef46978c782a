/// @file
/// What a list box shows beside its entries: an icon before each, and two columns behind.
///
///     details.push_back({load_entry_icon("geany", "text-editor"), "(default)", "/usr/bin/geany"});
///     set_entry_details(list, details);
///
/// The entries stay what they were: what is shown beside them is no part of their texts.
#pragma once

#include "wx_helpers1/export.h"

#include <memory>
#include <string>
#include <vector>

class wxListBox;

namespace wx_helpers1 {

/// An icon of an entry, ready to be drawn.
/// @since 3.1
struct entry_icon_t
{
    std::string name;     ///< one of the theme's
    std::string fallback; ///< another one, in place of one that the theme lacks
    std::shared_ptr<void> pixels;
};

/// @param icon a name for the theme, or the path of a file, which is read here. Any thread; a file that cannot
/// be read gives the fallback.
/// @since 3.1
WX_HELPERS1_EXPORT entry_icon_t load_entry_icon(const std::string& icon, const std::string& fallback);

/// What stands beside the text of an entry.
/// @since 3.1
struct entry_detail_t
{
    entry_icon_t icon;
    std::string state;
    std::string place; ///< cut in its middle where there is no room
};

/// One for each entry; entries without one show nothing. A list that changes is given them anew. GUI thread.
/// @since 3.1
WX_HELPERS1_EXPORT void set_entry_details(wxListBox* list, std::vector<entry_detail_t> details);

} // namespace wx_helpers1
