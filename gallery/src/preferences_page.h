#pragma once

#include <commondlg3/pref_base.h>
#include <gen_helpers2/error_code.h>

#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <vector>

namespace gallery {

/// One page of the preferences: the library's page, and the place where its settings are kept.
///
/// A new page is a class of its own in a file of its own, and a line in make_preferences_pages(). The dialog
/// creates a page when it is first looked at; one that never was has nothing to apply.
class preferences_page_t
{
public:
    virtual ~preferences_page_t() = default;

    /// The page's resource object: by it the page is remembered, reported and shown alone.
    virtual std::string get_object() const = 0;
    /// Translated, for the list of pages.
    virtual std::string get_title() const = 0;
    /// Translated words, beside the title, by which the page is found.
    virtual std::string get_search_words() const = 0;

    /// Reads the stored settings; on an error the page will show what the product begins with.
    virtual gen_helpers2::error_code_t load() = 0;
    /// The page itself, created below the parent, which owns it.
    virtual commondlg3::pref_base_t* create(wxWindow* parent) = 0;
    /// Whether there is anything that apply() would have to write.
    virtual bool is_changed() const = 0;
    /// Takes what the page holds and writes it. On an error the page keeps it, and is_changed() stays true.
    virtual gen_helpers2::error_code_t apply() = 0;

    /// After apply(): whether the user, asked for it, wants what was written to take effect by a restart now.
    virtual bool prompt_restart() { return false; }

    /// What the page's accessors return, for reports.
    virtual nlohmann::json get_data() const = 0;
};

std::vector<std::unique_ptr<preferences_page_t>> make_preferences_pages();

} // namespace gallery
