#include "wx_helpers1/text_limit.h"

#include <wx/srchctrl.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace wx_helpers1 {
namespace {

constexpr char data_key[] = "wx_helpers1.text_limit";

// What belongs to one control, for as long as its widget or buffer is there.
struct limited_t
{
    wxWeakRef<wxTextCtrl> ctrl;
    gulong own_handler = 0;
    gulong toolkit_handler = 0; // single line: the toolkit's, which refuses
    bool inserting = false;     // several lines
    long cut_at = -1;           // what is asked for during an insertion
    std::function<void()> done;
};

limited_t* attach(gpointer object, wxTextCtrl* ctrl)
{
    if (g_object_get_data(G_OBJECT(object), data_key))
        return nullptr;
    auto* limited = new limited_t;
    limited->ctrl = ctrl;
    g_object_set_data_full(G_OBJECT(object), data_key, limited,
                           [](gpointer data) { delete static_cast<limited_t*>(data); });
    return limited;
}

limited_t* attached_to(gpointer object)
{
    return static_cast<limited_t*>(g_object_get_data(G_OBJECT(object), data_key));
}

GtkTextView* view_of(const wxTextCtrl* ctrl)
{
    GtkWidget* widget = ctrl->HasFlag(wxTE_MULTILINE) ? ctrl->GetHandle() : nullptr;
    if (GTK_IS_SCROLLED_WINDOW(widget))
        widget = gtk_bin_get_child(GTK_BIN(widget));
    return GTK_IS_TEXT_VIEW(widget) ? GTK_TEXT_VIEW(widget) : nullptr;
}

void report_limit(wxTextCtrl* ctrl)
{
    auto* event = new wxCommandEvent(wxEVT_TEXT_MAXLEN, ctrl->GetId());
    event->SetEventObject(ctrl);
    event->SetString(ctrl->GetValue());
    ctrl->GetEventHandler()->QueueEvent(event);
}

// Stands in front of the toolkit's handler, which is blocked except for what fits.
void on_entry_insert(GtkEditable* editable, const char* text, int bytes, int* position, gpointer data)
{
    auto* limited = static_cast<limited_t*>(data);
    const std::string whole =
        bytes < 0 ? std::string(text) : std::string(text, static_cast<std::size_t>(bytes));
    const long limit = gtk_entry_get_max_length(GTK_ENTRY(editable));
    const long room = limit > 0 ? std::max(0L, limit - gtk_entry_get_text_length(GTK_ENTRY(editable))) : -1;
    const bool fits = room < 0 || g_utf8_strlen(whole.data(), static_cast<gssize>(whole.size())) <= room;
    const char* end = fits ? whole.data() + whole.size() : g_utf8_offset_to_pointer(whole.data(), room);
    const std::string part(whole.data(), end);
    if (!part.empty()) {
        g_signal_handler_block(editable, limited->own_handler);
        if (limited->toolkit_handler)
            g_signal_handler_unblock(editable, limited->toolkit_handler);
        gtk_editable_insert_text(editable, part.c_str(), static_cast<int>(part.size()), position);
        if (limited->toolkit_handler)
            g_signal_handler_block(editable, limited->toolkit_handler);
        g_signal_handler_unblock(editable, limited->own_handler);
    }
    g_signal_stop_emission_by_name(editable, "insert-text");
    if (!fits && limited->ctrl)
        report_limit(limited->ctrl);
}

// The toolkit's handlers carry the control's text interface.
void stand_before_toolkit(GtkWidget* entry, wxTextEntry* owner, wxTextCtrl* ctrl)
{
    limited_t* limited = GTK_IS_ENTRY(entry) ? attach(entry, ctrl) : nullptr;
    if (!limited)
        return;
    limited->toolkit_handler =
        g_signal_handler_find(entry, static_cast<GSignalMatchType>(G_SIGNAL_MATCH_ID | G_SIGNAL_MATCH_DATA),
                              g_signal_lookup("insert-text", GTK_TYPE_EDITABLE), 0, nullptr, nullptr, owner);
    if (limited->toolkit_handler)
        g_signal_handler_block(entry, limited->toolkit_handler);
    limited->own_handler = g_signal_connect(entry, "insert-text", G_CALLBACK(on_entry_insert), limited);
}

void before_buffer_insert(GtkTextBuffer*, GtkTextIter*, const char*, int, gpointer data)
{
    static_cast<limited_t*>(data)->inserting = true;
}

void cut_buffer(GtkTextBuffer* buffer, long length)
{
    GtkTextIter from;
    GtkTextIter to;
    gtk_text_buffer_get_iter_at_offset(buffer, &from, static_cast<int>(length));
    gtk_text_buffer_get_end_iter(buffer, &to);
    gtk_text_buffer_delete(buffer, &from, &to);
}

// Whoever inserts goes on from `place`, which the cut has made invalid.
void after_buffer_insert(GtkTextBuffer* buffer, GtkTextIter* place, const char*, int, gpointer data)
{
    auto* limited = static_cast<limited_t*>(data);
    limited->inserting = false;
    if (limited->cut_at < 0)
        return;
    const long length = limited->cut_at;
    limited->cut_at = -1;
    const int offset = gtk_text_iter_get_offset(place);
    cut_buffer(buffer, length);
    gtk_text_buffer_get_iter_at_offset(buffer, place, std::min(offset, static_cast<int>(length)));
    if (limited->ctrl)
        limited->ctrl->CallAfter(std::move(limited->done));
    limited->done = nullptr;
}

} // namespace

void keep_what_fits(wxTextCtrl* ctrl)
{
    if (ctrl)
        stand_before_toolkit(ctrl->GetHandle(), ctrl, ctrl);
}

void limit_search(wxSearchCtrl* field)
{
    GtkWidget* entry = field ? field->GetHandle() : nullptr;
    if (!GTK_IS_ENTRY(entry))
        return;
    gtk_entry_set_max_length(GTK_ENTRY(entry), 1000);
    stand_before_toolkit(entry, field, nullptr);
}

void follow_insertions(wxTextCtrl* ctrl)
{
    GtkTextView* view = ctrl ? view_of(ctrl) : nullptr;
    GtkTextBuffer* buffer = view ? gtk_text_view_get_buffer(view) : nullptr;
    limited_t* limited = buffer ? attach(buffer, ctrl) : nullptr;
    if (!limited)
        return;
    g_signal_connect(buffer, "insert-text", G_CALLBACK(before_buffer_insert), limited);
    g_signal_connect_after(buffer, "insert-text", G_CALLBACK(after_buffer_insert), limited);
}

void cut_text(wxTextCtrl* ctrl, long length, std::function<void()> done)
{
    GtkTextView* view = view_of(ctrl);
    limited_t* limited = view ? attached_to(gtk_text_view_get_buffer(view)) : nullptr;
    if (limited && limited->inserting) {
        limited->cut_at = length;
        limited->done = std::move(done);
        return;
    }
    const long caret = ctrl->GetInsertionPoint();
    ctrl->ChangeValue(ctrl->GetValue().Left(static_cast<std::size_t>(length)));
    ctrl->SetInsertionPoint(std::min(caret, ctrl->GetLastPosition()));
    done();
}

void hear_nothing_when_gone(wxTextCtrl* ctrl)
{
    GtkTextView* view = ctrl ? view_of(ctrl) : nullptr;
    gpointer text = view ? static_cast<gpointer>(gtk_text_view_get_buffer(view))
                         : static_cast<gpointer>(ctrl ? ctrl->GetHandle() : nullptr);
    if (!text)
        return;
    const std::shared_ptr<GObject> kept(G_OBJECT(g_object_ref(text)), g_object_unref);
    ctrl->Bind(wxEVT_DESTROY, [kept, ctrl](wxWindowDestroyEvent& event) {
        event.Skip();
        if (event.GetEventObject() != ctrl)
            return;
        // The toolkit's handlers carry one or the other.
        for (gpointer owner :
             {static_cast<gpointer>(ctrl), static_cast<gpointer>(static_cast<wxTextEntry*>(ctrl))})
            g_signal_handlers_disconnect_by_data(kept.get(), owner);
    });
}

} // namespace wx_helpers1
