#pragma once

#include "file_page.h"
#include "page_icons.h"

#include <commondlg3/editor_pp.h>

#include <wx/weakref.h>

#include <string>
#include <utility>
#include <vector>

namespace gallery {

/// The programs that open source files, kept in the product's preferences.
class editor_page_t : public file_page_t
{
public:
    static constexpr char object_name[] = "pref.editor";

    using file_page_t::file_page_t;

    std::string get_name() const override { return object_name; }
    std::string get_title() const override;
    std::string get_search_words() const override;
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::editors); }
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    void show_kept() override;
    bool is_changed() const override;
    void store() override;
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    gen_helpers2::variant_bag_t get_defaults() const override;
    std::vector<setting_t> get_setting_controls() const override;
    nlohmann::json get_data() const override;

private:
    wxWeakRef<commondlg3::editor_pp_t> m_page;
};

/// What the desktop knows, then what was kept; on an error the former alone.
commondlg3::editor_data_t load_editors(gen_helpers2::error_code_t& result);

/// Opens the page alone and reports by JSON lines; nothing is written. Null data: load_editors().
int open_editor_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
