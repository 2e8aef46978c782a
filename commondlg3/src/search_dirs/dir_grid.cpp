#include "dir_grid.h"

#include "commondlg3/choosers.h"
#include "commondlg3/image_loader.h"
#include "commondlg3/search_dirs_data.h"
#include "commondlg3/text_utils.h"

#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/picture_button.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <vector>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using type = image_loader_t::image_type_t;
using vdxpropgrid2::property_grid_t;
using vdxpropgrid2::row_mark_t;

constexpr int least_characters = 28;
constexpr int characters_of_boxes = 10;
constexpr int least_lines = 8;

vdxpropgrid2::grid_texts_t texts_of_grid(const std::string& check_header, const std::string& input_row)
{
    vdxpropgrid2::grid_texts_t texts;
    texts.text_header = translate_message("panel.search_dirs.dir_header");
    texts.check_header = check_header;
    texts.mark_header = translate_message("panel.search_dirs.mark_header");
    for (const char* key :
         {catalog_key("panel.search_dirs.mark_missing"), catalog_key("panel.search_dirs.mark_not_a_dir"),
          catalog_key("panel.search_dirs.mark_shadowed"), catalog_key("panel.search_dirs.mark_waiting")}) {
        const std::string word = translate_message(key);
        if (word.size() > texts.widest_mark.size())
            texts.widest_mark = word;
    }
    texts.more_header = translate_message("panel.search_dirs.more_header");
    texts.input_row = input_row;
    texts.menu_edit = translate_message("panel.search_dirs.menu_edit");
    texts.menu_more = translate_message("panel.search_dirs.menu_more");
    texts.menu_up = translate_message("panel.search_dirs.menu_up");
    texts.menu_down = translate_message("panel.search_dirs.menu_down");
    texts.menu_remove = translate_message("panel.search_dirs.menu_remove");
    texts.menu_copy = translate_message("menu.copy");
    texts.menu_paste = translate_message("panel.search_dirs.menu_paste");
    texts.menu_undo = translate_message("panel.search_dirs.menu_undo");
    texts.menu_redo = translate_message("panel.search_dirs.menu_redo");
    texts.moved = [](int number, int count) {
        return translate_message("panel.search_dirs.moved", {{"number", number}, {"count", count}});
    };
    texts.removed = [](const std::string& dir) {
        return translate_message("panel.search_dirs.removed", {{"dir", dir}});
    };
    texts.checked = [check_header](bool checked) {
        return translate_message(checked ? catalog_key("panel.search_dirs.checked")
                                         : catalog_key("panel.search_dirs.unchecked"),
                                 {{"box", check_header}});
    };
    return texts;
}

void dress_button(wxBitmapButton* button, type picture, const std::string& name)
{
    if (!button)
        return;
    wx_helpers1::button_pictures_t pictures;
    pictures.normal = image_loader_t::get().load_image(picture);
    wx_helpers1::set_pictures(button, pictures);
    set_tooltip(name, button);
    wx_helpers1::set_accessible_name(button, name);
}

} // namespace

property_grid_t* make_dir_grid(wxWindow* area, const std::string& check_header, const std::string& input_row)
{
    auto* grid = new property_grid_t(area, texts_of_grid(check_header, input_row));
    grid->set_name(translate_message("panel.search_dirs.dir_header"));
    grid->set_splitter([](const std::string& text) {
        std::vector<std::string> dirs = split_dirs(text);
        for (std::string& dir : dirs)
            dir = typed_dir(dir);
        return dirs;
    });
    grid->set_converter(typed_dir);
    set_mark_pictures(grid);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(grid, 1, wxEXPAND);
    area->SetSizer(sizer);
    const int characters = least_characters + (check_header.empty() ? 0 : characters_of_boxes);
    const auto give_least_size = [grid, area, characters] {
        grid->SetMinSize(wxSize(characters * area->GetCharWidth(), least_lines * area->GetCharHeight()));
    };
    give_least_size();
    if (auto* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(grid, give_least_size);
    area->SetMinSize(wxDefaultSize); // the layout's stands for the empty panel
    return grid;
}

void set_mark_pictures(property_grid_t* grid)
{
    auto& images = image_loader_t::get();
    grid->set_mark_picture(row_mark_t::kind_t::none, images.load_image(type::empty12));
    grid->set_mark_picture(row_mark_t::kind_t::information, images.load_image(type::info12));
    grid->set_mark_picture(row_mark_t::kind_t::warning, images.load_image(type::warning12));
    grid->set_mark_picture(row_mark_t::kind_t::error, images.load_image(type::error12));
}

void dress(const dir_buttons_t& buttons)
{
    dress_button(buttons.up, type::up, translate_message("panel.search_dirs.up"));
    dress_button(buttons.down, type::down, translate_message("panel.search_dirs.down"));
    dress_button(buttons.remove, type::cross, translate_message("panel.search_dirs.remove"));
}

void update(const dir_buttons_t& buttons, property_grid_t* grid)
{
    const int row = grid->get_current_row();
    const int input = grid->row_count() - 1;
    wx_helpers1::set_enabled({{buttons.up, row > 0 && row < input},
                              {buttons.down, row >= 0 && row < input - 1},
                              {buttons.remove, row >= 0 && row < input}},
                             grid);
}

void move_current_row(property_grid_t* grid, int by)
{
    const int row = grid->get_current_row();
    const int input = grid->row_count() - 1;
    if (row < 0 || row >= input || row + by < 0 || row + by >= input)
        return;
    grid->move_row(row, row + by);
    grid->set_current_row(row + by);
    grid->refresh();
}

int choose_dir(property_grid_t* grid, const vdxpropgrid2::click_data_t& data)
{
    std::string path = data.text;
    const wxWeakRef<property_grid_t> alive(grid); // the host may go while the chooser is shown
    if (!folder_dlg(grid, path, translate_message("panel.search_dirs.choose")) || !alive)
        return -1;
    int row = grid->find_row(data.key);
    bool changed = false;
    if (data.key == vdxpropgrid2::no_key) {
        row = grid->row_count() - 1;
        changed = grid->insert_rows(row, {path});
    } else {
        changed = grid->set_text(row, path);
    }
    grid->set_current_row(row);
    return changed ? row : -1;
}

} // namespace commondlg3
