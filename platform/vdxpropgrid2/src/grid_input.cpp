#include "grid_impl.h"

#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/text.h>

#include <wx/menu.h>
#include <wx/weakref.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

// What the user does with keys, the context menu and the clipboard.
namespace vdxpropgrid2 {
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
    connect_pointer();
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
        toggle(static_cast<std::size_t>(current()));
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

void property_grid_t::impl_t::toggle(std::size_t row)
{
    const bool checked = !model->rows.at(row).checked;
    if (model->texts.checked)
        announce(model->texts.checked(checked));
    perform(model->rows.set_checked(row, checked));
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

} // namespace vdxpropgrid2
