// What people do all day with a long log: follow it, look for something, see when and how often it was said.
#include "log_tools.h"
#include "support.h"

#include <gtest/gtest.h>

#include <wx_helpers1/inspect.h>

#include <wx/button.h>
#include <wx/tglbtn.h>
#include <wx/time.h>

#include <cstdint>
#include <regex>
#include <string>
#include <vector>

namespace {

using msngr2::ESeverity;
using msngr2::sev_error;
using msngr2::sev_none;
using msngr2::sev_status;
using msngr2::sev_warning;
using state_t = vdxcfrw7::CEventLog::find_state_t;

} // namespace

class InplaceReading : public ::testing::Test
{
protected:
    void SetUp() override { m_tag = m_window->add_message(test::make_message("first entry"), {}); }

    void say(const std::string& text, int times = 1, ESeverity severity = sev_none)
    {
        for (int i = 0; i < times; ++i)
            m_window->get_messenger(m_tag)->say(severity, text.c_str());
    }
    vdxcfrw7::CEventLog& log() { return m_window.log(); }

    // All that is queued is done.
    state_t look_for(const std::string& text, const vdxcfrw7::find_options_t& options = {})
    {
        log().SetFind(text, options);
        test::settle();
        return log().GetFindState();
    }

    template <class T>
    T* shown_child()
    {
        for (wxWindow* child : log().GetWindow()->GetChildren())
            if (auto* found = wxDynamicCast(child, T); found && found->IsShown())
                return found;
        return nullptr;
    }

    test::log_window_t m_window;
    commondlg3::inplace_ctrl_t::tag_t m_tag = 0;
};

namespace {

void click_at(const wxPoint& point)
{
    test::drag(point, point);
    test::settle();
}

void click(const wxWindow& window)
{
    const wxSize size = window.GetSize();
    click_at(window.GetScreenPosition() + wxPoint(size.x / 2, size.y / 2));
}

} // namespace

TEST_F(InplaceReading, a_button_tells_of_what_came_below_and_leads_there)
{
    say("line", 100);
    test::settle();
    EXPECT_FALSE(shown_child<wxButton>()) << "the end is seen";
    log().ScrollTo(0);
    say("more", 1203);
    say("working", 1, sev_status);
    say("broken", 1, sev_error);
    test::settle();
    auto* button = shown_child<wxButton>();
    ASSERT_TRUE(button);
    EXPECT_EQ("1,204 new lines, with errors", button->GetLabel());
    click(*button);
    EXPECT_TRUE(log().IsAtEnd());
    EXPECT_FALSE(shown_child<wxButton>());
    log().ScrollTo(0);
    say("odd", 1, sev_warning);
    test::settle();
    ASSERT_TRUE(shown_child<wxButton>());
    EXPECT_EQ("1 new line, a warning", shown_child<wxButton>()->GetLabel()) << "counted anew";
    m_window.focus();
    test::press(WXK_END, wxMOD_CONTROL);
    EXPECT_FALSE(shown_child<wxButton>());
    log().ScrollTo(0);
    say("plain");
    test::settle();
    ASSERT_TRUE(shown_child<wxButton>());
    EXPECT_FALSE(shown_child<wxButton>()->GetBitmap().IsOk()) << "the picture of what came before has gone";
}

TEST_F(InplaceReading, counts_and_numbers_what_it_finds)
{
    for (int i = 0; i < 3000; ++i)
        say(i % 100 == 7 ? "Needle, needle in needles" : "hay " + std::to_string(i));
    say("needle", 1, sev_status);
    test::settle();
    const vdxcfrw7::find_options_t match_case{true, false, false}, words{false, true, false},
        expression{false, false, true};
    EXPECT_EQ(90u, look_for("needle").count) << "status lines are no part of it";
    EXPECT_EQ(30u, look_for("Needle", match_case).count);
    EXPECT_EQ(60u, look_for("needle", words).count);
    EXPECT_EQ(30u, look_for("needles$", expression).count);
    EXPECT_TRUE(look_for("needle(", expression).wrong);
    // Whatever is counted when: on from the first that is seen, round, and back.
    log().ScrollTo(0);
    log().SetFind("", {});
    EXPECT_EQ(1u, look_for("needle").current) << "while typing the first is shown";
    for (const std::uint64_t expected : {2u, 3u, 4u}) {
        EXPECT_TRUE(log().FindNext(true));
        EXPECT_EQ(expected, log().GetFindState().current);
    }
    for (const std::uint64_t expected : {3u, 2u, 1u, 90u, 89u}) {
        EXPECT_TRUE(log().FindNext(false));
        EXPECT_EQ(expected, log().GetFindState().current);
    }
    std::uint64_t told = 0;
    const gen_helpers2::connection connection =
        log().find_changed().connect([&] { told = log().GetFindState().count; });
    say("one needle more");
    test::settle();
    EXPECT_EQ(91u, told) << "and told";
    const auto second = m_window->add_message(test::make_message("second entry, needle"), {});
    test::settle();
    EXPECT_EQ(92u, log().GetFindState().count) << "what comes is counted as it comes";
    m_window->erase(second);
    EXPECT_EQ(91u, log().GetFindState().count);
    m_window->clear();
    EXPECT_EQ(0u, log().GetFindState().count);
    EXPECT_FALSE(log().FindNext(true));
}

// What has been looked at is taken away while the rest has not been.
TEST_F(InplaceReading, counts_to_the_end_when_entries_go_meanwhile)
{
    const auto second = m_window->add_message(test::make_message("needle"), {});
    const auto long_one = m_window->add_message(test::make_message("long"), {});
    m_window->add_message(test::make_message("needle"), {});
    msngr2::IMessenger* messenger = m_window->get_messenger(long_one);
    const std::string line(1000, 'x');
    for (int i = 0; i < 20000; ++i)
        messenger->say(sev_none, line.c_str());
    ASSERT_TRUE(test::wait_for([&] { return m_window.element(long_one).GetLines().size() == 20000; }, 60000));
    test::settle();
    log().ScrollTo(0);
    bool erased = false;
    const gen_helpers2::connection connection = log().find_changed().connect([&] {
        if (erased || log().GetFindState().complete)
            return;
        erased = true;
        m_window->erase(m_tag);
        m_window->erase(second);
    });
    vdxcfrw7::find_options_t expression;
    expression.expression = true;
    EXPECT_EQ(1u, look_for("need[l]e", expression).count);
    EXPECT_TRUE(erased) << "the test would pass for nothing";
}

// It would take longer than anybody lives.
TEST_F(InplaceReading, an_expression_that_takes_too_long_gives_up)
{
    say(std::string(60, 'a') + "!");
    test::settle();
    const state_t state = look_for("(a+)+$", {false, false, true});
    EXPECT_TRUE(state.given_up);
    EXPECT_EQ(0u, state.count);
    log().SetFilter(0, "(a+)+$", {false, false, true});
    test::settle();
    EXPECT_EQ(0u, log().GetHiddenCount()) << "such an expression hides nothing";
}

TEST_F(InplaceReading, escape_leads_back_and_the_filter_keeps_the_place)
{
    for (int i = 0; i < 2000; ++i)
        say("line " + std::to_string(i), 1, i % 10 == 0 ? sev_error : i % 5 == 0 ? sev_warning : sev_none);
    test::settle();
    m_window.focus();
    log().ScrollTo(20000);
    test::settle();
    const std::int64_t before = log().GetState().top;
    test::press('F', wxMOD_CONTROL);
    test::type("line 1999");
    test::settle();
    EXPECT_NE(before, log().GetState().top);
    auto* bar = wxWindow::FindFocus()->GetParent();
    std::vector<wxToggleButton*> badges;
    for (wxWindow* child : bar->GetChildren())
        if (auto* badge = wxDynamicCast(child, wxToggleButton); badge && badge->GetLabel() == "200")
            badges.push_back(badge);
    ASSERT_EQ(2u, badges.size()) << "the numbers of errors and of warnings";
    click(*badges[0]);
    test::settle();
    EXPECT_EQ(1800u, log().GetHiddenCount());
    click(*badges[0]);
    m_window.focus();
    test::press('F', wxMOD_CONTROL);
    test::press(WXK_ESCAPE);
    test::settle();
    EXPECT_EQ(0u, log().GetHiddenCount());
    EXPECT_NEAR(static_cast<double>(before), static_cast<double>(log().GetState().top), 1);
}

TEST_F(InplaceReading, shows_one_entry_alone)
{
    say("in the first");
    const auto second = m_window->add_message(test::make_message("second entry"), {});
    m_window->get_messenger(second)->say(sev_none, "in the second");
    test::settle();
    log().SetFilter(0, "", {}, &m_window.element(1));
    test::settle();
    EXPECT_EQ(1u, log().GetHiddenCount());
    EXPECT_EQ(0u, look_for("in the first").count);
    EXPECT_EQ(1u, look_for("in the second").count);
    log().SelectAll();
    EXPECT_EQ("second entry"
              "\n"
              "in the second",
              log().GetSelectedText());
    m_window->add_message(test::make_message("third entry"), {});
    say("late");
    test::settle();
    EXPECT_EQ(2u, log().GetHiddenCount()) << "what comes elsewhere stays hidden";
    m_window->erase(second);
    test::settle();
    EXPECT_FALSE(log().GetOnlyElement());
    EXPECT_EQ(0u, log().GetHiddenCount()) << "without the entry all the others are there again";
}

// What is saved, copied and counted is what was said, however it is shown.
TEST_F(InplaceReading, repeats_are_one_line_and_saved_as_said)
{
    say("tick", 3);
    test::settle();
    EXPECT_EQ(3u, m_window.element(0).GetLines().size()) << "not before it is wanted";
    m_window->set_view({commondlg3::inplace_ctrl_t::view_t::no_times, true, true, 100, false});
    EXPECT_EQ(1u, m_window.element(0).GetLines().size()) << "what is there is collapsed";
    say("tick", 4093);
    say("reading", 1, sev_status);
    say("tick");
    say("tock", 2, sev_warning);
    test::settle();
    ASSERT_EQ(3u, m_window.element(0).GetLines().size()) << "with the status line";
    EXPECT_EQ(4097u, m_window.element(0).GetLines().get_count(0));
    EXPECT_EQ(2u, log().GetCounts().warnings);
    gen_helpers2::variant_bag_t bag;
    EXPECT_TRUE(m_window->save(bag).succeeded());
    std::size_t saved = 0;
    bag.for_each_child("message_entry_t", [&saved](const gen_helpers2::variant_bag_t& entry) {
        entry.for_each_child("message", [&saved](const gen_helpers2::variant_bag_t& line) {
            ++saved;
            EXPECT_FALSE(line.find_value("time")) << "only where the host wants it";
        });
    });
    EXPECT_EQ(4099u, saved);

    // A click on the count opens it, a key closes it, and nothing else moves above.
    const auto height = [this] { return log().GetLineRect(m_window.element(0), 0).height; };
    const int one = height();
    const wxRect rect = log().GetLineRect(m_window.element(0), 0);
    click_at(log().GetWindow()->ClientToScreen(wxPoint(rect.GetRight() - 12, rect.y + 8)));
    EXPECT_EQ(4097 * one, height());
    m_window.focus();
    log().ScrollTo(0);
    test::press(WXK_HOME, wxMOD_CONTROL);
    test::press(WXK_DOWN);
    test::press(WXK_LEFT);
    EXPECT_EQ(one, height());
    m_window->set_view({});
    EXPECT_EQ(4097 * one, height()) << "not collapsed any more, all are seen";
    say("status again", 1, sev_status);
    test::settle();
    EXPECT_EQ("status again", m_window.element(0).GetLines().get_count(1) == 1
                                  ? std::string(m_window.element(0).GetLines().at(1).get_text())
                                  : std::string());
}

TEST_F(InplaceReading, times_are_kept_with_the_lines_where_the_host_wants_it)
{
    say("early");
    test::settle();
    const std::int64_t said = m_window.element(0).GetLines().get_time(0);
    EXPECT_NEAR(static_cast<double>(wxGetUTCTimeMillis().GetValue()), static_cast<double>(said), 60000);
    m_window->keep_times(true);
    gen_helpers2::variant_bag_t bag;
    EXPECT_TRUE(m_window->save(bag).succeeded());
    m_window->clear();
    EXPECT_TRUE(m_window->load(bag).succeeded());
    test::settle();
    EXPECT_EQ(said, m_window.element(0).GetLines().get_time(0));
    EXPECT_LE(m_window.element(0).GetBeginning(), said);
    log().SetCopyTimes(true);
    log().SelectAll();
    const std::string copied = log().GetSelectedText();
    EXPECT_TRUE(std::regex_match(
        copied, std::regex("first entry\\n\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} early")))
        << copied;
}

// Buttons are as large as others however large the text is, and have room for the letters of any language.
TEST_F(InplaceReading, the_names_of_buttons_are_never_cut)
{
    commondlg3::interactive_message_t::ptr_t record(new commondlg3::interactive_message_t);
    record->caption = "choose";
    record->add_button(1, "a name that is long, and in bold letters as it is the usual choice");
    record->add_button(2, "\u0f67\u0f71\u0f74\u0f83"); // twice as high as Latin letters
    m_window->add_message(record, {});
    wxSize usual[2];
    for (const int zoom : {100, 50, 300}) {
        m_window->set_view({commondlg3::inplace_ctrl_t::view_t::clock_times, true, false, zoom, false});
        test::settle();
        log().ScrollTo(zoom * 100);
        test::settle();
        std::size_t i = 0;
        for (const wxWindow* button : log().GetWindow()->GetChildren()) {
            if (!wxDynamicCast(button, wxButton) || !button->IsShown())
                continue;
            for (const auto& shown : wx_helpers1::get_shown_texts(*button))
                EXPECT_FALSE(shown.is_cut) << shown.text << " at " << zoom;
            if (zoom == 100)
                usual[i] = button->GetSize();
            EXPECT_EQ(usual[i++], button->GetSize());
        }
        EXPECT_EQ(2u, i);
    }
}

TEST_F(InplaceReading, the_usual_choice_follows_the_font_of_the_desktop)
{
    m_window->add_message(test::with_buttons("choose", {1}), {});
    test::settle();
    const test::font_guard_t large("Sans 33");
    test::settle();
    const wxFont font = log().GetWindow()->GetChildren().front()->GetFont();
    EXPECT_EQ(33, font.GetPointSize());
    EXPECT_EQ(wxFONTWEIGHT_BOLD, font.GetWeight());
}

TEST_F(InplaceReading, lines_need_not_wrap_and_zoom_with_the_wheel)
{
    say(std::string(400, 'w'));
    for (int i = 0; i < 300; ++i)
        say("line " + std::to_string(i));
    test::settle();
    log().ScrollTo(0);
    const int wrapped = log().GetLineRect(m_window.element(0), 0).height;
    auto* window = log().GetWindow();
    m_window->set_view({commondlg3::inplace_ctrl_t::view_t::clock_times, false, false, 100, false});
    test::settle();
    const int single = log().GetLineRect(m_window.element(0), 0).height;
    EXPECT_LT(single * 2, wrapped);
    EXPECT_GT(window->GetScrollRange(wxHORIZONTAL), window->GetScrollThumb(wxHORIZONTAL));
    m_window.focus();
    test::press(WXK_RIGHT);
    EXPECT_GT(window->GetScrollPos(wxHORIZONTAL), 0);
    int told = 0;
    const gen_helpers2::connection connection = m_window->view_changed().connect([&told] { ++told; });
    test::press('+', wxMOD_CONTROL);
    test::press('+', wxMOD_CONTROL);
    EXPECT_EQ(120, m_window->get_view().zoom);
    EXPECT_EQ(2, told);
    EXPECT_GT(log().GetLineRect(m_window.element(0), 0).height, single);
    test::press('0', wxMOD_CONTROL);
    EXPECT_EQ(single, log().GetLineRect(m_window.element(0), 0).height);
    m_window->set_view({});
    test::settle();
    EXPECT_EQ(wrapped, log().GetLineRect(m_window.element(0), 0).height);
}

// What nobody reads is not laid out, and still there.
TEST_F(InplaceReading, a_very_long_line_shows_its_first_part_until_all_is_wanted)
{
    std::string text;
    while (text.size() <= vdxcfrw7::line_t::longest_shown)
        text += "\xd0\x96\xe2\x82\xac words "; // the first part ends within a character
    text += "needle";
    say(text);
    say("short needle");
    test::settle();
    EXPECT_EQ(1u, look_for("needle").count);
    log().SelectAll();
    EXPECT_EQ("first entry\n" + text + "\nshort needle", log().GetSelectedText())
        << "to its end is all of it";
    const auto height = [this] { return log().GetLineRect(m_window.element(0), 0).height; };
    const int first = height();
    log().ScrollTo(0);
    test::settle();
    const wxRect rect = log().GetLineRect(m_window.element(0), 0);
    click_at(log().GetWindow()->ClientToScreen(wxPoint(rect.GetRight() - 12, rect.y + 8)));
    EXPECT_GT(height(), 10 * first);
    test::settle();
    EXPECT_EQ(2u, log().GetFindState().count);
    EXPECT_EQ(text, test::lines_of(m_window.control(), 0).at(0));
}
