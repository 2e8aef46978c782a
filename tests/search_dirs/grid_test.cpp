#include "tools.h"

#include <vdxpropgrid2/property_grid.h>
#include <wx_helpers1/clipboard.h>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace vdxpropgrid2;
using texts_t = std::vector<std::string>;

GtkTreeView* tree_below(GtkWidget* widget)
{
    if (GTK_IS_TREE_VIEW(widget))
        return GTK_TREE_VIEW(widget);
    GtkTreeView* found = nullptr;
    if (GTK_IS_CONTAINER(widget)) {
        GList* children = gtk_container_get_children(GTK_CONTAINER(widget));
        for (GList* at = children; at && !found; at = at->next)
            found = tree_below(GTK_WIDGET(at->data));
        g_list_free(children);
    }
    return found;
}

class PropertyGrid : public testing::Test
{
protected:
    void SetUp() override
    {
        m_frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxPoint(100, 100), wxSize(600, 300));
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        grid_texts_t texts;
        texts.text_header = "Directory";
        texts.mark_header = "State";
        texts.check_header = "Recursive";
        texts.more_header = "Choose";
        texts.input_row = "Add";
        m_grid = new property_grid_t(m_frame, texts);
        m_button = new wxButton(m_frame, wxID_ANY, "after");
        sizer->Add(m_grid, 1, wxEXPAND);
        sizer->Add(m_button);
        m_frame->SetSizer(sizer);
        m_grid->set_rows({{"/a"}, {"/b"}, {"/c"}});
        m_frame->Show();
        m_frame->Raise();
        m_tree = tree_below(m_grid->GetHandle());
        ASSERT_TRUE(m_tree);
        m_grid->SetFocus();
        m_grid->set_current_row(0);
        ASSERT_TRUE(test::wait_for(
            [this] { return m_frame->IsActive() && gtk_widget_has_focus(GTK_WIDGET(m_tree)); }));
        test::settle();
    }
    void TearDown() override { m_frame->Destroy(); }

    texts_t texts() const
    {
        texts_t all;
        for (const row_t& row : m_grid->get_rows())
            all.push_back(row.text);
        return all;
    }
    wxPoint middle_of(int row, int column) const
    {
        GtkTreePath* path = gtk_tree_path_new_from_indices(row, -1);
        GdkRectangle area;
        gtk_tree_view_get_cell_area(m_tree, path, gtk_tree_view_get_column(m_tree, column), &area);
        gtk_tree_path_free(path);
        int x = 0;
        int y = 0;
        gdk_window_get_origin(gtk_tree_view_get_bin_window(m_tree), &x, &y);
        return {x + area.x + area.width / 2, y + area.y + area.height / 2};
    }
    static void click(const wxPoint& place, bool twice = false)
    {
        wxUIActionSimulator mouse;
        mouse.MouseMove(place);
        test::settle();
        twice ? mouse.MouseDblClick() : mouse.MouseClick();
        test::settle();
    }

    wxFrame* m_frame = nullptr;
    property_grid_t* m_grid = nullptr;
    wxButton* m_button = nullptr;
    GtkTreeView* m_tree = nullptr;
};

TEST_F(PropertyGrid, ANameOfTwoLinesTakesOneRow)
{
    const int height = middle_of(1, 0).y - middle_of(0, 0).y;
    m_grid->set_rows({{"/a\nb"}, {"/b"}});
    test::settle();
    EXPECT_EQ(height, middle_of(1, 0).y - middle_of(0, 0).y);
    EXPECT_EQ("/a\nb", texts().front());
}

TEST_F(PropertyGrid, KeysAloneDoEverything)
{
    std::vector<int> updated;
    m_grid->get_row_updated_signal().connect([&](int row) { updated.push_back(row); });
    test::press(WXK_F2);
    ASSERT_TRUE(m_grid->is_editing());
    test::press(WXK_END);
    test::type("x");
    test::press(WXK_RETURN);
    EXPECT_EQ(texts_t({"/ax", "/b", "/c"}), texts());
    test::press(WXK_DOWN);
    test::type("/new"); // the first letter begins
    test::press(WXK_ESCAPE);
    EXPECT_EQ(texts_t({"/ax", "/b", "/c"}), texts());
    test::press(WXK_UP, wxMOD_ALT);
    EXPECT_EQ(texts_t({"/b", "/ax", "/c"}), texts());
    test::press(WXK_DOWN, wxMOD_ALT);
    test::press(WXK_DOWN, wxMOD_ALT);
    test::press(WXK_DOWN, wxMOD_ALT);
    EXPECT_EQ(texts_t({"/ax", "/c", "/b"}), texts());
    EXPECT_EQ(2, m_grid->get_current_row());
    test::press(WXK_DOWN);
    test::type("/d");
    test::press(WXK_RETURN);
    EXPECT_EQ(texts_t({"/ax", "/c", "/b", "/d"}), texts());
    EXPECT_EQ(4, m_grid->get_current_row()) << "ready for the next one";
    EXPECT_EQ(std::vector<int>({0, 3}), updated);
    test::press('Z', wxMOD_CONTROL);
    test::press('Z', wxMOD_CONTROL);
    EXPECT_EQ(texts_t({"/ax", "/b", "/c"}), texts());
    test::press('Z', wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(texts_t({"/ax", "/c", "/b"}), texts());
    std::vector<int> unwanted;
    m_grid->get_remove_signal().connect([&](int row) { unwanted.push_back(row); });
    m_grid->set_current_row(1);
    test::press(WXK_DELETE);
    EXPECT_EQ(std::vector<int>({1}), unwanted);
    test::press(WXK_SPACE);
    EXPECT_TRUE(m_grid->get_rows()[1].checked);
    std::vector<int> more;
    m_grid->get_more_signal().connect([&](const click_data_t& data) { more.push_back(data.row); });
    test::press(WXK_F4);
    EXPECT_EQ(std::vector<int>({1}), more);
    test::press(WXK_TAB);
    EXPECT_TRUE(m_button->HasFocus());
}

// The toolkit drops what is being typed when the focus goes: a click on OK would lose it.
TEST_F(PropertyGrid, WhatIsTypedIsKeptWhereverTheFocusGoes)
{
    const auto finished = std::make_shared<int>(0); // the grid outlives this body
    m_grid->get_editing_finished_signal().connect([finished] { ++*finished; });
    test::press(WXK_F2);
    test::type("/typed");
    m_button->SetFocus();
    test::settle();
    EXPECT_EQ("/typed", m_grid->get_text(0));
    m_grid->edit(1);
    test::type("/tab");
    test::press(WXK_TAB);
    EXPECT_EQ("/tab", m_grid->get_text(1));
    m_grid->edit(2);
    test::type("/call");
    EXPECT_TRUE(m_grid->commit());
    EXPECT_EQ("/call", m_grid->get_text(2));
    EXPECT_FALSE(m_grid->commit());
    m_grid->edit(2);
    test::type("/other row");
    click(middle_of(0, 0));
    EXPECT_EQ("/other row", m_grid->get_text(2));
    EXPECT_EQ(4, *finished);
    m_grid->set_rows({{"/\xFFx"}, {"/a&b"}, {}}); // bytes that are no text, too
    for (const int row : {0, 1}) {
        m_grid->edit(row);
        test::press(WXK_END);
        test::type("y");
        test::press(WXK_RETURN);
    }
    EXPECT_EQ(texts_t({"/\xFFxy", "/a&by", ""}), texts());
    m_grid->edit(2);
    test::type("/destroyed"); // with the frame, by TearDown()
}

TEST_F(PropertyGrid, PastedLinesAreRowsAndOneStep)
{
    m_grid->set_current_row(1);
    ASSERT_TRUE(wx_helpers1::copy_to_clipboard("/1\n\n  /2\r\n/3"));
    test::press('V', wxMOD_CONTROL);
    ASSERT_TRUE(test::wait_for([this] { return m_grid->row_count() == 7; }));
    EXPECT_EQ(texts_t({"/a", "/1", "/2", "/3", "/b", "/c"}), texts());
    test::press('Z', wxMOD_CONTROL);
    EXPECT_EQ(texts_t({"/a", "/b", "/c"}), texts());
    m_grid->edit(3); // several lines pasted while the input row is edited
    test::press('V', wxMOD_CONTROL);
    ASSERT_TRUE(test::wait_for([this] { return m_grid->row_count() == 7; }));
    EXPECT_EQ(texts_t({"/a", "/b", "/c", "/1", "/2", "/3"}), texts());
    ASSERT_TRUE(wx_helpers1::copy_to_clipboard("mid"));
    m_grid->edit(0);
    test::press(WXK_END);
    test::press('V', wxMOD_CONTROL);
    test::press(WXK_RETURN);
    EXPECT_EQ("/amid", m_grid->get_text(0)) << "one line goes into the text";
    test::press('C', wxMOD_CONTROL);
    m_grid->set_current_row(6);
    test::press('V', wxMOD_CONTROL);
    ASSERT_TRUE(test::wait_for([this] { return m_grid->row_count() == 8; }));
    EXPECT_EQ("/amid", m_grid->get_text(6));
}

TEST_F(PropertyGrid, TheMouseDragsEditsAndPresses)
{
    wxUIActionSimulator mouse;
    GtkSettings* settings = gtk_settings_get_default();
    g_object_set(settings, "gtk-double-click-time", 0, nullptr); // no two presses are a double click
    const auto drag = [&](int from, int to, bool below) {
        const wxPoint start = middle_of(from, 0);
        const wxPoint end = middle_of(to, 0) + wxPoint(0, below ? 6 : -6);
        mouse.MouseMove(start);
        mouse.MouseDown();
        test::settle();
        mouse.MouseMove(wxPoint(start.x, (start.y + end.y) / 2));
        test::settle();
        mouse.MouseMove(end);
        test::settle();
    };
    const auto drop = [&](const texts_t& expected) {
        mouse.MouseUp();
        test::wait_for([&] { return texts() == expected; });
        EXPECT_EQ(expected, texts());
    };
    drag(0, 2, true);
    drop({"/b", "/c", "/a"});
    drag(2, 0, false);
    test::press(WXK_ESCAPE);
    mouse.MouseUp();
    test::settle();
    EXPECT_EQ(texts_t({"/b", "/c", "/a"}), texts()) << "given up";
    drag(2, 1, false);
    drop({"/b", "/a", "/c"});

    click(middle_of(1, 0));
    click(middle_of(1, 0));
    EXPECT_FALSE(m_grid->is_editing()) << "choosing a row again is not editing it";
    gtk_settings_reset_property(settings, "gtk-double-click-time");
    click(middle_of(1, 0), true);
    ASSERT_TRUE(m_grid->is_editing());
    test::type("/double");
    test::press(WXK_RETURN);
    EXPECT_EQ("/double", m_grid->get_text(1));
    click(middle_of(3, 0));
    ASSERT_TRUE(m_grid->is_editing()) << "the input row waits for a text";
    test::type("/input");
    test::press(WXK_RETURN);
    EXPECT_EQ("/input", m_grid->get_text(3));
    std::vector<std::string> more;
    m_grid->get_more_signal().connect([&](const click_data_t& data) { more.push_back(data.text); });
    click(middle_of(1, 3));
    click(middle_of(4, 3));
    EXPECT_EQ(texts_t({"/double", ""}), more);
    click(middle_of(0, 1));
    EXPECT_TRUE(m_grid->get_rows()[0].checked);
}

TEST_F(PropertyGrid, TheMenuOpensByKeyboardAndDoesWhatItSays)
{
    grid_texts_t texts_of_menu;
    texts_of_menu.menu_edit = "&Edit";
    texts_of_menu.menu_down = "Move &down";
    texts_of_menu.menu_remove = "&Remove";
    texts_of_menu.menu_undo = "U&ndo";
    m_grid->set_texts(texts_of_menu);
    const auto choose = [&](const char* letter) {
        wxTimer timer;
        timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
            if (!GTK_IS_MENU(gtk_grab_get_current()))
                return;
            timer.Stop();
            wxUIActionSimulator().Text(letter);
        });
        timer.Start(20);
        test::press(WXK_F10, wxMOD_SHIFT); // comes back when something has been chosen
        EXPECT_TRUE(test::wait_for([&] { return !timer.IsRunning() && !gtk_grab_get_current(); }));
        test::settle();
    };
    choose("d");
    EXPECT_EQ(texts_t({"/b", "/a", "/c"}), texts());
    choose("n");
    EXPECT_EQ(texts_t({"/a", "/b", "/c"}), texts());
    std::vector<int> unwanted;
    m_grid->get_remove_signal().connect([&](int row) { unwanted.push_back(row); });
    m_grid->set_current_row(2);
    choose("r");
    EXPECT_EQ(std::vector<int>({2}), unwanted);
    choose("e");
    EXPECT_TRUE(m_grid->is_editing());
}

// A chooser of emoji would take the focus, and the field with it that is to get one.
TEST_F(PropertyGrid, AFieldInARowOffersNothingThatWouldEndIt)
{
    m_grid->edit(0);
    test::type("/x");
    test::press('.', wxMOD_CONTROL);
    EXPECT_TRUE(m_grid->is_editing());
    test::press(WXK_F10, wxMOD_SHIFT);
    ASSERT_TRUE(test::wait_for([] { return GTK_IS_MENU(gtk_grab_get_current()); }));
    test::type("e");
    test::press(WXK_ESCAPE);
    ASSERT_TRUE(test::wait_for([] { return !gtk_grab_get_current(); }));
    EXPECT_TRUE(m_grid->is_editing());
    test::type("y");
    test::press(WXK_RETURN);
    EXPECT_EQ("/xy", m_grid->get_text(0));
}

TEST_F(PropertyGrid, FoldersDroppedFromElsewhereBecomeRowsWhereTheyFall)
{
    GtkWidget* source = m_button->GetHandle();
    gtk_drag_source_set(source, GDK_BUTTON1_MASK, nullptr, 0, GDK_ACTION_COPY);
    gtk_drag_source_add_uri_targets(source);
    const auto give = +[](GtkWidget*, GdkDragContext*, GtkSelectionData* data, guint, guint, gpointer) {
        const char* addresses[] = {"file:///one", "file:///two", nullptr};
        gtk_selection_data_set_uris(data, const_cast<gchar**>(addresses));
    };
    g_signal_connect(source, "drag-data-get", G_CALLBACK(give), nullptr);
    const wxPoint start = m_button->GetScreenPosition() + wxPoint(20, 10);
    const wxPoint end = middle_of(1, 0) + wxPoint(0, -6);
    wxUIActionSimulator mouse;
    mouse.MouseMove(start);
    mouse.MouseDown();
    test::settle();
    for (int i = 1; i <= 10; ++i) {
        mouse.MouseMove(wxPoint(start.x + (end.x - start.x) * i / 10, start.y + (end.y - start.y) * i / 10));
        test::settle();
    }
    mouse.MouseUp();
    EXPECT_TRUE(test::wait_for([this] { return m_grid->row_count() == 6; }));
    EXPECT_EQ(texts_t({"/a", "file:///one", "file:///two", "/b", "/c"}), texts());
    EXPECT_TRUE(m_grid->undo());
    EXPECT_EQ(texts_t({"/a", "/b", "/c"}), texts());
}

// Texts and marks are what a screen reader says of the rows.
TEST_F(PropertyGrid, ScreenReadersFindTheReasonOfAMark)
{
    m_grid->set_mark(1, {row_mark_t::kind_t::error, "Missing", "It does not exist."});
    m_grid->set_current_row(1);
    AtkObject* list = gtk_widget_get_accessible(GTK_WIDGET(m_tree));
    EXPECT_STREQ("It does not exist.", atk_object_get_description(list));
}

} // namespace
