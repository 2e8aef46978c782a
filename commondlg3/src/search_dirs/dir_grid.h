#pragma once

#include <vdxpropgrid2/property_grid.h>

#include <string>

class wxBitmapButton;
class wxWindow;

namespace commondlg3 {

/// What both pages of directories do alike with their grid and its buttons. GUI thread.

/// A grid of directories that fills the area, which is an empty panel of a layout. With a header for them it
/// has check boxes.
vdxpropgrid2::property_grid_t* make_dir_grid(wxWindow* area, const std::string& check_header,
                                             const std::string& input_row);

/// The pictures of the marks, in the theme's ink.
void set_mark_pictures(vdxpropgrid2::property_grid_t* grid);

struct dir_buttons_t
{
    wxBitmapButton* up = nullptr;
    wxBitmapButton* down = nullptr;
    wxBitmapButton* remove = nullptr;
};

/// Pictures, tool tips and names.
void dress(const dir_buttons_t& buttons);
/// Enables what can be done with the current row.
void update(const dir_buttons_t& buttons, vdxpropgrid2::property_grid_t* grid);

/// Moves the current row by one place, which stays the current one; the input row takes no part.
void move_current_row(vdxpropgrid2::property_grid_t* grid, int by);

/// Lets the user choose a folder for a row whose more-button was pressed. @return the row that changed, or -1
int choose_dir(vdxpropgrid2::property_grid_t* grid, const vdxpropgrid2::click_data_t& data);

} // namespace commondlg3
