#include "grid_impl.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>

#include <algorithm>
#include <string>

// What the user does with the pointer: pressing, dragging rows, dropping from elsewhere, waiting for a tool
// tip. The toolkit's own events mirror places from right to left and know no rows: these are GTK's.
namespace vdxpropgrid2 {
namespace {

constexpr int scroll_interval = 40; // milliseconds

} // namespace

void property_grid_t::impl_t::connect_pointer()
{
    scroll_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        int x = 0;
        int y = 0;
        GdkWindow* window = gtk_tree_view_get_bin_window(tree);
        gdk_window_get_device_position(
            window, gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_window_get_display(window))), &x,
            &y, nullptr);
        drag_to(x, y);
    });

    using raw_t = impl_t;
    const auto press = +[](GtkWidget*, GdkEventButton* event, raw_t* self) { return self->on_press(event); };
    const auto motion =
        +[](GtkWidget*, GdkEventMotion* event, raw_t* self) { return self->on_motion(event); };
    const auto release =
        +[](GtkWidget*, GdkEventButton* event, raw_t* self) { return self->on_release(event); };
    const auto tooltip = +[](GtkWidget*, int x, int y, gboolean keyboard, GtkTooltip* tip, raw_t* self) {
        return self->on_tooltip(x, y, keyboard, tip);
    };
    const auto cursor = +[](GtkTreeView*, raw_t* self) {
        if (self->changing_rows)
            return;
        const int row = self->current();
        const row_mark_t mark = self->grid->get_mark(row);
        wx_helpers1::set_accessible_description(self->view, mark.explanation);
        self->current_changed.emit(row);
    };
    const auto dropped = +[](GtkWidget*, GdkDragContext*, int x, int y, GtkSelectionData* data, guint, guint,
                             raw_t* self) { self->on_dropped(x, y, data); };
    gtk_drag_dest_set(GTK_WIDGET(tree), GTK_DEST_DEFAULT_ALL, nullptr, 0, GDK_ACTION_COPY);
    gtk_drag_dest_add_uri_targets(GTK_WIDGET(tree));
    gtk_drag_dest_add_text_targets(GTK_WIDGET(tree));
    g_signal_connect(tree, "drag-data-received", G_CALLBACK(dropped), this);
    gtk_widget_add_events(GTK_WIDGET(tree), GDK_POINTER_MOTION_MASK | GDK_BUTTON_RELEASE_MASK);
    gtk_widget_set_has_tooltip(GTK_WIDGET(tree), TRUE);
    g_signal_connect(tree, "button-press-event", G_CALLBACK(press), this);
    g_signal_connect(tree, "motion-notify-event", G_CALLBACK(motion), this);
    g_signal_connect(tree, "button-release-event", G_CALLBACK(release), this);
    g_signal_connect(tree, "query-tooltip", G_CALLBACK(tooltip), this);
    g_signal_connect(tree, "cursor-changed", G_CALLBACK(cursor), this);
}

property_grid_t::impl_t::place_t property_grid_t::impl_t::place_at(double x, double y) const
{
    place_t place;
    GtkTreePath* path = nullptr;
    GtkTreeViewColumn* column = nullptr;
    int y_in_cell = 0;
    if (!gtk_tree_view_get_path_at_pos(tree, static_cast<int>(x), static_cast<int>(y), &path, &column,
                                       nullptr, &y_in_cell))
        return place;
    place.row = gtk_tree_path_get_indices(path)[0];
    GdkRectangle area;
    gtk_tree_view_get_background_area(tree, path, column, &area);
    place.y_in_row = area.height > 0 ? static_cast<double>(y_in_cell) / area.height : 0;
    for (unsigned i = 0; i <= more_column; ++i)
        if (GTK_TREE_VIEW_COLUMN(columns[i]->GetGtkHandle()) == column)
            place.column = static_cast<int>(i);
    gtk_tree_path_free(path);
    return place;
}

gboolean property_grid_t::impl_t::on_press(const GdkEventButton* event)
{
    pressed.reset();
    if (event->button == GDK_BUTTON_PRIMARY && event->window == gtk_tree_view_get_bin_window(tree)) {
        pressed = place_at(event->x, event->y);
        pressed_x = event->x;
        pressed_y = event->y;
    }
    return FALSE;
}

gboolean property_grid_t::impl_t::on_motion(const GdkEventMotion* event)
{
    if (!pressed || !(event->state & GDK_BUTTON1_MASK))
        return FALSE;
    if (!dragging && is_row(pressed->row) && !editor->is_active() &&
        gtk_drag_check_threshold(GTK_WIDGET(tree), static_cast<int>(pressed_x), static_cast<int>(pressed_y),
                                 static_cast<int>(pressed_x), static_cast<int>(event->y))) {
        dragging = true;
        view->SetCursor(wxCursor(wxCURSOR_HAND));
        scroll_timer.Start(scroll_interval);
    }
    if (dragging)
        drag_to(event->x, event->y);
    return dragging;
}

gboolean property_grid_t::impl_t::on_release(const GdkEventButton* event)
{
    if (event->button != GDK_BUTTON_PRIMARY || !pressed)
        return FALSE;
    if (dragging) {
        end_drag(true);
        return FALSE;
    }
    const place_t place = place_at(event->x, event->y);
    const bool is_click = place.row >= 0 && place.row == pressed->row && place.column == pressed->column;
    pressed.reset();
    if (!is_click)
        return FALSE;
    const bool is_input = place.row == static_cast<int>(model->rows.size());
    // Later: the list has not yet seen the release.
    if (place.column == more_column)
        grid->CallAfter([this, row = place.row] { press_more(row); });
    else if (place.column == text_column && is_input && !editor->is_active())
        grid->CallAfter([this, row = place.row] { edit(row, std::string()); });
    return FALSE;
}

// Shows where the row would go, and scrolls when the pointer is at an edge.
void property_grid_t::impl_t::drag_to(double x, double y)
{
    GdkRectangle seen;
    gtk_tree_view_get_visible_rect(tree, &seen);
    int left = 0;
    int top = 0;
    gtk_tree_view_convert_tree_to_bin_window_coords(tree, seen.x, seen.y, &left, &top);
    const int edge = 12;
    const int step = y < top + edge ? -edge : y > top + seen.height - edge ? edge : 0;
    if (step != 0) {
        GtkAdjustment* adjustment = gtk_scrollable_get_vadjustment(GTK_SCROLLABLE(tree));
        gtk_adjustment_set_value(adjustment, gtk_adjustment_get_value(adjustment) + step);
    }
    const place_t place = place_at(std::clamp<double>(x, left, left + seen.width - 1),
                                   std::clamp<double>(y, top, top + seen.height - 1));
    const int rows = static_cast<int>(model->rows.size());
    drop_before = place.row < 0 ? rows : std::min(rows, place.row + (place.y_in_row > 0.5 ? 1 : 0));
    GtkTreePath* path = gtk_tree_path_new_from_indices(drop_before, -1);
    gtk_tree_view_set_drag_dest_row(tree, path, GTK_TREE_VIEW_DROP_BEFORE);
    gtk_tree_path_free(path);
}

void property_grid_t::impl_t::end_drag(bool drop)
{
    const int from = pressed ? pressed->row : -1;
    dragging = false;
    pressed.reset();
    scroll_timer.Stop();
    gtk_tree_view_set_drag_dest_row(tree, nullptr, GTK_TREE_VIEW_DROP_BEFORE);
    view->SetCursor(wxNullCursor);
    if (!drop || drop_before < 0)
        return;
    const int to = drop_before > from ? drop_before - 1 : drop_before;
    drop_before = -1;
    if (grid->move_row(from, to))
        set_current(to);
}

gboolean property_grid_t::impl_t::on_tooltip(int x, int y, gboolean by_keyboard, GtkTooltip* tooltip)
{
    GtkTreePath* path = nullptr;
    if (!gtk_tree_view_get_tooltip_context(tree, &x, &y, by_keyboard, nullptr, &path, nullptr))
        return FALSE;
    const int row = gtk_tree_path_get_indices(path)[0];
    const std::string text = grid->get_mark(row).explanation;
    if (!text.empty()) {
        gtk_tooltip_set_text(tooltip, wx_helpers1::to_label(text).utf8_str());
        gtk_tree_view_set_tooltip_row(tree, tooltip, path);
    }
    gtk_tree_path_free(path);
    return !text.empty();
}

// From a file manager, for example.
void property_grid_t::impl_t::on_dropped(int x, int y, GtkSelectionData* data)
{
    std::string text;
    if (gchar** addresses = gtk_selection_data_get_uris(data)) {
        for (gchar** address = addresses; *address; ++address)
            text += std::string(*address) + "\n";
        g_strfreev(addresses);
    } else if (guchar* plain = gtk_selection_data_get_text(data)) {
        text = reinterpret_cast<const char*>(plain);
        g_free(plain);
    }
    editor->commit();
    int bin_x = 0;
    int bin_y = 0;
    gtk_tree_view_convert_widget_to_bin_window_coords(tree, x, y, &bin_x, &bin_y);
    const place_t place = place_at(bin_x, bin_y);
    const int rows = static_cast<int>(model->rows.size());
    add(place.row < 0 ? rows : std::min(rows, place.row + (place.y_in_row > 0.5 ? 1 : 0)), splitter(text));
}

} // namespace vdxpropgrid2
