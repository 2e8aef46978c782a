#include "openings.h"

#include <commondlg3/ask_dlg.h>
#include <commondlg3/clipboard_dlg.h>
#include <commondlg3/message_window.h>
#include <commondlg3/opt_in_dlg.h>
#include <commondlg3/preferences_frame.h>
#include <commondlg3/result_saving_pp.h>
#include <example_dialog.h>
#include <page_frame.h>
#include <preferences_entry.h>

#include <wx/dialog.h>
#include <wx/msgdlg.h>
#include <wx/richmsgdlg.h>

// Needs what the header above it declares.
#include <wx/generic/msgdlgg.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>

namespace bench {
namespace {

constexpr char headline[] = "The results of the last run are about to be replaced.";
constexpr char explanation[] = "The folder already holds results that were collected this morning. "
                               "Collecting into it again removes them, and "
                               "they cannot be brought back. Choose another folder to keep them, or go on to "
                               "replace them with those of the run "
                               "that is about to begin.";
constexpr char check_box_label[] = "Do not ask again";

double now_ms()
{
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

// The platform's own watch knows the toolkit's windows only, and the native message window is none of them:
// all kinds are watched in this one way.
class paint_watch_t
{
public:
    explicit paint_watch_t(std::function<void(GtkWidget*)> end) : m_end(std::move(end))
    {
        m_hook =
            g_signal_add_emission_hook(g_signal_lookup("map", GTK_TYPE_WIDGET), 0, on_map, this, nullptr);
    }
    ~paint_watch_t()
    {
        if (m_hook)
            g_signal_remove_emission_hook(g_signal_lookup("map", GTK_TYPE_WIDGET), m_hook);
    }
    paint_watch_t(const paint_watch_t&) = delete;
    paint_watch_t& operator=(const paint_watch_t&) = delete;

    double drawn_at() const { return m_drawn_at; }
    double painted_at() const { return m_painted_at; }

private:
    static gboolean on_map(GSignalInvocationHint*, guint, const GValue* values, gpointer data)
    {
        auto* widget = static_cast<GtkWidget*>(g_value_get_object(values));
        if (!GTK_IS_WINDOW(widget) || gtk_window_get_window_type(GTK_WINDOW(widget)) != GTK_WINDOW_TOPLEVEL)
            return TRUE;
        auto* self = static_cast<paint_watch_t*>(data);
        self->m_hook = 0;
        self->m_draw = g_signal_connect_after(widget, "draw", G_CALLBACK(on_draw), self);
        return FALSE;
    }

    static gboolean on_draw(GtkWidget* widget, cairo_t*, gpointer data)
    {
        auto* self = static_cast<paint_watch_t*>(data);
        g_signal_handler_disconnect(widget, self->m_draw);
        self->m_widget = widget;
        self->m_drawn_at = now_ms();
        g_idle_add_full(G_PRIORITY_LOW, on_idle, self, nullptr);
        return FALSE;
    }

    static gboolean on_idle(gpointer data)
    {
        auto* self = static_cast<paint_watch_t*>(data);
        gdk_display_sync(gtk_widget_get_display(self->m_widget));
        self->m_painted_at = now_ms();
        self->m_end(self->m_widget);
        return G_SOURCE_REMOVE;
    }

    std::function<void(GtkWidget*)> m_end;
    GtkWidget* m_widget = nullptr;
    gulong m_hook = 0;
    gulong m_draw = 0;
    double m_drawn_at = 0;
    double m_painted_at = 0;
};

class check_box_t : public gen_helpers2::ref_counted_of_t<commondlg3::i_check_box_definition>
{
public:
    std::string get_name() const override { return "benchmark"; }
    bool get_default_checked() const override { return false; }
    void reset() override {}
    bool is_checked() const override { return false; }
    void set_checked(bool) override {}
    void commit() override {}
    std::string get_label() const override { return check_box_label; }
};

void end_dialog_of(GtkWidget* widget)
{
    for (wxWindow* window : wxTopLevelWindows)
        if (window->GetHandle() == widget)
            if (auto* dialog = wxDynamicCast(window, wxDialog))
                dialog->EndModal(wxID_OK);
}

void end_native(GtkWidget* widget)
{
    gtk_dialog_response(GTK_DIALOG(widget), GTK_RESPONSE_OK);
}

// Nothing in it tells where a line may end.
constexpr std::size_t long_text = 1000000; // bytes

void show_message(wxWindow* parent, kind_t kind)
{
    commondlg3::message_window_t window;
    window.main_message = headline;
    window.supplemental_message =
        kind == kind_t::message_long ? std::string(long_text, 'x') : std::string(explanation);
    window.button_type = commondlg3::message_window_t::button_type_t::ok_cancel;
    window.icon_type = commondlg3::message_window_t::icon_types_t::warning;
    if (kind == kind_t::message_check_box)
        window.check_box = new check_box_t;
    commondlg3::show_modal(window, parent);
}

template <class Dialog>
void show_other(wxWindow* parent, const std::function<void(Dialog&)>& prepare = {})
{
    Dialog dialog(parent, headline, "Warning", wxOK | wxCANCEL | wxICON_WARNING);
    dialog.SetExtendedMessage(explanation);
    if (prepare)
        prepare(dialog);
    dialog.ShowModal();
}

commondlg3::pref_base_t* make_page(kind_t kind)
{
    if (kind == kind_t::page_consent)
        return new commondlg3::opt_in_pp_t(commondlg3::opt_in_pp_t::user_consent_t::given);
    const commondlg3::result_saving_data_t data({}, {}, true, "result_@@@", "/tmp");
    return new commondlg3::result_saving_pp_t(data, true, true);
}

// A page is painted when its widget was drawn and nothing else is left to do.
opening_t open_page(kind_t kind, wxWindow* parent)
{
    struct watch_t
    {
        double drawn_at = 0, painted_at = 0;
        static gboolean on_draw(GtkWidget* widget, cairo_t*, gpointer data)
        {
            static_cast<watch_t*>(data)->drawn_at = now_ms();
            g_signal_handlers_disconnect_by_data(widget, data);
            g_idle_add_full(G_PRIORITY_LOW, on_idle, data, nullptr);
            return FALSE;
        }
        static gboolean on_idle(gpointer data)
        {
            gdk_display_sync(gdk_display_get_default());
            static_cast<watch_t*>(data)->painted_at = now_ms();
            return G_SOURCE_REMOVE;
        }
    };
    watch_t watch;
    const double start = now_ms();
    auto* page = make_page(kind);
    page->create(parent);
    page->SetSize(parent->GetClientSize());
    g_signal_connect_after(page->GetHandle(), "draw", G_CALLBACK(watch_t::on_draw), &watch);
    while (watch.painted_at == 0)
        gtk_main_iteration();
    page->Destroy();
    gdk_display_sync(gdk_display_get_default());
    return {watch.drawn_at - start, watch.painted_at - start, now_ms() - start};
}

} // namespace

std::optional<kind_t> kind_of(const std::string& name)
{
    static const std::map<std::string, kind_t> kinds = {{"message", kind_t::message},
                                                        {"message_check_box", kind_t::message_check_box},
                                                        {"message_long", kind_t::message_long},
                                                        {"example", kind_t::example},
                                                        {"result_saving", kind_t::result_saving},
                                                        {"page_result_saving", kind_t::page_result_saving},
                                                        {"page_consent", kind_t::page_consent},
                                                        {"preferences", kind_t::preferences},
                                                        {"ask", kind_t::ask},
                                                        {"clipboard", kind_t::clipboard},
                                                        {"consent", kind_t::consent},
                                                        {"native", kind_t::native},
                                                        {"rich", kind_t::rich},
                                                        {"generic", kind_t::generic}};
    const auto found = kinds.find(name);
    return found != kinds.end() ? std::optional<kind_t>(found->second) : std::nullopt;
}

opening_t open(kind_t kind, wxWindow* parent)
{
    if (kind == kind_t::page_result_saving || kind == kind_t::page_consent)
        return open_page(kind, parent);
    const paint_watch_t watch(kind == kind_t::native ? end_native : end_dialog_of);
    const double start = now_ms();
    switch (kind) {
    case kind_t::message:
    case kind_t::message_check_box:
    case kind_t::message_long:
        show_message(parent, kind);
        break;
    case kind_t::example: {
        gallery::example_dialog_t dialog({"Disk", "Notes on the first run"});
        dialog.show_modal(parent);
        break;
    }
    case kind_t::result_saving: {
        const commondlg3::result_saving_data_t data({}, {}, true, "result_@@@", "/tmp");
        gallery::page_frame_t frame(new commondlg3::result_saving_pp_t(data, true, true), "Results");
        frame.show_modal(parent);
        break;
    }
    case kind_t::preferences: {
        static commondlg3::preferences_frame_t* const kept =
            gallery::make_preferences("pref.sampling").release();
        kept->show_modal(parent);
        break;
    }
    case kind_t::ask:
        commondlg3::ask_dlg_t().show_modal(parent);
        break;
    case kind_t::clipboard:
        commondlg3::clipboard_dlg_t().show_modal(parent);
        break;
    case kind_t::consent:
        commondlg3::opt_in_dlg_t(commondlg3::opt_in_pp_t::user_consent_t::given).show_modal(parent);
        break;
    case kind_t::page_result_saving:
    case kind_t::page_consent:
        break; // no windows
    case kind_t::native:
        show_other<wxMessageDialog>(parent);
        break;
    case kind_t::rich:
        show_other<wxRichMessageDialog>(
            parent, [](wxRichMessageDialog& dialog) { dialog.ShowCheckBox(check_box_label); });
        break;
    case kind_t::generic:
        show_other<wxGenericMessageDialog>(parent);
        break;
    }
    gdk_display_sync(gdk_display_get_default());
    return {watch.drawn_at() - start, watch.painted_at() - start, now_ms() - start};
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace bench
