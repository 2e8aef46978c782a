#pragma once

#include "file_page.h"
#include "page_icons.h"

#include <commondlg3/silenced_messages_pp.h>

#include <wx/weakref.h>

#include <string>
#include <utility>
#include <vector>

namespace gallery {

/// The messages that the user has silenced, in the product's preferences.
class silenced_preferences_t : public file_page_t
{
public:
    using file_page_t::file_page_t;

    std::string get_name() const override;
    std::string get_title() const override;
    std::string get_search_words() const override;
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::messages); }
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    void show_kept() override { m_page->load_settings(); }
    bool is_changed() const override { return m_page && m_page->is_changed(); }
    void store() override { m_page->save_settings(); }
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    gen_helpers2::variant_bag_t get_defaults() const override { return {}; }
    /// What somebody does not want to see is nobody else's affair.
    bool is_exported() const override { return false; }
    nlohmann::json get_data() const override;

private:
    std::vector<std::string> get_names() const;

    wxWeakRef<commondlg3::silenced_messages_pp_t> m_page;
};

} // namespace gallery
