#include "grid_impl.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/text.h>

#include <wx/menu.h>
#include <wx/weakref.h>

#include <algorithm>
#include <utility>

// What the user does: keys, the mouse, the context menu, the clipboard.
namespace vdxpropgrid2 {
namespace {

constexpr int scroll_interval = 40; // milliseconds

} // namespace

void property_grid_t::impl_t::connect_input()
{
    editor->on_edited = [this](int row, const std::string& text) { on_edited(row, text); };
    editor->on_typed = [this] { changed.emit(); };
    editor->on_finished = [this] { editing_finished.emit(); };
    editor->on_paste = [this] { request_paste(); };
    model->on_checked = [this](std::size_t row, bool checked) {
        perform(model->rows.set_checked(row, checked));
    };
    view->Bind(wxEVT_KEY_DOWN, &impl_t::on_key, this);
    view->Bind(wxEVT_CHAR, &impl_t::on_char, this);
    view->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent&) {
        if (!pressed || pressed->column == text_column)
            edit(current(), std::string());
    });
    view->Bind(wxEVT_DATAVIEW_ITEM_CONTEXT_MENU, [this](wxDataViewEvent&) { show_menu(wxDefaultPosition); });
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

void property_grid_t::impl_t::on_key(wxKeyEvent& event)
{
    // What the entry of a cell does not want comes here as well.
    if (editor->is_active()) {
        event.Skip();
        return;
    }
    const int key = event.GetKeyCode();
    const int modifiers = event.GetModifiers();
    const bool plain = modifiers == wxMOD_NONE;
    if (dragging && key == WXK_ESCAPE)
        end_drag(false);
    else if (plain && (key == WXK_F2 || key == WXK_RETURN || key == WXK_NUMPAD_ENTER))
        edit(current(), std::string());
    else if ((plain && (key == WXK_MENU || key == WXK_WINDOWS_MENU)) ||
             (modifiers == wxMOD_SHIFT && key == WXK_F10))
        show_menu(below_row(current()));
    else if (plain && key == WXK_SPACE && !columns[check_column]->IsHidden() && is_row(current()))
        perform(model->rows.set_checked(static_cast<std::size_t>(current()),
                                        !model->rows.at(static_cast<std::size_t>(current())).checked));
    else if (plain && key == WXK_F4)
        press_more(current());
    else if (plain && (key == WXK_DELETE || key == WXK_NUMPAD_DELETE))
        ask_for_removal(current());
    else if (modifiers == wxMOD_ALT && key == WXK_UP)
        move_current(-1);
    else if (modifiers == wxMOD_ALT && key == WXK_DOWN)
        move_current(1);
    else if (modifiers == wxMOD_CONTROL && key == 'C')
        copy();
    else if (modifiers == wxMOD_CONTROL && key == 'V')
        request_paste();
    else if (modifiers == wxMOD_CONTROL && key == 'Z')
        grid->undo();
    else if ((modifiers == (wxMOD_CONTROL | wxMOD_SHIFT) && key == 'Z') ||
             (modifiers == wxMOD_CONTROL && key == 'Y'))
        grid->redo();
    else
        event.Skip();
}

// A letter begins to edit, as in every table. The space bar belongs to the check boxes.
void property_grid_t::impl_t::on_char(wxKeyEvent& event)
{
    const wxChar key = event.GetUnicodeKey();
    if (editor->is_active() || event.ControlDown() || event.AltDown() || key <= ' ' || key == WXK_DELETE) {
        event.Skip();
        return;
    }
    const int row = current();
    edit(row >= 0 ? row : static_cast<int>(model->rows.size()), wxString(key).utf8_string());
}

void property_grid_t::impl_t::edit(int row, const std::string& typed)
{
    if (row >= 0 && row < static_cast<int>(row_count()))
        editor->start(row, wx_helpers1::to_wx(grid->get_text(row)).utf8_string(), typed);
}

void property_grid_t::impl_t::on_edited(int row, const std::string& utf8)
{
    std::string text = wx_helpers1::from_wx(wxString::FromUTF8(utf8));
    const bool is_input = row == static_cast<int>(model->rows.size());
    if (text == grid->get_text(row))
        return;
    if (converter)
        text = converter(text);
    if (text.empty()) {
        // The list is still busy with the row.
        grid->CallAfter([this, key = grid->get_key(row)] { ask_for_removal(grid->find_row(key)); });
        return;
    }
    const bool done = is_input ? grid->insert_rows(row, {text}) : grid->set_text(row, text);
    if (!done)
        return;
    if (is_input)
        grid->CallAfter([this] { set_current(static_cast<int>(model->rows.size())); });
    row_updated.emit(row);
}

void property_grid_t::impl_t::move_current(int by)
{
    const int row = current();
    if (grid->move_row(row, row + by))
        set_current(row + by);
}

void property_grid_t::impl_t::press_more(int row)
{
    if (row < 0)
        return;
    editor->commit();
    const auto signal = more; // a slot may destroy the grid
    signal.emit({row, grid->get_key(row), grid->get_text(row)});
}

void property_grid_t::impl_t::ask_for_removal(int row)
{
    const auto signal = remove;
    if (is_row(row))
        signal.emit(row);
}

void property_grid_t::impl_t::copy()
{
    if (is_row(current()))
        wx_helpers1::copy_to_clipboard(grid->get_text(current()));
}

// The clipboard's owner may take its time: it is not waited for.
void property_grid_t::impl_t::request_paste()
{
    const auto received = +[](GtkClipboard*, const char* text, gpointer data) {
        const std::unique_ptr<wxWeakRef<property_grid_t>> alive(
            static_cast<wxWeakRef<property_grid_t>*>(data));
        if (text && *alive)
            (*alive)->m_impl->paste(wx_helpers1::from_wx(wxString::FromUTF8(text)));
    };
    gtk_clipboard_request_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), received,
                               new wxWeakRef<property_grid_t>(grid));
}

void property_grid_t::impl_t::paste(const std::string& text)
{
    const std::vector<std::string> texts = splitter(text);
    if (texts.empty())
        return;
    if (editor->is_active()) {
        if (texts.size() == 1) {
            editor->insert(wx_helpers1::to_wx(texts.front()).utf8_string());
            return;
        }
        editor->is_changed() ? editor->commit() : editor->cancel();
    }
    const int row = current();
    add(row >= 0 ? row : static_cast<int>(model->rows.size()), texts);
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

void property_grid_t::impl_t::add(int before, const std::vector<std::string>& texts)
{
    if (texts.empty() || !grid->insert_rows(before, texts))
        return;
    set_current(before + static_cast<int>(texts.size()) - 1);
    for (std::size_t i = 0; i < texts.size(); ++i)
        row_updated.emit(before + static_cast<int>(i));
}

wxPoint property_grid_t::impl_t::below_row(int row) const
{
    GdkRectangle area{};
    if (row >= 0) {
        GtkTreePath* path = gtk_tree_path_new_from_indices(row, -1);
        gtk_tree_view_get_cell_area(tree, path, GTK_TREE_VIEW_COLUMN(columns[text_column]->GetGtkHandle()),
                                    &area);
        gtk_tree_path_free(path);
    }
    wxPoint place;
    gtk_tree_view_convert_bin_window_to_widget_coords(tree, area.x, area.y + area.height, &place.x, &place.y);
    return place;
}

void property_grid_t::impl_t::show_menu(const wxPoint& place)
{
    const int row = current();
    const int last = static_cast<int>(model->rows.size()) - 1;
    const grid_texts_t& texts = model->texts;
    struct entry_t
    {
        const std::string& text;
        const char* key;
        bool enabled;
        std::function<void()> act;
    };
    const entry_t entries[] = {
        {texts.menu_edit, "F2", row >= 0, [&] { edit(row, std::string()); }},
        {texts.menu_more, "F4", row >= 0, [&] { press_more(row); }},
        {texts.menu_up, "Alt+Up", row > 0 && row <= last, [&] { move_current(-1); }},
        {texts.menu_down, "Alt+Down", row >= 0 && row < last, [&] { move_current(1); }},
        {texts.menu_remove, "Del", is_row(row), [&] { ask_for_removal(row); }},
        {texts.menu_copy, "Ctrl+C", is_row(row), [&] { copy(); }},
        {texts.menu_paste, "Ctrl+V", true, [&] { request_paste(); }},
        {texts.menu_undo, "Ctrl+Z", model->rows.can_undo(), [&] { grid->undo(); }},
        {texts.menu_redo, "Ctrl+Shift+Z", model->rows.can_redo(), [&] { grid->redo(); }}};
    wxMenu menu;
    for (const entry_t& entry : entries) {
        if (entry.text.empty())
            continue;
        wxMenuItem* item = menu.Append(wxID_ANY, wx_helpers1::to_label(entry.text) + "\t" + entry.key);
        item->Enable(entry.enabled);
    }
    const wxWeakRef<property_grid_t> alive(grid);
    const int chosen = view->GetPopupMenuSelectionFromUser(menu, place);
    if (!alive || chosen == wxID_NONE)
        return;
    std::size_t at = 0;
    for (const entry_t& entry : entries)
        if (!entry.text.empty() && menu.FindItemByPosition(at++)->GetId() == chosen) {
            entry.act();
            return;
        }
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

} // namespace vdxpropgrid2
