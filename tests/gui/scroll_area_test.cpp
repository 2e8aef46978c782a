#include "support.h"

#include <wx_helpers1/scroll_area.h>

#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

#include <gtk/gtk.h>

namespace {

// The toolkit moves what is scrolled on in the middle of a layout, and forgets to lay out what is in it.
TEST(ScrollArea, ShowsWhatIsInItWhenItGrowsAtItsEnd)
{
    wxWeakRef<wxFrame> frame(new wxFrame(test::main_window(), wxID_ANY, "fields"));
    auto* area = new wx_helpers1::scroll_area_t(new wxPanel(frame));
    auto* rows = new wxBoxSizer(wxVERTICAL);
    for (int i = 0; i < 30; ++i)
        rows->Add(new wxTextCtrl(area, wxID_ANY, "text"));
    area->SetSizer(rows);
    area->SetScrollRate(0, 10);
    area->FitInside();
    area->SetSize(0, 0, 300, 200);
    frame->SetClientSize(400, 400);
    frame->Show();
    test::settle();
    area->Scroll(0, 1000);
    test::settle();
    const int end = area->GetViewStart().y;
    GtkAllocation place; // as the toolkit does it, when nothing else is to be laid out anew
    gtk_widget_get_allocation(area->m_wxwindow, &place);
    place.height += 133;
    gtk_widget_size_allocate(area->m_wxwindow, &place);
    ASSERT_GT(end, area->GetViewStart().y);
    for (const wxWindow* field : area->GetChildren()) {
        GdkRectangle text;
        gtk_entry_get_text_area(GTK_ENTRY(field->GetHandle()), &text);
        ASSERT_GT(field->GetSize().y, text.y + text.height / 2);
        ASSERT_LT(0, text.y + text.height / 2);
    }
    frame->Destroy();
    EXPECT_TRUE(test::wait_for([&] { return !frame; }));
}

// What it scrolls may have been given another size that the toolkit has not laid out yet.
TEST(ScrollArea, LeavesTheSizesThatOurLayoutGave)
{
    wxWeakRef<wxFrame> frame(new wxFrame(test::main_window(), wxID_ANY, "fields"));
    auto* area = new wx_helpers1::scroll_area_t(frame);
    area->SetLayoutDirection(wxLayout_RightToLeft);
    auto* field = new wxTextCtrl(area, wxID_ANY, "text", {0, 200}, {100, 90});
    area->SetScrollRate(0, 10);
    area->SetVirtualSize(100, 1000);
    frame->SetClientSize(400, 400);
    frame->Show();
    test::settle();
    field->SetSize(100, 60);
    area->Scroll(0, 2);
    EXPECT_EQ(60, field->GetSize().y);
    field->SetSize(100, 90);
    area->Scroll(0, 1);
    test::settle();
    EXPECT_EQ(90, field->GetSize().y);
    GtkAllocation place;
    gtk_widget_get_allocation(field->GetHandle(), &place);
    EXPECT_EQ(wxRect(area->GetClientSize().x - 100, 190, 100, 90),
              wxRect(place.x, place.y, place.width, place.height));
    EXPECT_EQ(190, field->GetPosition().y);
    frame->Destroy();
    EXPECT_TRUE(test::wait_for([&] { return !frame; }));
}

} // namespace
