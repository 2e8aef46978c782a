#pragma once

#include "cell_editor.h"
#include "grid_model.h"
#include "vdxpropgrid2/property_grid.h"

#include <wx/timer.h>

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vdxpropgrid2 {

/// The list, its model, and what the user does to them.
struct property_grid_t::impl_t
{
    explicit impl_t(property_grid_t* grid, const grid_texts_t& texts);
    ~impl_t();

    // property_grid.cpp
    void add_columns();
    void apply_texts();
    bool perform(const grid_rows_t::change_t& change);
    void announce(const std::string& text);
    int current() const;
    void set_current(int row);
    std::size_t row_count() const { return model->rows.size() + 1; }
    bool is_row(int row) const { return row >= 0 && static_cast<std::size_t>(row) < model->rows.size(); }

    // grid_input.cpp: keys, menu, clipboard
    void connect_input();
    void on_key(wxKeyEvent& event);
    void on_char(wxKeyEvent& event);
    void edit(int row, const std::string& typed);
    void on_edited(int row, const std::string& utf8);
    void move_current(int by);
    void toggle(std::size_t row);
    void press_more(int row);
    void ask_for_removal(int row);
    void copy();
    void request_paste();
    void paste(const std::string& text);
    void add(int before, const std::vector<std::string>& texts);
    wxPoint below_row(int row) const;
    void show_menu(const wxPoint& place);

    // grid_pointer.cpp
    struct place_t
    {
        int row = -1;
        int column = -1;
        double y_in_row = 0; ///< 0 at its top, 1 at its bottom
    };
    void connect_pointer();
    void on_dropped(int x, int y, GtkSelectionData* data);
    place_t place_at(double x, double y) const;
    gboolean on_press(const GdkEventButton* event);
    gboolean on_motion(const GdkEventMotion* event);
    gboolean on_release(const GdkEventButton* event);
    gboolean on_tooltip(int x, int y, gboolean by_keyboard, GtkTooltip* tooltip);
    void drag_to(double x, double y);
    void end_drag(bool drop);

    property_grid_t* grid;
    wxDataViewCtrl* view = nullptr;
    GtkTreeView* tree = nullptr;
    wxObjectDataPtr<grid_model_t> model;
    std::unique_ptr<cell_editor_t> editor;
    wxDataViewColumn* columns[more_column + 1] = {};
    std::function<std::vector<std::string>(const std::string&)> splitter;
    std::function<std::string(const std::string&)> converter;

    std::optional<place_t> pressed;
    double pressed_x = 0, pressed_y = 0;
    bool dragging = false;
    int drop_before = -1;
    wxTimer scroll_timer;
    bool changing_rows = false;

    gen_helpers2::signal_t<int> row_updated, remove, current_changed;
    gen_helpers2::signal_t<> editing_finished, changed;
    gen_helpers2::signal_t<click_data_t> more;
};

} // namespace vdxpropgrid2
