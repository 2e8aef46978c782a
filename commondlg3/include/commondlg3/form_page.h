#pragma once

#include "commondlg3/preferences_page.h"
#include "commondlg3/settings_file.h"

#include <gen_helpers2/variant.h>

#include <wx/weakref.h>

#include <string>
#include <vector>

class wxControl;

namespace commondlg3 {

/// A page of the preferences that is a form: each of its controls holds one setting.
///
///     class sampling_page_t : public commondlg3::form_page_t
///     {
///     public:
///         explicit sampling_page_t(commondlg3::settings_file_ptr_t file)
///             : form_page_t(std::move(file), "sampling", {"my.dat", "my.xrc", "pref.sampling", "my_catalog"})
///         {
///             add("interval", "m_interval", 10);
///             add("with_stacks", "m_with_stacks", true);
///         }
///         std::string get_title() const override { return text("pref.sampling.title"); }
///     };
///
/// The layout holds the controls by these object names: wxCheckBox and wxRadioButton hold a bool, wxSpinCtrl
/// and wxChoice an int (of the choice its place, from 0), wxTextCtrl and wxComboBox a text. One that is
/// missing keeps its setting as it is. A value of another type than the default's counts as none.
///
/// A page of a few controls needs no layout: it makes them itself, each with the id of its name.
///
///     explicit sampling_page_t(settings_file_ptr_t file) : form_page_t(std::move(file), "sampling")
///     {
///         add("with_stacks", "m_with_stacks", true);
///     }
///     void make_controls(wxPanel& page) override
///     {
///         auto* rows = new wxBoxSizer(wxVERTICAL);
///         rows->Add(new wxCheckBox(&page, XRCID("m_with_stacks"), "&Stacks"), 0, wxALL, 12);
///         page.SetSizer(rows);
///     }
///
/// Whoever needs the settings asks the page, when it is shown and when it is not: get_settings() has what is
/// kept, and what the product begins with where nothing is.
///
/// For a page that checks more than a form can, override validate(), and get the controls by find(). GUI
/// thread, as preferences_page_t says.
/// @since 3.1
class COMMONDLG3_EXPORT form_page_t : public preferences_page_t
{
public:
    /// Where the page's layout and texts are; see create_resource_filename().
    struct layout_t
    {
        std::string archive;
        std::string member;
        std::string object;
        std::string catalog;
    };

    /// @param name the page's, and of the child in which its settings are kept
    form_page_t(settings_file_ptr_t file, std::string name, layout_t layout);
    /// Without a layout: make_controls() makes what is on the page.
    form_page_t(settings_file_ptr_t file, std::string name);
    ~form_page_t() override;

    std::string get_name() const override { return m_name; }
    gen_helpers2::error_code_t load() override;
    gen_helpers2::error_code_t save() override;
    std::vector<gen_helpers2::path_t> get_files() const override;
    pref_base_t* create(wxWindow* parent) override;
    void show_kept() override { set_settings(get_kept()); }
    bool is_changed() const override;
    void store() override;
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    gen_helpers2::variant_bag_t get_defaults() const override;
    std::vector<setting_t> get_setting_controls() const override;

protected:
    /// For the constructor.
    void add(const std::string& name, const std::string& control, gen_helpers2::variant_t usual);
    /// Puts controls onto the page, and lays them out; with a layout it is not called.
    virtual void make_controls(wxPanel& page);
    /// From the layout's catalog.
    std::string text(const std::string& key) const;
    /// A control of the page by its object name; null before create(), or when it is not there.
    wxWindow* find(const std::string& control) const;

private:
    struct field_t
    {
        std::string name;
        std::string control;
        gen_helpers2::variant_t usual;
    };

    gen_helpers2::variant_bag_t get_kept() const;
    gen_helpers2::variant_bag_t with_entered(gen_helpers2::variant_bag_t settings) const;

    settings_file_ptr_t m_file;
    std::string m_name;
    layout_t m_layout;
    std::vector<field_t> m_fields;
    wxWeakRef<pref_base_t> m_page;
};

} // namespace commondlg3
