#include "wx_helpers1/chosen_path.h"
#include "wx_helpers1/text.h"

#include <wx/dirdlg.h>
#include <wx/filedlg.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

namespace {

std::string filename_in(GtkWidget* chooser)
{
    if (!chooser || !GTK_IS_FILE_CHOOSER(chooser))
        return std::string();
    gchar* chosen = gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(chooser));
    const std::string bytes = chosen ? chosen : "";
    g_free(chosen);
    return bytes;
}

constexpr char dialog_key[] = "commondlg3-dialog";
constexpr auto toolkits_own = static_cast<GSignalMatchType>(G_SIGNAL_MATCH_ID | G_SIGNAL_MATCH_DATA);

guint response_signal()
{
    return g_signal_lookup("response", GTK_TYPE_DIALOG);
}

// Stands in for the toolkit's own handler, which cannot be run later in the same emission: the response is
// given again, to that one, as what it comes to.
void on_response(GtkDialog* chooser, gint response, gpointer)
{
    g_signal_stop_emission_by_name(chooser, "response");
    g_signal_handlers_disconnect_matched(chooser, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr,
                                         reinterpret_cast<gpointer>(on_response), nullptr);
    g_signal_handlers_unblock_matched(chooser, toolkits_own, response_signal(), 0, nullptr, nullptr,
                                      g_object_get_data(G_OBJECT(chooser), dialog_key));
    const bool nothing = response == GTK_RESPONSE_ACCEPT && filename_in(GTK_WIDGET(chooser)).empty();
    gtk_dialog_response(chooser, nothing ? static_cast<gint>(GTK_RESPONSE_CANCEL) : response);
}

} // namespace

std::string get_chosen_path(const wxFileDialog& dialog)
{
    const wxString path = dialog.GetPath();
    return path.empty() ? filename_in(dialog.GetHandle()) : from_wx(path);
}

std::string get_chosen_path(const wxDirDialog& dialog)
{
    const wxString path = dialog.GetPath();
    return path.empty() ? filename_in(dialog.GetHandle()) : from_wx(path);
}

void cancel_empty_choice(wxDirDialog& dialog)
{
    GtkWidget* chooser = dialog.GetHandle();
    if (!chooser || !GTK_IS_FILE_CHOOSER(chooser))
        return;
    if (g_signal_handlers_block_matched(chooser, toolkits_own, response_signal(), 0, nullptr, nullptr,
                                        &dialog) == 0)
        return; // another toolkit, another way
    g_object_set_data(G_OBJECT(chooser), dialog_key, &dialog);
    g_signal_connect(chooser, "response", G_CALLBACK(on_response), nullptr);
}

} // namespace wx_helpers1
