#pragma once

#include "page_icons.h"
#include "preferences_page.h"

#include <commondlg3/search_dirs_tab.h>
#include <commondlg3/settings_file.h>
#include <ff/search_directories.h>

#include <wx/weakref.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace gallery {

/// The file finder's directories of this product, kept beside its preferences. The pages share one of them.
class search_dirs_store_t
{
public:
    /// Reads the file at the first call, and again when another program has written it.
    gen_helpers2::error_code_t load();
    /// Null before load().
    const FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>& get() const { return m_container; }
    const gen_helpers2::path_t& get_path() const { return m_file.get_path(); }

private:
    commondlg3::settings_file_t m_file{"search_directories.xml"};
    FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer> m_container;
};

/// One category's directories.
class search_dirs_page_t : public preferences_page_t
{
public:
    static constexpr char object_name[] = "panel.search_dir_tab";

    /// @param name of the category: part of its object's name and of its keys
    search_dirs_page_t(std::shared_ptr<search_dirs_store_t> store, FF_2_13::search_category_t category,
                       std::string name);

    std::string get_name() const override { return std::string(object_name) + "." + m_name; }
    std::string get_title() const override;
    std::string get_search_words() const override;
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::directories); }
    gen_helpers2::error_code_t load() override { return m_store->load(); }
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    void show_kept() override;
    bool is_changed() const override;
    void store() override;
    gen_helpers2::error_code_t save() override;
    std::vector<gen_helpers2::path_t> get_files() const override;
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    gen_helpers2::variant_bag_t get_defaults() const override;
    std::vector<setting_t> get_setting_controls() const override;
    std::string get_group() const override;
    nlohmann::json get_data() const override;

private:
    std::shared_ptr<search_dirs_store_t> m_store;
    FF_2_13::search_category_t m_category;
    std::string m_name;
    wxWeakRef<commondlg3::search_dirs_tab_t> m_tab;
};

/// The category of a page by its object's name; without a category's name in it, that of sources. Nothing
/// when it is another page.
std::optional<FF_2_13::search_category_t> category_of_page(const std::string& object);

/// Each opens a window alone, on lists of its own, and reports by JSON lines; nothing is written.
/// @param data {"category": 3, "error_mode": 1, "dirs": ["/usr/src", ...]}; null: a sample. "extras" are those
/// of the tab, "found" says how many files are where: {"/usr/src": [3, 5]}, and "symbols" and so on are other
/// categories' lists
/// @param category where the data names none
int open_search_dirs_tab(const nlohmann::json& data, wxWindow* parent);
/// @param data {"binaries": [...], "symbols": [...], "sources": [...], "others": [...]} with paths or
/// {"path": ..., "recursive": true}; "save_fails": true: as if the disk were full. Null: a sample
int open_search_dirs_panel(const nlohmann::json& data, wxWindow* parent);
int open_file_finder_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
