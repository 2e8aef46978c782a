#pragma once

#include "commondlg3/preferences_page.h"

#include <string>
#include <vector>

class wxPanel;
class wxScrolledWindow;

namespace commondlg3 {

/// The pages that were made so far, one of which is seen, in an area that scrolls.
class page_stack_t
{
public:
    static constexpr int none = -1;

    struct page_t
    {
        preferences_page_ptr_t page;
        pref_base_t* window = nullptr; ///< once it was made; the area's, or that of the pages out of sight
        gen_helpers2::variant_bag_t kept{}; ///< what is on the disk, since it was made
        std::string texts{};                ///< see get_texts(); empty until they are asked for
        bool unwritten = false;             ///< was stored, but could not be saved
        bool changed = false;               ///< when it was last looked at
    };

    void add(preferences_page_ptr_t page) { m_pages.push_back({std::move(page)}); }
    /// @param area from the layout, with a sizer
    void use(wxScrolledWindow* area);
    wxScrolledWindow* get_area() const { return m_area; }

    int size() const { return static_cast<int>(m_pages.size()); }
    page_t& at(int page) { return m_pages[page]; }
    const std::vector<page_t>& all() const { return m_pages; }
    /// By name; none when there is no such page.
    int find(const std::string& name) const;

    /// Makes the page if need be; hidden.
    page_t& need(int page);
    /// What a search looks at: a page's words, and what stands on it once it was made.
    const std::string& get_texts(int page);
    /// Makes one more page that nobody has looked at; false when all are there.
    bool make_next();
    /// Puts a page in sight, in place of the one that is.
    void show(int page);
    int get_shown() const { return m_shown; }
    /// Looks whether a page is changed; whoever types on one changes no other.
    void look(int page);
    void look_at_all();
    /// As far as was looked.
    std::vector<int> get_changed() const;
    /// Of all pages, as the look has changed.
    void forget_widths();
    /// A page needs another size once its texts have been broken anew; whether it did.
    bool fit();

private:
    void put(const page_t& page, bool in_sight);

    std::vector<page_t> m_pages;
    int m_shown = none;
    wxSize m_fitted; ///< what the page needed when the area was last fitted to it
    wxScrolledWindow* m_area = nullptr;
    wxPanel* m_out_of_sight = nullptr; ///< holds the pages that are not seen
};

} // namespace commondlg3
