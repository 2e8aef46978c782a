#pragma once

#include <commondlg3/preferences_page.h>

#include <nlohmann/json.hpp>

#include <memory>
#include <vector>

namespace gallery {

/// One page of the product's preferences, which is reported and shown alone by its resource object as well.
///
/// A new page is a class of its own in a file of its own, and a line in make_preferences_pages().
class preferences_page_t : public commondlg3::preferences_page_t
{
public:
    /// What the page's accessors return, for reports.
    virtual nlohmann::json get_data() const = 0;
};

std::vector<std::shared_ptr<commondlg3::preferences_page_t>> make_preferences_pages();

/// Preferences that have no file of their own.
constexpr char preferences_file[] = "preferences.xml";

} // namespace gallery
