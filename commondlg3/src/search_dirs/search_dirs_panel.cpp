#include "commondlg3/search_dirs_panel.h"

#include "commondlg3/dir_checker.h"
#include "commondlg3/path_info.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"
#include "dir_grid.h"

#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>

#include <wx/bmpbuttn.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <algorithm>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using vdxpropgrid2::row_t;

struct type_name_t
{
    FF_2_13::search_category_t category;
    const char* key;
};

const type_name_t type_names[] = {
    {FF_2_13::category_binaries, catalog_key("panel.search_dirs.type_binaries")},
    {FF_2_13::category_symbols, catalog_key("panel.search_dirs.type_symbols")},
    {FF_2_13::category_sources, catalog_key("panel.search_dirs.type_sources")},
    {FF_2_13::category_others, catalog_key("panel.search_dirs.type_others")}};

// Keys come and go with what the grid shows; the directories are what is compared.
bool are_same(const std::vector<row_t>& a, const std::vector<row_t>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const row_t& one, const row_t& other) {
        return one.text == other.text && one.checked == other.checked;
    });
}

} // namespace

search_dirs_panel_t::search_dirs_panel_t(container_t container) : m_container(std::move(container))
{
    set_resource_object("panel.search_dir");
    for (const type_name_t& type : type_names)
        m_types.push_back({type.category, {}, {}, {}, 0});
}

search_dirs_panel_t::~search_dirs_panel_t() = default;

void search_dirs_panel_t::on_init_dialog()
{
    auto* area = from_xrc<wxPanel>(this, "m_grid_area");
    auto* label = from_xrc<wxStaticText>(this, "m_type_label");
    m_type_box = from_xrc<wxChoice>(this, "m_comboBox4");
    m_up = from_xrc<wxBitmapButton>(this, "m_bpButton1");
    m_down = from_xrc<wxBitmapButton>(this, "m_bpButton2");
    m_remove = from_xrc<wxBitmapButton>(this, "m_bpButton3");
    if (!area || !label || !m_type_box || !m_up || !m_down || !m_remove)
        return;
    for (const type_name_t& type : type_names)
        m_type_box->Append(wx_helpers1::to_label(translate_message(type.key)));
    wx_helpers1::set_label_for(label, m_type_box);
    m_grid = make_dir_grid(area, translate_message("panel.search_dirs.resursive"),
                           translate_message("panel.search_dirs.last_line"));
    m_checker = std::make_unique<dir_checker_t>(m_grid);
    dress({m_up, m_down, m_remove});
    load_settings();
    connect_grid();
}

void search_dirs_panel_t::connect_grid()
{
    m_type_box->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) { select_type(event.GetSelection()); });
    m_up->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { move_current(-1); });
    m_down->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { move_current(1); });
    m_remove->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { remove_row(m_grid->get_current_row()); });
    m_grid->get_more_signal().connect(
        this, [this](const vdxpropgrid2::click_data_t& data) { choose_dir(m_grid, data); });
    m_grid->get_remove_signal().connect(this, &search_dirs_panel_t::remove_row);
    m_grid->get_current_changed_signal().connect(this, [this](int) { update_buttons(); });
    m_grid->get_editing_finished_signal().connect(this, [this] { m_changed_signal.emit(); });
    m_grid->get_changed_signal().connect(this, [this] {
        update_buttons();
        m_changed_signal.emit();
    });
}

void search_dirs_panel_t::load_settings()
{
    if (!m_grid)
        return;
    for (file_type_t& type : m_types) {
        type.rows.clear();
        if (m_container)
            for (const auto at = m_container->get_dirs(type.category); !at->at_end(); at->next())
                type.rows.push_back({path_info_t(at->get_path()).as_string(), at->is_recursive()});
        type.saved = type.rows;
        type.not_a_dir.clear();
        type.not_dirs = 0;
    }
    show_type();
}

void search_dirs_panel_t::show_type()
{
    m_type_box->SetSelection(m_type);
    m_grid->set_rows(m_types[static_cast<std::size_t>(m_type)].rows);
    m_grid->set_current_row(0);
    m_checker->restart();
    update_buttons();
}

void search_dirs_panel_t::select_type(int type)
{
    if (!m_grid || type < 0 || type >= static_cast<int>(m_types.size()) || type == m_type)
        return;
    keep_shown_rows();
    m_type = type;
    show_type();
    m_changed_signal.emit();
}

// With what is being typed, and with what was found out about the paths.
void search_dirs_panel_t::keep_shown_rows()
{
    constexpr int longest_wait = 200; // milliseconds, for what was typed a moment ago
    m_grid->commit();
    m_checker->finish(longest_wait);
    file_type_t& type = m_types[static_cast<std::size_t>(m_type)];
    type.rows = m_grid->get_rows();
    type.not_a_dir.clear();
    type.not_dirs = 0;
    for (const row_t& row : type.rows) {
        if (m_checker->get_state(row.key).kind != dir_state_t::kind_t::file)
            continue;
        if (++type.not_dirs == 1)
            type.not_a_dir = row.text;
    }
}

bool search_dirs_panel_t::save_settings()
{
    if (!m_grid || !m_container)
        return true;
    keep_shown_rows();
    fill_container();
    m_save_result = m_container->save();
    const wxWeakRef<wxWindow> alive(this); // the host may go while something is told
    if (m_save_result.failed()) {
        tell_not_saved();
    } else {
        for (file_type_t& type : m_types)
            type.saved = type.rows;
        tell_not_a_dir();
    }
    if (!alive)
        return true;
    m_changed_signal.emit();
    return m_save_result.succeeded();
}

void search_dirs_panel_t::fill_container()
{
    for (const file_type_t& type : m_types) {
        if (are_same(type.rows, type.saved) && m_save_result.succeeded())
            continue;
        m_container->clear(type.category);
        const auto at = m_container->get_dirs(type.category);
        for (const row_t& row : type.rows)
            at->add(path_info_t(row.text).as_string(), row.checked);
    }
}

// Kept all the same: it may be a directory again tomorrow.
void search_dirs_panel_t::tell_not_a_dir()
{
    std::string first;
    int count = 0;
    for (const file_type_t& type : m_types) {
        if (first.empty())
            first = type.not_a_dir;
        count += type.not_dirs;
    }
    if (count > 0)
        show_msg_box(translate_message("panel.search_dirs.main_not_a_dir", {{"dir", first}}),
                     translate_message("panel.search_dirs.details_not_a_dir", {{"others", count - 1}}),
                     message_window_t::icon_types_t::warning, this);
}

void search_dirs_panel_t::tell_not_saved()
{
    show_msg_box(
        translate_message("panel.search_dirs.cannot_save"),
        translate_message("panel.search_dirs.cannot_save_details", {{"reason", m_save_result.message()}}),
        message_window_t::icon_types_t::error, this);
}

bool search_dirs_panel_t::is_changed() const
{
    if (!m_grid)
        return false;
    const auto shown = static_cast<std::size_t>(m_type);
    for (std::size_t i = 0; i < m_types.size(); ++i)
        if (!are_same(i == shown ? m_grid->get_rows() : m_types[i].rows, m_types[i].saved))
            return true;
    return m_grid->has_typed_text() || m_save_result.failed();
}

void search_dirs_panel_t::remove_row(int row)
{
    if (!m_grid || !m_grid->delete_row(row))
        return;
    m_grid->set_current_row(std::max(row - 1, 0));
    update_buttons();
}

void search_dirs_panel_t::move_current(int by)
{
    move_current_row(m_grid, by);
    update_buttons();
}

void search_dirs_panel_t::update_buttons()
{
    update({m_up, m_down, m_remove}, m_grid);
}

void search_dirs_panel_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    if (!m_grid)
        return;
    dress({m_up, m_down, m_remove});
    set_mark_pictures(m_grid);
}

} // namespace commondlg3
