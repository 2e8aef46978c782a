#include "commondlg3/search_dirs_tab.h"

#include "commondlg3/caption_panel.h"
#include "commondlg3/dir_checker.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"
#include "dir_grid.h"

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <algorithm>
#include <utility>

// The list: from the container into the grid, what the user does to it, and back.
namespace commondlg3 {

using FF_2_13::search_category_t;
using vdxpropgrid2::click_data_t;
using vdxpropgrid2::property_grid_t;
using vdxpropgrid2::row_t;

search_dirs_tab_t::search_dirs_tab_t(container_t container, search_category_t category, int error_mode)
    : m_container(std::move(container)), m_category(category), m_dir_error_mode(error_mode)
{
    set_resource_object("panel.search_dir_tab");
}

search_dirs_tab_t::~search_dirs_tab_t() = default;

void search_dirs_tab_t::on_init_dialog()
{
    auto* area = from_xrc<wxPanel>(this, "m_grid_area");
    m_up = from_xrc<wxBitmapButton>(this, "m_btn_up");
    m_down = from_xrc<wxBitmapButton>(this, "m_btn_down");
    m_remove = from_xrc<wxBitmapButton>(this, "m_btn_remove");
    if (!area || !m_up || !m_down || !m_remove)
        return;
    m_caption = new caption_panel_t(this);
    m_caption->MoveBeforeInTabOrder(area); // as it is seen
    GetSizer()->Insert(0, m_caption, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, 18);
    m_grid = make_dir_grid(
        area, m_extras & can_skip ? translate_message("panel.search_dirs.skip_header") : std::string(),
        std::string());
    load_messages();
    set_grid_headers();
    load_images();
    fill_controls();
    connect_grid();
}

void search_dirs_tab_t::set_grid_headers()
{
    m_grid->set_input_text(translate_message("panel.search_dirs.last_line_tab"));
}

void search_dirs_tab_t::load_images()
{
    dress({m_up, m_down, m_remove});
    set_mark_pictures(m_grid);
}

void search_dirs_tab_t::load_messages()
{
    const bool sources = m_category == FF_2_13::category_sources;
    m_caption->set_caption(translate_message(sources ? "caption_panel.search_dirs.src.title"
                                                     : "caption_panel.search_dirs.title"));
    std::string text =
        translate_message(sources ? "caption_panel.search_dirs.src.text" : "caption_panel.search_dirs.text");
    if (has_shared_list())
        text =
            translate_message("text.two_sentences",
                              {{"first", text}, {"second", translate_message("panel.search_dirs.shared")}});
    m_caption->set_description(text);
}

void search_dirs_tab_t::fill_controls()
{
    m_checker = std::make_unique<dir_checker_t>(m_grid);
    m_checker->set_row_reader([this](const row_t& row) {
        const auto kept = m_kept.find(row.key);
        return dir_checker_t::row_kind_t{m_extras & can_skip ? kept != m_kept.end() && kept->second.recursive
                                                             : row.checked,
                                         is_skipped(row)};
    });
    if (m_found_files)
        m_checker->set_note_maker([this](const row_t& row) { return get_note(row.text); });
    load_settings();
}

void search_dirs_tab_t::connect_grid()
{
    m_up->Bind(wxEVT_BUTTON, &search_dirs_tab_t::on_button_up, this);
    m_down->Bind(wxEVT_BUTTON, &search_dirs_tab_t::on_button_down, this);
    m_remove->Bind(wxEVT_BUTTON, &search_dirs_tab_t::on_button_remove, this);
    Bind(wxEVT_SIZE, &search_dirs_tab_t::on_resize, this);
    m_grid->get_more_signal().connect(this, &search_dirs_tab_t::on_more_button_clicked);
    m_grid->get_remove_signal().connect(this, &search_dirs_tab_t::remove_row);
    m_grid->get_row_updated_signal().connect(this, &search_dirs_tab_t::on_dir_updated);
    m_grid->get_editing_finished_signal().connect(this, &search_dirs_tab_t::on_editing_finished);
    m_grid->get_current_changed_signal().connect(this, [this](int) { update_buttons(); });
    m_grid->get_changed_signal().connect(this, [this] {
        update_buttons();
        follow_boxes();
        m_changed_signal.emit();
    });
    m_caption->get_shown_signal().connect(this, [this](int) { tell_height(); });
    m_caption->get_stepped_signal().connect(this, &search_dirs_tab_t::select_row_of);
    m_checker->get_verdict_signal().connect(
        this, [this](int row, dir_state_t state) { tell_state(m_grid->get_text(row), state.kind, row); });
    m_checker->get_gone_signal().connect(this, &search_dirs_tab_t::remove_message);
}

void search_dirs_tab_t::load_settings()
{
    set_data();
}

void search_dirs_tab_t::set_data()
{
    m_dirs = get_stored(m_category);
    fill_grid();
}

void search_dirs_tab_t::set_data(container_t container, search_category_t category)
{
    m_container = std::move(container);
    m_category = category;
    if (m_grid)
        load_messages();
    set_data();
}

bool search_dirs_tab_t::save_settings()
{
    if (!m_grid)
        return true;
    m_grid->commit();
    const wxWeakRef<wxWindow> alive(this);
    keep_shared_list();
    if (!alive)
        return true; // the host went while the user was asked
    fill_dirs();
    if (m_container)
        fill_container(m_dirs);
    fill_grid();
    m_changed_signal.emit();
    return true;
}

void search_dirs_tab_t::fill_dirs()
{
    m_dirs.clear();
    for (const row_t& row : m_grid->get_rows()) {
        dir_info_t& dir = m_dirs.emplace_back(path_info_t(row.text), row);
        const auto kept = m_kept.find(row.key);
        if (kept != m_kept.end())
            dir.comment = kept->second.comment;
        if (m_extras & can_skip)
            dir.recursive = kept != m_kept.end() && kept->second.recursive;
        dir.enabled = m_extras & can_skip ? !row.checked : kept == m_kept.end() || kept->second.enabled;
    }
}

// Rows that are there already keep their messages, and the user the way back.
void search_dirs_tab_t::fill_grid()
{
    if (!m_grid)
        return;
    const auto& shown = m_grid->get_rows();
    const bool has_same_rows =
        !m_dirs.empty() &&
        std::equal(m_dirs.begin(), m_dirs.end(), shown.begin(), shown.end(),
                   [](const dir_info_t& dir, const row_t& row) { return dir.key == row.key; });
    if (has_same_rows) {
        for (std::size_t i = 0; i < m_dirs.size(); ++i)
            m_grid->set_text(static_cast<int>(i), m_dirs[i].path.as_string());
    } else {
        std::vector<row_t> rows;
        rows.reserve(m_dirs.size());
        for (const dir_info_t& dir : m_dirs)
            rows.push_back({dir.path.as_string(), get_box(dir), dir.key});
        remove_messages();
        m_kept.clear();
        m_skipped.clear();
        m_grid->set_rows(std::move(rows));
        m_grid->set_current_row(0);
        m_checker->restart();
        for (std::size_t i = 0; i < m_dirs.size(); ++i)
            m_dirs[i].key = m_grid->get_key(static_cast<int>(i));
    }
    remember_rows();
    update_buttons();
}

void search_dirs_tab_t::fill_container(const dirs_t& dirs)
{
    using namespace FF_2_13;
    std::vector<search_category_t> categories{m_category};
    if (m_category == category_binaries || m_category == category_symbols)
        categories = {category_binaries, category_symbols};
    for (const search_category_t category : categories) {
        m_container->clear(category);
        add_dirs(m_container->get_dirs(category), dirs);
    }
}

void search_dirs_tab_t::add_dirs(const FF_2_13::ObjectPtr<FF_2_13::ISearchDirIterator>& iterator,
                                 const dirs_t& dirs)
{
    for (std::size_t i = 0; i < dirs.size(); ++i)
        add_dir(iterator, dirs, i);
}

void search_dirs_tab_t::add_dir(const FF_2_13::ObjectPtr<FF_2_13::ISearchDirIterator>& iterator,
                                const dirs_t& dirs, std::size_t index)
{
    const dir_info_t& dir = dirs[index];
    iterator->add_entry({dir.path.as_string(), dir.recursive, dir.enabled, dir.comment});
}

bool search_dirs_tab_t::is_changed() const
{
    if (!m_grid)
        return false;
    const auto& rows = m_grid->get_rows();
    return m_grid->has_typed_text() ||
           !std::equal(rows.begin(), rows.end(), m_dirs.begin(), m_dirs.end(),
                       [this](const row_t& row, const dir_info_t& dir) {
                           return row.text == dir.path.as_string() && row.checked == get_box(dir);
                       });
}

void search_dirs_tab_t::remove_row(int row)
{
    if (m_removing || !m_grid || row < 0 || row >= m_grid->row_count() - 1)
        return;
    remove_message(m_grid->get_key(row));
    m_checker->forget(m_grid->get_key(row)); // its message is due again when the removal is undone
    m_removing = true;
    m_grid->delete_row(row);
    m_removing = false;
    m_grid->set_current_row(std::max(row - 1, 0));
    update_buttons();
}

void search_dirs_tab_t::on_button_up(wxCommandEvent&)
{
    move_current(-1);
}

void search_dirs_tab_t::on_button_down(wxCommandEvent&)
{
    move_current(1);
}

void search_dirs_tab_t::on_button_remove(wxCommandEvent&)
{
    if (m_grid)
        remove_row(m_grid->get_current_row());
}

void search_dirs_tab_t::move_current(int by)
{
    if (!m_grid)
        return;
    move_current_row(m_grid, by);
    update_buttons();
}

void search_dirs_tab_t::update_buttons()
{
    if (!m_removing)
        update({m_up, m_down, m_remove}, m_grid);
}

// The checker has seen the change as well and looks at the row in the background; its verdict edits the
// message that the row has.
void search_dirs_tab_t::on_dir_updated(int)
{
    update_buttons();
}

void search_dirs_tab_t::on_editing_finished()
{
    update_buttons();
    m_changed_signal.emit();
}

void search_dirs_tab_t::on_more_button_clicked(click_data_t data)
{
    const wxWeakRef<wxWindow> alive(this);
    const int row = choose_dir(m_grid, data);
    if (alive && row >= 0)
        on_dir_updated(row);
}

void search_dirs_tab_t::on_resize(wxSizeEvent&)
{
    Layout();
}

// A host that scrolls its pages learns that this one needs another height.
void search_dirs_tab_t::tell_height()
{
    const int height = GetMinSize().y;
    if (std::exchange(m_told_height, height) != height)
        PostSizeEventToParent();
}

// With room for a message, so that the list does not shrink when the first one comes.
wxSize search_dirs_tab_t::GetMinSize() const
{
    constexpr int lines_of_message = 3;
    wxSize size = pref_base_t::GetMinSize();
    if (m_caption && GetSizer()) {
        wxSize needed = GetSizer()->GetMinSize();
        if (m_messages.empty())
            needed.y += lines_of_message * GetCharHeight();
        size.IncTo(needed);
    }
    return size;
}

void search_dirs_tab_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    if (m_grid)
        load_images();
}

} // namespace commondlg3
