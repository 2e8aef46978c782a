#include "caption_tools.h"

#include <commondlg3/caption_label.h>
#include <wx_helpers1/label.h>

#include <wx/sizer.h>

namespace test {
constexpr int page_height = 6000;

window_t::window_t(int width)
    : m_frame(new wxFrame(main_window(), wxID_ANY, "test", wxPoint(60, 60), wxSize(700, 600))),
      m_page(new wxPanel(new wxPanel(m_frame), wxID_ANY, wxPoint(0, 0), wxSize(width, page_height)))
{
    m_page->SetSizer(new wxBoxSizer(wxVERTICAL));
    m_frame->Show();
    m_frame->Raise();
    EXPECT_TRUE(wait_for([this] { return m_frame->IsActive(); }));
}

window_t::~window_t()
{
    m_frame->Destroy();
    settle();
}

void window_t::drag_to(int width)
{
    m_page->SetSize(width, page_height);
}

std::string cut_off(wxWindow* parent)
{
    std::string result;
    for (auto* label : all_below<commondlg3::caption_label_t>(parent)) {
        if (!label->IsShownOnScreen())
            continue;
        const wxSize needed = wx_helpers1::natural_size(label);
        const wxSize size = label->GetSize();
        const wxRect inside(parent->GetClientSize());
        // As it was laid out: the display follows later.
        wxRect place(label->GetPosition(), size);
        for (wxWindow* around = label->GetParent(); around != parent; around = around->GetParent())
            place.Offset(around->GetPosition());
        if (needed.x > size.x || needed.y > size.y || !inside.Contains(place))
            result +=
                wxString::Format("'%s' needs %dx%d and has %dx%d at %d,%d of %dx%d; ",
                                 wxString::FromUTF8(label->get_full_text()).Left(20), needed.x, needed.y,
                                 size.x, size.y, place.x, place.y, inside.width, inside.height)
                    .utf8_string();
    }
    return result;
}

} // namespace test
