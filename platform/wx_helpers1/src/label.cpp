#include "wx_helpers1/label.h"

#include "wx_helpers1/accessibility.h"
#include "wx_helpers1/text.h"

#include <cpil/strings.h>

#include <wx/stattext.h>

#include <gtk/gtk.h>

#include <algorithm>

namespace wx_helpers1 {
namespace {

constexpr char left_to_right_mark[] = "\u200e";
constexpr char right_to_left_mark[] = "\u200f";

GtkLabel* widget_of(wxStaticText* label)
{
    return label && label->GetHandle() ? GTK_LABEL(label->GetHandle()) : nullptr;
}

PangoLayout* layout_of(wxStaticText* label)
{
    // A layout of our own: the widget's is tied to the width that it has now.
    PangoLayout* layout = pango_layout_copy(gtk_label_get_layout(widget_of(label)));
    pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
    return layout;
}

// The toolkit's own answer takes a hundred times longer: it looks up all colours of the label for its font.
int average_width(GtkLabel* widget)
{
    PangoContext* context = gtk_widget_get_pango_context(GTK_WIDGET(widget));
    PangoFontMetrics* metrics = pango_context_get_metrics(context, nullptr, nullptr);
    const int width = pango_font_metrics_get_approximate_char_width(metrics) / PANGO_SCALE;
    pango_font_metrics_unref(metrics);
    return std::max(1, width);
}

// By a double click, and from word to word, the toolkit's cursor passes the end of a text that ends in a full
// stop.
void keep_cursor_in_text(GtkLabel* widget)
{
    gint cursor = 0;
    gint other_end = 0;
    g_object_get(widget, "cursor-position", &cursor, "selection-bound", &other_end, nullptr);
    const auto length = static_cast<gint>(g_utf8_strlen(gtk_label_get_text(widget), -1));
    if (cursor > length || other_end > length)
        gtk_label_select_region(widget, std::min(other_end, length), std::min(cursor, length));
}

} // namespace

std::string with_direction(const std::string& text)
{
    using CPIL_2_18::strings::direction_t;
    const direction_t wanted = CPIL_2_18::strings::base_direction(text);
    if (wanted == direction_t::none)
        return text;
    const bool right_to_left = wanted == direction_t::right_to_left;
    const direction_t other = right_to_left ? direction_t::left_to_right : direction_t::right_to_left;
    std::string marked;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        if (CPIL_2_18::strings::has_letters(std::string_view(text).substr(start, end - start), other))
            marked += right_to_left ? right_to_left_mark : left_to_right_mark;
        marked.append(text, start, end + 1 - start);
        start = end + 1;
    }
    return marked;
}

void set_label_text(wxStaticText* label, const std::string& text)
{
    GtkLabel* widget = widget_of(label);
    if (!widget)
        return;
    const wxString plain = to_label(text);
    label->SetLabelText(plain);
    const std::string valid = plain.utf8_string();
    const std::string marked = with_direction(valid);
    if (marked != valid)
        gtk_label_set_text(widget, marked.c_str());
    align_label_to_start(label);
    keep_label_relations(label);
}

void align_label_to_start(wxStaticText* label)
{
    GtkLabel* widget = widget_of(label);
    if (!widget || label->HasFlag(wxALIGN_RIGHT | wxALIGN_CENTRE_HORIZONTAL))
        return;
    gtk_label_set_justify(widget, GTK_JUSTIFY_LEFT);
    gtk_label_set_xalign(widget, 0);
}

void set_wrap_width(wxStaticText* label, int width)
{
    GtkLabel* widget = widget_of(label);
    if (!widget)
        return;
    // Without a width of its own the label lays its text out one character wide to learn how narrow it can
    // be.
    const int characters = width > 0 ? std::max(1, width / average_width(widget)) : -1;
    // Each change makes the label forget what it has measured.
    if (gtk_label_get_line_wrap(widget) == (width > 0) && gtk_label_get_width_chars(widget) == characters)
        return;
    gtk_label_set_line_wrap(widget, width > 0);
    gtk_label_set_line_wrap_mode(widget, PANGO_WRAP_WORD_CHAR);
    gtk_label_set_width_chars(widget, characters);
    gtk_label_set_max_width_chars(widget, characters);
    // A hyphen at the break of a path or a number would be read as part of it.
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_insert_hyphens_new(FALSE));
    gtk_label_set_attributes(widget, attributes);
    pango_attr_list_unref(attributes);
}

void set_selectable(wxStaticText* label, bool selectable)
{
    GtkLabel* widget = widget_of(label);
    if (!widget)
        return;
    gtk_label_set_selectable(widget, selectable);
    const auto keep = G_CALLBACK(keep_cursor_in_text);
    g_signal_handlers_disconnect_by_func(widget, reinterpret_cast<gpointer>(keep), nullptr);
    if (selectable)
        g_signal_connect(widget, "notify::cursor-position", keep, nullptr);
}

std::string get_selected_text(wxStaticText* label)
{
    GtkLabel* widget = widget_of(label);
    gint start = 0;
    gint end = 0;
    if (!widget || !gtk_label_get_selection_bounds(widget, &start, &end))
        return {};
    const char* text = gtk_label_get_text(widget);
    const char* from = g_utf8_offset_to_pointer(text, start);
    std::string selected(from, static_cast<const char*>(g_utf8_offset_to_pointer(from, end - start)));
    // The marks are ours, not the text's.
    for (const std::string mark : {left_to_right_mark, right_to_left_mark})
        for (std::size_t at = 0; (at = selected.find(mark, at)) != std::string::npos;) {
            if (at == 0 || selected[at - 1] == '\n')
                selected.erase(at, mark.size());
            else
                at += mark.size();
        }
    return selected;
}

void select_label_text(wxStaticText* label, bool all)
{
    if (GtkLabel* widget = widget_of(label))
        gtk_label_select_region(widget, 0, all ? -1 : 0);
}

wxSize natural_size(wxStaticText* label)
{
    wxSize size(0, 0);
    if (!widget_of(label))
        return size;
    PangoLayout* layout = layout_of(label);
    pango_layout_set_width(layout, -1);
    pango_layout_get_pixel_size(layout, &size.x, &size.y);
    g_object_unref(layout);
    return size;
}

int height_for_width(wxStaticText* label, int width)
{
    if (!widget_of(label))
        return 0;
    PangoLayout* layout = layout_of(label);
    int height = 0;
    pango_layout_set_width(layout, width > 0 ? width * PANGO_SCALE : -1);
    pango_layout_get_pixel_size(layout, nullptr, &height);
    g_object_unref(layout);
    return height;
}

} // namespace wx_helpers1
