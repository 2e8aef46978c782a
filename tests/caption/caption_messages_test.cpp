#include "caption_tools.h"

#include <commondlg3/caption_panel.h>
#include <commondlg3/image_loader.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/static_picture_ctrl.h>

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using commondlg3::caption_label_t;
using commondlg3::caption_panel_t;
using severity_t = caption_panel_t::severity_t;

namespace {

class heading_t
{
public:
    heading_t() : m_panel(new caption_panel_t(m_window, "Caption", "Description"))
    {
        m_window->GetSizer()->Add(m_panel, 0, wxEXPAND);
        m_window->Layout();
    }

    caption_panel_t* operator->() { return m_panel; }
    caption_label_t* message() { return test::all_below<caption_label_t>(m_panel).at(2); }
    wxWindow* pane() { return message()->GetParent(); }
    wxBitmapButton* arrow(std::size_t which) { return test::all_below<wxBitmapButton>(m_panel).at(which); }
    wxStaticText* position() { return test::all_below<wxStaticText>(pane()).at(1); }
    wx_helpers1::static_picture_ctrl_t* picture()
    {
        return test::all_below<wx_helpers1::static_picture_ctrl_t>(m_panel).at(0);
    }

    void run(const std::string& operations)
    {
        std::istringstream all(operations);
        for (std::string each; std::getline(all, each, ';');)
            run_one(each);
    }

    /// The order of the messages, and what is on the screen.
    std::string state()
    {
        std::string order;
        for (int i = 0; i < m_panel->get_message_count(); ++i)
            order += m_panel->get_message(m_panel->get_message_id(i)).text + ",";
        if (arrow(0)->IsShown() != arrow(1)->IsShown())
            return "one arrow";
        return order + (pane()->IsShown() ? " pane " + message()->GetLabelText().utf8_string() : " no pane") +
               (arrow(0)->IsShown() ? " arrows" : "");
    }

private:
    // "-" stands for an empty text.
    void run_one(const std::string& operation)
    {
        std::istringstream words(operation);
        std::string verb, text;
        int number = -1;
        words >> verb >> number >> text;
        if (text == "-")
            text.clear();
        const std::map<std::string, std::function<void()>> verbs = {
            {"add", [&] { m_panel->add_message(static_cast<severity_t>(number), text); }},
            {"edit", [&] { m_panel->edit_message(number, text); }},
            {"remove", [&] { m_panel->remove_message(number); }},
            {"show", [&] { m_panel->show_message(number, false); }},
            {"force", [&] { m_panel->show_message(number, true); }},
            {"next", [&] { m_panel->show_next_message(); }},
            {"prev", [&] { m_panel->show_prev_message(); }},
            {"clear", [&] { m_panel->clear_messages(); }},
            {"hide", [&] { m_panel->hide_message_pane(); }},
            {"disable", [&] { m_panel->disable(); }},
        };
        verbs.at(verb)();
    }

    test::window_t m_window;
    caption_panel_t* m_panel;
};

struct sequence_t
{
    const char* operations; // severities 0 to 3; ids count from 0
    const char* state;
};

} // namespace

TEST(CaptionMessages, any_sequence_gives_the_order_the_message_the_arrows_and_the_pane)
{
    const sequence_t sequences[] = {
        {"", " no pane"},
        {"add 3 i", "i, pane i"},
        {"add 3 i; add 1 e; add 2 w", "e,w,i, pane e arrows"},
        {"add 2 a; add 2 b; add 1 c; add 2 d; add 1 f", "c,f,a,b,d, pane c arrows"},
        {"add 0 c; add 3 i; add 1 e", "c,e,i, pane c arrows"}, // severity 2 is skipped over
        {"add 7 u; add 1 e; add 2 w", "u,e,w, pane u arrows"}, // an unknown severity stands in nobody's way
        {"add 2 a; add 2 b; add 3 i; next; next; next", "a,b,i, pane a arrows"},
        {"next; prev; add 1 e; next; prev", "e, pane e"},
        // What is shown stays when it is as severe, except for the very first message.
        {"add 1 e; add 3 i; show 1", "e,i, pane i arrows"},
        {"add 3 x; remove 0; add 1 e; add 3 i; show 2", "e,i, pane e arrows"},
        {"add 3 x; remove 0; add 1 e; add 1 f; show 2", "e,f, pane e arrows"},
        {"add 3 x; remove 0; add 1 e; add 3 i; force 2; show 1", "e,i, pane e arrows"},
        {"add 1 e; show 5; force 5; edit 5 x; remove 5; remove 6", "e, pane e"},
        // Empty texts are kept and never seen.
        {"add 1 -; add 3 i", ",i, no pane arrows"},
        {"add 2 w; add 1 -; next", ",w, pane w arrows"},
        {"add 1 e; edit 0 -; edit 0 g", "g, pane g"},
        {"add 1 e; add 2 w; edit 0 -", ",w, pane e arrows"},
        {"add 1 e; add 2 w; edit 1 x", "e,x, pane e arrows"},
        // Removing.
        {"add 1 e; remove 0", " no pane"},
        {"add 1 e; add 2 w; remove 0", "w, pane w"},
        {"add 1 e; add 2 w; remove 1", "e, pane e"},
        {"add 1 a; add 1 b; add 1 c; next; remove 1", "a,c, pane a arrows"},
        {"add 1 e; add 2 -; remove 0", ", pane e"},
        {"add 1 e; add 1 -; add 2 w; remove 0", ",w, pane e arrows"},
        {"disable; add 1 e; add 2 w; remove 0", "w, no pane"},
        // These two do what they say and nothing else.
        {"add 1 e; add 2 w; clear; next; prev", " pane e arrows"},
        {"add 1 e; add 2 w; clear; add 3 i", "i, pane i"},
        {"add 3 x; add 1 a; clear; add 3 -; add 3 c; show 3", ",c, pane c arrows"},
        {"add 3 x; remove 0; add 1 e; add 3 i; hide; next", "e,i, pane e arrows"},
        {"add 3 x; remove 0; add 1 e; add 3 i; hide; show 2", "e,i, pane i arrows"},
        {"add 1 e; disable; add 0 c", "c,e, no pane arrows"},
    };
    for (const sequence_t& sequence : sequences) {
        heading_t heading;
        heading.run(sequence.operations);
        EXPECT_EQ(heading.state(), sequence.state) << sequence.operations;
    }
}

TEST(CaptionMessages, lookups_answer_what_is_unknown)
{
    heading_t heading;
    heading.run("add 3 i; add 1 e");
    EXPECT_EQ(heading->get_message_index(1), 0);
    EXPECT_EQ(heading->get_message_index(7), -1);
    EXPECT_EQ(heading->get_message_index(-1), -1);
    EXPECT_EQ(test::take_assertions(), std::vector<std::string>{"id >= 0"});
    EXPECT_EQ(heading->get_message_id(2), -1);
    EXPECT_EQ(heading->get_message_id(-1), -1);
    EXPECT_EQ(heading->get_message(7).severity, severity_t::critical);
    EXPECT_EQ(heading->get_message(7).text, "");
}

// A picture says nothing to who cannot see it, and an arrow not how far there is to go.
TEST(CaptionMessages, severity_and_number_are_told_in_words)
{
    heading_t heading;
    heading.run("add 2 w; add 2 x; add 0 c; add 9 u; next; next");
    EXPECT_EQ(heading.state(), "c,w,x,u, pane x arrows");
    EXPECT_EQ(wx_helpers1::get_accessible_name(heading.picture()), "Warning");
    for (std::size_t i : {0u, 1u})
        EXPECT_NE(heading.arrow(i)->GetToolTipText().find("3 of 4"), wxString::npos);
    EXPECT_EQ(heading.position()->GetLabel(), "3 of 4");
    heading.run("add 3 later");
    EXPECT_NE(heading.arrow(1)->GetToolTipText().find("3 of 5"), wxString::npos) << "one more waits";
    heading.run("next; next");
    for (int i = 0; i < 100; ++i)
        heading->add_message(severity_t::information, "more");
    EXPECT_EQ(heading.position()->GetLabel(), "5 of 105");
    EXPECT_FALSE(heading.position()->GetRect().Intersects(heading.arrow(1)->GetRect()));
    EXPECT_FALSE(heading.position()->GetRect().Intersects(heading.arrow(0)->GetRect()));
    while (heading->get_message_count() > 5)
        heading->remove_message(heading->get_message_id(5));
    heading.run("remove 0");
    EXPECT_NE(heading.arrow(1)->GetToolTipText().find("4 of 4"), wxString::npos)
        << "a shown one has moved up";
}

TEST(CaptionMessages, keyboard_and_mouse_step_and_focus_never_stays_in_a_hidden_arrow)
{
    heading_t heading;
    auto* field = new wxTextCtrl(heading->GetParent(), wxID_ANY);
    heading->GetParent()->GetSizer()->Add(field);
    heading->GetParent()->Layout();
    heading.run("add 1 a; add 2 b");
    std::vector<int> shown;
    heading->get_shown_signal().connect([&shown](int id) { shown.push_back(id); });
    heading.arrow(1)->SetFocus();
    test::settle();
    test::press(WXK_SPACE);
    EXPECT_EQ(shown, std::vector<int>{1});
    heading.run("remove 0");
    test::settle();
    EXPECT_FALSE(heading.arrow(1)->IsShown());
    EXPECT_TRUE(field->HasFocus());

    heading.run("add 1 c");
    heading->set_read_only(true);
    EXPECT_TRUE(heading->get_read_only());
    heading.arrow(1)->SetFocus();
    test::settle();
    test::press(WXK_SPACE);
    EXPECT_EQ(heading.state(), "c,b, pane b arrows") << "to read is not to change";
}

TEST(CaptionMessages, arrows_point_the_other_way_from_right_to_left)
{
    using image = commondlg3::image_loader_t::image_type_t;
    const auto pixels = [](const wxBitmap& bitmap) {
        const wxImage made = bitmap.ConvertToImage();
        return std::string(reinterpret_cast<const char*>(made.GetAlpha()),
                           static_cast<std::size_t>(made.GetWidth() * made.GetHeight()));
    };
    const auto left = pixels(commondlg3::image_loader_t::get()
                                 .load_image(image::scroll_left_normal)
                                 .get_bundle()
                                 .GetBitmap(wxSize(11, 11)));
    heading_t heading;
    EXPECT_EQ(pixels(heading.arrow(0)->GetBitmap()), left);
    heading->SetLayoutDirection(wxLayout_RightToLeft);
    heading->set_button_images();
    EXPECT_EQ(pixels(heading.arrow(1)->GetBitmap()), left);
    EXPECT_NE(pixels(heading.arrow(0)->GetBitmap()), left);
}
