#include "tools.h"

#include <commondlg3/choosers.h>
#include <wx_helpers1/text.h>

#include <wx/colordlg.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/fontdlg.h>

#include <gtk/gtk.h>

#include <filesystem>
#include <string>

namespace {

using wx_helpers1::from_wx;
using wx_helpers1::to_wx;

// Waits for the toolkit's chooser, which fills itself in the background, notes where it begins, chooses and
// accepts.
gboolean accept_when_shown(gpointer dialog)
{
    if (!gtk_widget_get_mapped(GTK_WIDGET(dialog)))
        return G_SOURCE_CONTINUE;
    gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
    return G_SOURCE_REMOVE;
}

struct seen_t
{
    std::string title, directory, name;
    int filter = -1;
    long style = 0;
};

bool choose_file(bool open, std::string& path, const char* extension, const char* filter, const char* title,
                 const char* directory, int code, seen_t& seen)
{
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        auto* dialog = wxDynamicCast(shown, wxFileDialog);
        EXPECT_TRUE(dialog);
        seen = {from_wx(dialog->GetMessage()), from_wx(dialog->GetDirectory()),
                from_wx(dialog->GetFilename()), dialog->GetFilterIndex(),
                dialog->GetWindowStyle() & (wxFD_OPEN | wxFD_SAVE)};
        return code;
    });
    return commondlg3::file_dlg(test::main_window(), open, path, extension, filter, title, directory);
}

TEST(Choosers, FileChooserStartsAtThePathAndItsExtension)
{
    const test::temp_dir_t dir;
    std::filesystem::create_directory(dir.path() + "/sub");
    seen_t seen;
    std::string path = dir.path() + "/a.txt";
    EXPECT_FALSE(choose_file(true, path, "txt", "Text|*.txt\nAll|*.*\n", "", "", wxID_CANCEL, seen));
    EXPECT_EQ(dir.path() + "/a.txt", path) << "left alone";
    EXPECT_EQ("Choose a file", seen.title);
    EXPECT_EQ(dir.path(), seen.directory);
    EXPECT_EQ("a.txt", seen.name);
    EXPECT_EQ(0, seen.filter);
    EXPECT_EQ(wxFD_OPEN, seen.style);
    const std::string sub = dir.path() + "/sub";
    EXPECT_FALSE(
        choose_file(false, path, "c", "Text|*.txt\nAll|*.*\nC|*.c", "Mine", sub.c_str(), wxID_CANCEL, seen));
    EXPECT_EQ("Mine", seen.title);
    EXPECT_EQ(sub, seen.directory);
    EXPECT_EQ("a.txt", seen.name);
    EXPECT_EQ(2, seen.filter);
    EXPECT_EQ(wxFD_SAVE, seen.style);
    EXPECT_FALSE(
        choose_file(true, path, "txt", "Text|*.txt\nNotes|*.txt;*.md\nAll|*.*", "", "", wxID_CANCEL, seen));
    EXPECT_EQ(1, seen.filter) << "of two entries with it the last";
    std::string start;
    test::make_file(sub + "/chosen.txt");
    test::answer_for_real(sub + "/chosen.txt", start);
    EXPECT_TRUE(choose_file(true, path, "none", "", "", "", wxID_NONE, seen));
    EXPECT_EQ(sub + "/chosen.txt", path);
}

TEST(Choosers, BrowsingForAFolderStartsAtTheFieldAndIsLikeTyping)
{
    const test::temp_dir_t dir;
    auto* ctrl = new wxTextCtrl(test::main_window(), wxID_ANY, to_wx(dir.path()));
    int events = 0;
    ctrl->Bind(wxEVT_TEXT, [&](wxCommandEvent&) { ++events; });
    int code = wxID_CANCEL;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        auto* dialog = wxDynamicCast(shown, wxDirDialog);
        EXPECT_EQ("Choose a folder", from_wx(dialog->GetMessage()));
        return code;
    });
    commondlg3::process_browse_folder(test::main_window(), ctrl);
    EXPECT_EQ(dir.path(), from_wx(ctrl->GetValue()));
    code = wxID_NONE; // shown for real
    std::string start;
    test::answer_for_real("/usr/bin", start);
    commondlg3::process_browse_folder(test::main_window(), ctrl);
    EXPECT_EQ(dir.path(), start);
    EXPECT_EQ("/usr/bin", from_wx(ctrl->GetValue()));
    EXPECT_EQ(1, events);
    ctrl->ChangeValue(to_wx(dir.path() + "/not/yet"));
    test::answer_for_real("/usr/bin", start);
    commondlg3::process_browse_folder(test::main_window(), ctrl);
    EXPECT_EQ(dir.path(), start) << "a missing folder begins at what is there";
    commondlg3::process_browse_folder(test::main_window(), nullptr);
    ctrl->Destroy();
}

TEST(Choosers, AFolderWhoseNameIsNoTextIsChosenByItsBytes)
{
    const test::temp_dir_t dir;
    const std::string odd = dir.path() + "/\xFF\xC3";
    std::filesystem::create_directory(odd);
    std::string path = dir.path();
    std::string start;
    test::answer_for_real(odd, start);
    EXPECT_TRUE(commondlg3::folder_dlg(test::main_window(), path, ""));
    EXPECT_EQ(odd, path);
}

// A chooser that has just appeared has not read its folder yet: nothing is selected then.
gboolean accept_nothing(gpointer dialog)
{
    if (!gtk_widget_get_visible(GTK_WIDGET(dialog)))
        return G_SOURCE_CONTINUE;
    gchar* selected = gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog));
    EXPECT_EQ(nullptr, selected);
    g_free(selected);
    gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
    return G_SOURCE_REMOVE;
}

TEST(Choosers, NothingSelectedIsACancel)
{
    const test::temp_dir_t dir;
    std::string path = dir.path();
    const test::chooser_answer_t answer([](wxDialog* shown) {
        g_idle_add_full(G_PRIORITY_HIGH, accept_nothing, shown->GetHandle(), nullptr);
        return static_cast<int>(wxID_NONE);
    });
    EXPECT_FALSE(commondlg3::folder_dlg(test::main_window(), path, ""));
    EXPECT_EQ(dir.path(), path);
}

TEST(Choosers, FontAndColourComeBackOnlyOnOk)
{
    wxFontData font;
    font.SetInitialFont(wxFont(20, wxFONTFAMILY_SWISS, wxFONTSTYLE_NORMAL, wxFONTWEIGHT_NORMAL));
    wxColourData colour;
    colour.SetColour(*wxBLUE);
    int code = wxID_CANCEL;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        if (auto* fonts = wxDynamicCast(shown, wxFontDialog)) {
            EXPECT_EQ(20, fonts->GetFontData().GetInitialFont().GetPointSize());
            fonts->GetFontData().SetChosenFont(
                wxFont(31, wxFONTFAMILY_SWISS, wxFONTSTYLE_NORMAL, wxFONTWEIGHT_NORMAL));
        } else if (auto* colours = wxDynamicCast(shown, wxColourDialog)) {
            EXPECT_EQ(*wxBLUE, colours->GetColourData().GetColour());
            GdkRGBA green{0, 1, 0, 1};
            GObject* selection = nullptr;
            g_object_get(shown->GetHandle(), "color-selection", &selection, nullptr);
            g_object_set(selection, "current-rgba", &green, nullptr);
            g_object_unref(selection);
            if (code == wxID_OK) {
                g_timeout_add(20, accept_when_shown, shown->GetHandle());
                return static_cast<int>(wxID_NONE);
            }
        }
        return code;
    });
    EXPECT_FALSE(commondlg3::font_dlg(test::main_window(), font));
    EXPECT_FALSE(commondlg3::color_dlg(test::main_window(), colour));
    EXPECT_FALSE(font.GetChosenFont().IsOk());
    EXPECT_EQ(*wxBLUE, colour.GetColour());
    code = wxID_OK;
    EXPECT_TRUE(commondlg3::font_dlg(test::main_window(), font));
    EXPECT_TRUE(commondlg3::color_dlg(test::main_window(), colour));
    EXPECT_EQ(31, font.GetChosenFont().GetPointSize());
    EXPECT_EQ(wxGREEN->GetAsString(), colour.GetColour().GetAsString());
}

} // namespace
