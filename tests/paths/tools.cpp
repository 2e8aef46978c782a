#include "tools.h"

#include <commondlg3/error_warning_dialog.h>
#include <commondlg3/resources.h>
#include <gen_helpers2/environment.h>
#include <wx_helpers1/text.h>

#include <wx/stattext.h>

#include <gtk/gtk.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace test {
namespace {

std::string filename_of(GtkFileChooser* chooser)
{
    gchar* name = gtk_file_chooser_get_filename(chooser);
    const std::string text = name ? name : "";
    g_free(name);
    return text;
}

struct real_answer_t
{
    std::string choice;
    std::string* start;
    bool seen = false;
    int turns = 0;

    static gboolean step(gpointer data)
    {
        auto* self = static_cast<real_answer_t*>(data);
        GList* windows = gtk_window_list_toplevels();
        GtkFileChooser* chooser = nullptr;
        for (GList* at = windows; at; at = at->next)
            if (GTK_IS_FILE_CHOOSER(at->data) && gtk_widget_get_mapped(GTK_WIDGET(at->data)))
                chooser = GTK_FILE_CHOOSER(at->data);
        g_list_free(windows);
        if (!chooser)
            return G_SOURCE_CONTINUE;
        if (!self->seen) {
            gchar* folder = gtk_file_chooser_get_current_folder(chooser);
            if (!folder)
                return G_SOURCE_CONTINUE;
            *self->start = folder;
            g_free(folder);
            self->seen = true;
        }
        // A chooser that still reads its first folder forgets what was chosen meanwhile.
        constexpr int turns_to_wait = 25;
        if (self->turns++ % turns_to_wait == 0)
            gtk_file_chooser_set_filename(chooser, self->choice.c_str());
        if (filename_of(chooser) != self->choice)
            return G_SOURCE_CONTINUE;
        gtk_dialog_response(GTK_DIALOG(chooser), GTK_RESPONSE_ACCEPT);
        delete self;
        return G_SOURCE_REMOVE;
    }
};

} // namespace

int messages_t::Enter(wxDialog* dialog)
{
    if (!dynamic_cast<commondlg3::error_warning_dialog_t*>(dialog))
        return wxID_NONE;
    dialog->InitDialog(); // it takes its texts when it is about to appear
    auto* main = wxDynamicCast(dialog->FindWindow(XRCID("m_main_instructions")), wxStaticText);
    auto* more = wxDynamicCast(dialog->FindWindow(XRCID("m_supplemental_instructions")), wxStaticText);
    if (!main || !more)
        return wxID_NONE;
    shown.emplace_back(wx_helpers1::from_wx(main->GetLabelText()),
                       wx_helpers1::from_wx(more->GetLabelText()));
    return wxID_CANCEL;
}

variable_guard_t::variable_guard_t(const char* name, const char* value) : m_name(name)
{
    m_was_set = gen_helpers2::get_environ_value(m_name, m_value);
    value ? setenv(name, value, 1) : unsetenv(name);
}

variable_guard_t::~variable_guard_t()
{
    m_was_set ? setenv(m_name.c_str(), m_value.c_str(), 1) : unsetenv(m_name.c_str());
}

ordinary_user_t::ordinary_user_t()
{
    constexpr uid_t nobody = 65534;
    if (getuid() == 0) {
        EXPECT_EQ(0, seteuid(nobody));
    }
}

ordinary_user_t::~ordinary_user_t()
{
    EXPECT_EQ(0, seteuid(getuid()));
}

void make_file(const std::string& path, const std::string& text)
{
    std::ofstream(path) << text;
}

std::string read_file(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

void answer_for_real(const std::string& choice, std::string& start)
{
    g_timeout_add(20, real_answer_t::step, new real_answer_t{choice, &start});
}

} // namespace test
