#include "tools.h"

#include <commondlg3/choosers.h>
#include <wx_helpers1/text.h>

#include <wx/app.h>
#include <wx/colordlg.h>
#include <wx/dirdlg.h>
#include <wx/evtloop.h>
#include <wx/filedlg.h>
#include <wx/fontdlg.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace {

using wx_helpers1::from_wx;
using wx_helpers1::to_wx;

TEST(Choosers, FileChooserStartsAtThePathAndItsExtension)
{
    const test::temp_dir_t dir;
    const std::string file = dir.path() + "/a.txt";
    const std::string sub = dir.path() + "/sub";
    std::filesystem::create_directory(sub);
    const struct
    {
        bool open;
        const char *extension, *filter, *title;
        std::string directory;
        const char* shown_title;
        std::string start;
        int shown_filter;
    } cases[] = {
        {true, "txt", "Text|*.txt\nAll|*.*\n", "", "", "Choose a file", dir.path(), 0},
        {false, "c", "Text|*.txt\nAll|*.*\nC|*.c", "Mine", sub, "Mine", sub, 2},
        {true, "txt", "Text|*.txt\nNotes|*.txt;*.md\nAll|*.*", "", "", "Choose a file", dir.path(), 1}};
    for (const auto& c : cases) {
        const test::chooser_answer_t answer([&](wxDialog* shown) {
            const auto* dialog = wxDynamicCast(shown, wxFileDialog);
            EXPECT_EQ(c.shown_title, from_wx(dialog->GetMessage()));
            EXPECT_EQ(c.start, from_wx(dialog->GetDirectory()));
            EXPECT_EQ("a.txt", dialog->GetFilename());
            EXPECT_EQ(c.shown_filter, dialog->GetFilterIndex()) << "of several entries the last";
            EXPECT_EQ(c.open, dialog->HasFlag(wxFD_OPEN));
            EXPECT_EQ(!c.open, dialog->HasFlag(wxFD_SAVE));
            return static_cast<int>(wxID_CANCEL);
        });
        std::string path = file;
        EXPECT_FALSE(commondlg3::file_dlg(test::main_window(), c.open, path, c.extension, c.filter, c.title,
                                          c.directory));
        EXPECT_EQ(file, path) << "left alone";
    }
    std::string path = file;
    std::string start;
    test::make_file(sub + "/chosen.txt");
    test::answer_for_real(sub + "/chosen.txt", start);
    EXPECT_TRUE(commondlg3::file_dlg(test::main_window(), true, path, "none", "", "", ""));
    EXPECT_EQ(sub + "/chosen.txt", path);
}

TEST(Choosers, BrowsingForAFolderStartsAtTheFieldAndIsLikeTyping)
{
    const test::temp_dir_t dir;
    const std::string odd = dir.path() + "/\xFF\xC3"; // no text
    std::filesystem::create_directory(odd);
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
    for (const std::string& field : {dir.path(), dir.path() + "/not/yet"}) {
        ctrl->ChangeValue(to_wx(field));
        test::answer_for_real(odd, start);
        commondlg3::process_browse_folder(test::main_window(), ctrl);
        EXPECT_EQ(dir.path(), start) << "a missing folder begins at what is there";
        EXPECT_EQ(odd, from_wx(ctrl->GetValue()));
    }
    EXPECT_EQ(2, events);
    ctrl->Destroy();
}

// A window that goes takes its children along; a chooser stands on its caller's stack.
TEST(Choosers, EndWithTheirParentAndOutliveIt)
{
    for (const bool file : {false, true}) {
        auto* parent = new wxFrame(nullptr, wxID_ANY, "parent");
        parent->Show();
        parent->CallAfter([parent] { wxTheApp->CallAfter([parent] { delete parent; }); });
        std::string path = "/";
        EXPECT_FALSE(file ? commondlg3::file_dlg(parent, true, path, "", "", "", "")
                          : commondlg3::folder_dlg(parent, path, ""));
        EXPECT_EQ("/", path);
    }
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

// The first part of a chooser that is of a type.
GtkWidget* part_of(GtkWidget* widget, GType type)
{
    std::pair<GType, GtkWidget*> found(type, G_TYPE_CHECK_INSTANCE_TYPE(widget, type) ? widget : nullptr);
    if (!found.second && GTK_IS_CONTAINER(widget))
        gtk_container_forall(
            GTK_CONTAINER(widget),
            [](GtkWidget* child, gpointer data) {
                auto& [wanted, result] = *static_cast<decltype(found)*>(data);
                if (!result)
                    result = part_of(child, wanted);
            },
            &found);
    return found.second;
}

// What is done to a chooser when it has appeared; false when it must be done once more.
using step_t = std::function<bool(GtkWidget* chooser)>;

struct steps_t
{
    step_t step;
    GtkWidget* chooser = nullptr;
    guint source = 0;
    gint64 end_us = g_get_monotonic_time() + 60 * G_USEC_PER_SEC;
};

bool choose_file(bool open, std::string path, step_t step)
{
    steps_t steps{std::move(step)};
    const test::chooser_answer_t answer([&steps](wxDialog* dialog) {
        if (std::exchange(steps.chooser, dialog->GetHandle()))
            return static_cast<int>(wxID_NONE); // it is asked about twice
        const auto again = [](gpointer data) -> gboolean {
            auto& todo = *static_cast<steps_t*>(data);
            const bool is_late = g_get_monotonic_time() > todo.end_us;
            EXPECT_FALSE(is_late);
            if (is_late)
                gtk_dialog_response(GTK_DIALOG(todo.chooser), GTK_RESPONSE_CANCEL);
            else if (!gtk_widget_get_visible(todo.chooser) || !todo.step(todo.chooser))
                return G_SOURCE_CONTINUE;
            todo.source = 0;
            return G_SOURCE_REMOVE;
        };
        steps.source = g_timeout_add(10, again, &steps);
        return static_cast<int>(wxID_NONE);
    });
    const bool chosen = commondlg3::file_dlg(test::main_window(), open, path, "", "", "", "");
    EXPECT_EQ(0U, steps.source) << "it ended before all was done";
    if (steps.source)
        g_source_remove(steps.source);
    return chosen;
}

// Nobody waits for them here, inside the loop that handles them.
void press(const char* keys)
{
    EXPECT_EQ(0, std::system((std::string("xdotool key ") + keys).c_str()));
}

void cancel(GtkWidget* chooser)
{
    gtk_dialog_response(GTK_DIALOG(chooser), GTK_RESPONSE_CANCEL);
}

TEST(Choosers, AListOfFilesThatIsLeftTellsNobodyWhoHasGone)
{
    const test::temp_dir_t dir;
    gpointer chooser = nullptr;
    GtkTreeModel* files = nullptr;
    EXPECT_FALSE(choose_file(true, dir.path() + "/1", [&](GtkWidget* dialog) {
        files = gtk_tree_view_get_model(GTK_TREE_VIEW(part_of(dialog, GTK_TYPE_TREE_VIEW)));
        if (!files)
            return false;
        g_object_ref(files);
        g_signal_connect(files, "row-inserted", G_CALLBACK(+[] {}), nullptr); // until its end
        chooser = part_of(dialog, GTK_TYPE_FILE_CHOOSER_WIDGET);
        g_object_add_weak_pointer(G_OBJECT(chooser), &chooser);
        cancel(dialog);
        return true;
    }));
    EXPECT_TRUE(chooser) << "what the list has asked about its files is answered to somebody";
    EXPECT_TRUE(test::wait_for([&] { return !chooser; }, 30000));
    for (const char* signal : {"row-changed", "row-inserted"})
        EXPECT_FALSE(
            g_signal_has_handler_pending(files, g_signal_lookup(signal, G_OBJECT_TYPE(files)), 0, TRUE));
    g_object_unref(files);
}

// Takes away the first window that appears, as a window manager does that ends while it is asked for one.
GdkFilterReturn lose(GdkXEvent* event, GdkEvent*, gpointer lost)
{
    const auto* mapped = static_cast<XEvent*>(event);
    if (mapped->type != MapNotify || std::exchange(*static_cast<bool*>(lost), true))
        return GDK_FILTER_CONTINUE;
    XUnmapWindow(mapped->xmap.display, mapped->xmap.window);
    return GDK_FILTER_REMOVE;
}

TEST(Choosers, OneThatTheWindowManagerLostComesAfterAll)
{
    bool lost = false;
    gdk_window_add_filter(nullptr, lose, &lost);
    EXPECT_FALSE(choose_file(true, "/", [&](GtkWidget* dialog) {
        XWindowAttributes now{};
        if (GdkWindow* window = gtk_widget_get_window(dialog))
            XGetWindowAttributes(GDK_WINDOW_XDISPLAY(window), GDK_WINDOW_XID(window), &now);
        if (!lost || now.map_state != IsViewable)
            return false;
        cancel(dialog);
        return true;
    }));
    gdk_window_remove_filter(nullptr, lose, &lost);
}

// The toolkit ends the loop of a dialog only while no other runs inside it.
TEST(Choosers, OneThatEndsBelowAnotherLoopComesBackAfterIt)
{
    bool late = false;
    const auto give_up = [](gpointer told) -> gboolean {
        *static_cast<bool*>(told) = true;
        wxEventLoopBase::GetActive()->ScheduleExit();
        return G_SOURCE_REMOVE;
    };
    const guint patience = g_timeout_add_seconds(10, give_up, &late);
    EXPECT_FALSE(choose_file(true, "/", [&](GtkWidget* dialog) {
        wxEventLoop above;
        wxTheApp->CallAfter([&] {
            cancel(dialog);
            above.ScheduleExit();
        });
        above.Run();
        return true;
    }));
    EXPECT_FALSE(late);
    if (!late)
        g_source_remove(patience);
}

// A slow disk tells it late which picture it has: the toolkit ends the program when it has gone.
TEST(Choosers, TheButtonOfAFolderThatIsLeftIsStillAnswered)
{
    const test::temp_dir_t dir;
    GtkWidget* bar = nullptr;
    gpointer button = nullptr;
    bool left = false;
    EXPECT_FALSE(choose_file(true, dir.path() + "/1", [&](GtkWidget* dialog) {
        if (!left) {
            bar = part_of(dialog, g_type_from_name("GtkPathBar"));
            GList* buttons = gtk_container_get_children(GTK_CONTAINER(bar));
            GtkWidget* name = part_of(GTK_WIDGET(buttons->data), GTK_TYPE_LABEL); // none of "/" and arrows
            button = buttons->data;
            g_list_free(buttons);
            if (!name || std::filesystem::path(dir.path()).filename() != gtk_label_get_text(GTK_LABEL(name)))
                return false;
            left = true;
            g_object_add_weak_pointer(G_OBJECT(button), &button);
            gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), "/usr");
        }
        if (button && gtk_widget_get_parent(GTK_WIDGET(button)) == bar)
            return false;
        EXPECT_TRUE(button);
        cancel(dialog);
        return true;
    }));
    EXPECT_TRUE(test::wait_for([&] { return !button; }, 30000));
}

TEST(Choosers, ALetterOfAPathLeavesTheListOfRecentFiles)
{
    const test::temp_dir_t dir;
    bool recent = false;
    EXPECT_FALSE(choose_file(true, dir.path() + "/1", [&](GtkWidget* dialog) {
        GtkWidget* chooser = part_of(dialog, GTK_TYPE_FILE_CHOOSER_WIDGET);
        auto* list = GTK_TREE_VIEW(part_of(dialog, GTK_TYPE_TREE_VIEW));
        if (!gtk_tree_view_get_model(list))
            return false;
        if (!std::exchange(recent, true)) {
            g_signal_emit_by_name(chooser, "recent-shortcut");
            return false;
        }
        g_signal_emit_by_name(chooser, "location-popup", "/");
        EXPECT_EQ(nullptr, gtk_tree_view_get_model(list));
        cancel(dialog);
        return true;
    }));
}

// A path that is begun in the list of recent files leaves them there, as if they were those of a folder.
TEST(Choosers, RecentFilesAreNotTakenForThoseOfAFolder)
{
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/1");
    GtkTreeModel* of_folder = nullptr;
    GtkTreeModel* recent = nullptr;
    bool typed = false;
    EXPECT_FALSE(choose_file(true, dir.path() + "/1", [&](GtkWidget* dialog) {
        auto* list = GTK_TREE_VIEW(part_of(dialog, GTK_TYPE_TREE_VIEW));
        GtkTreeModel* files = gtk_tree_view_get_model(list);
        if (!of_folder && files) {
            of_folder = files;
            press("alt+r");
        } else if (!recent && files && files != of_folder) {
            recent = files;
            gtk_widget_grab_focus(GTK_WIDGET(list));
            press("period");
        } else if (recent && !typed && part_of(dialog, g_type_from_name("GtkFileChooserEntry"))) {
            typed = true;
            gtk_widget_grab_focus(GTK_WIDGET(list));
            press("Down");
        } else if (typed && files != recent) {
            cancel(dialog);
            return true;
        }
        return false;
    }));
}

// Alt+Home takes the field away while the folder is read that the end of its path is to come from.
TEST(Choosers, AnEndIsOnlyAddedToAPathThatIsStillTyped)
{
    const test::temp_dir_t dir;
    GtkTreeModel* folder = nullptr;
    bool read = false;
    const auto on_read = [](GtkTreeModel*, GError*, gpointer flag) { *static_cast<bool*>(flag) = true; };
    EXPECT_FALSE(choose_file(true, dir.path() + "/1", [&](GtkWidget* dialog) {
        GtkWidget* chooser = part_of(dialog, GTK_TYPE_FILE_CHOOSER_WIDGET);
        if (!folder) {
            if (!gtk_tree_view_get_model(GTK_TREE_VIEW(part_of(dialog, GTK_TYPE_TREE_VIEW))))
                return false;
            g_signal_emit_by_name(chooser, "location-popup", "/usr/share/");
            GtkWidget* field = part_of(dialog, g_type_from_name("GtkFileChooserEntry"));
            folder =
                field ? gtk_entry_completion_get_model(gtk_entry_get_completion(GTK_ENTRY(field))) : nullptr;
            EXPECT_TRUE(folder);
            if (folder) {
                g_object_ref(folder);
                g_signal_connect(folder, "finished-loading", G_CALLBACK(+on_read), &read);
                g_signal_emit_by_name(chooser, "home-folder");
                EXPECT_FALSE(part_of(dialog, g_type_from_name("GtkFileChooserEntry")));
                return false;
            }
        }
        if (folder && !read)
            return false;
        cancel(dialog);
        return true;
    }));
    if (folder)
        g_object_unref(folder);
}

TEST(Choosers, OfANameHaveNoRecentFiles)
{
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/there");
    // Anything else that went wrong is printed by the toolkit.
    EXPECT_FALSE(choose_file(false, dir.path() + "/new", [](GtkWidget* dialog) {
        auto* list = GTK_TREE_VIEW(part_of(dialog, GTK_TYPE_TREE_VIEW));
        GtkTreeModel* files = gtk_tree_view_get_model(list);
        GtkTreeIter first;
        if (!files || !gtk_tree_model_get_iter_first(files, &first))
            return false;
        gtk_tree_selection_select_iter(gtk_tree_view_get_selection(list), &first);
        gtk_widget_grab_focus(GTK_WIDGET(list));
        press("alt+r Escape");
        return true;
    }));
}

// A question or menu over a chooser that holds a part of a type.
GtkPopover* popover_with(GType type, GtkWidget* chooser)
{
    std::pair<GType, GtkWidget*> found(type, nullptr);
    const auto look = [](GtkWidget* child, gpointer data) {
        auto& [wanted, result] = *static_cast<decltype(found)*>(data);
        if (GTK_IS_POPOVER(child) && gtk_widget_get_mapped(child) && part_of(child, wanted))
            result = child;
    };
    gtk_container_forall(GTK_CONTAINER(chooser), look, &found);
    return GTK_POPOVER(found.second);
}

// Return presses a button for 0.25 s, or until the key is let go.
TEST(Choosers, ANameWhoseFieldHasGoneRenamesNothing)
{
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/there");
    gboolean asked = FALSE;
    EXPECT_FALSE(choose_file(false, dir.path() + "/new", [&](GtkWidget* dialog) {
        auto* list = GTK_TREE_VIEW(part_of(dialog, GTK_TYPE_TREE_VIEW));
        GtkTreeModel* files = gtk_tree_view_get_model(list);
        GtkTreeIter first;
        if (!files || !gtk_tree_model_get_iter_first(files, &first))
            return false;
        gtk_tree_selection_select_iter(gtk_tree_view_get_selection(list), &first);
        if (!std::exchange(asked, TRUE))
            g_signal_emit_by_name(list, "popup-menu", &asked);
        if (GtkPopover* menu = popover_with(GTK_TYPE_MODEL_BUTTON, dialog)) {
            gtk_popover_popdown(menu);
            g_action_group_activate_action(gtk_widget_get_action_group(GTK_WIDGET(list), "item"), "rename",
                                           nullptr);
        }
        GtkPopover* question = popover_with(GTK_TYPE_ENTRY, dialog);
        if (!question)
            return false;
        gtk_entry_set_text(GTK_ENTRY(part_of(GTK_WIDGET(question), GTK_TYPE_ENTRY)), "other");
        GtkWidget* button = gtk_popover_get_default_widget(question);
        if (!gtk_widget_is_sensitive(button))
            return false;
        gtk_widget_activate(button);
        EXPECT_TRUE(gtk_widget_get_state_flags(button) & GTK_STATE_FLAG_ACTIVE);
        gtk_widget_hide(GTK_WIDGET(question));
        EXPECT_FALSE(gtk_widget_get_state_flags(button) & GTK_STATE_FLAG_ACTIVE);
        cancel(dialog);
        return true;
    }));
    EXPECT_TRUE(std::filesystem::exists(dir.path() + "/there"));
}

TEST(Choosers, ThePastedPathOfAListBecomesItsName)
{
    const test::temp_dir_t dir;
    bool pasted = false;
    EXPECT_FALSE(choose_file(true, dir.path() + "/old", [&](GtkWidget* dialog) {
        if (pasted) {
            GtkWidget* field = part_of(dialog, g_type_from_name("GtkFileChooserEntry"));
            if (!field || gtk_entry_get_text(GTK_ENTRY(field)) != std::string("/etc/hosts"))
                return false;
            cancel(dialog);
            return true;
        }
        GtkWidget* list = part_of(dialog, GTK_TYPE_TREE_VIEW);
        if (!gtk_tree_view_get_model(GTK_TREE_VIEW(list)))
            return false;
        gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), "/etc/hosts", -1);
        gtk_widget_grab_focus(list);
        pasted = true;
        press("ctrl+v");
        return false;
    }));
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
    for (const int code : {wxID_CANCEL, wxID_OK}) {
        const test::chooser_answer_t answer([&](wxDialog* shown) {
            if (auto* fonts = wxDynamicCast(shown, wxFontDialog)) {
                EXPECT_EQ(20, fonts->GetFontData().GetInitialFont().GetPointSize());
                fonts->GetFontData().SetChosenFont(
                    wxFont(31, wxFONTFAMILY_SWISS, wxFONTSTYLE_NORMAL, wxFONTWEIGHT_NORMAL));
            } else if (auto* colours = wxDynamicCast(shown, wxColourDialog)) {
                EXPECT_EQ(*wxBLUE, colours->GetColourData().GetColour());
                const GdkRGBA green{0, 1, 0, 1};
                GObject* selection = nullptr;
                g_object_get(shown->GetHandle(), "color-selection", &selection, nullptr);
                g_object_set(selection, "current-rgba", &green, nullptr);
                g_object_unref(selection);
            }
            return code;
        });
        const bool chosen = code == wxID_OK;
        EXPECT_EQ(chosen, commondlg3::font_dlg(test::main_window(), font));
        EXPECT_EQ(chosen, commondlg3::color_dlg(test::main_window(), colour));
        EXPECT_EQ(chosen, font.GetChosenFont().IsOk() && font.GetChosenFont().GetPointSize() == 31);
        EXPECT_EQ((chosen ? wxGREEN : wxBLUE)->GetAsString(), colour.GetColour().GetAsString());
    }
}

} // namespace
