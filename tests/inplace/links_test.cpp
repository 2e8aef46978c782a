// Links in lines and bodies.
#include "log_tools.h"

#include "text_links.h"

#include <wx/uiaction.h>

#include <string>
#include <vector>

using namespace vdxcfrw7;

// What is no place must not look like one, and what is one is opened where it says.
TEST(InplaceLinks, are_found_in_what_programs_write)
{
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"/src/a.cpp:42:7: error: x", "/src/a.cpp:42:7|/src/a.cpp|42|7"},
        {"In file included from b/c++/d.h:3,", "b/c++/d.h:3|b/c++/d.h|3|0"},
        {"a.cpp(42): error C1; (a.cpp(42,7))", "a.cpp(42)|a.cpp|42|0 a.cpp(42,7)|a.cpp|42|7"},
        {"make: *** [Makefile:12: all] Error", "Makefile:12|Makefile|12|0"},
        {"\"/\xc3\xbc/\xe3\x81\x82.py:5\"", "/\xc3\xbc/\xe3\x81\x82.py:5|/\xc3\xbc/\xe3\x81\x82.py|5|0"},
        {"see (https://a.example/b_(c)?d=1:2#e), and http://x.",
         "https://a.example/b_(c)?d=1:2#e||0|0 http://x||0|0"},
        {"at 12:34:56 127.0.0.1:80 printf(3) a.b: 4 :5 a.cpp:0 a.cpp:x a.cpp:7b x(1) 3.5:2 a.cpp(42 https:// "
         "a::1",
         ""},
    };
    for (const auto& [text, expected] : texts) {
        std::string found;
        for (const text_link_t& link : find_links(text)) {
            EXPECT_EQ(text.substr(link.begin, link.end - link.begin), link.link.target);
            found += (found.empty() ? "" : " ") + link.link.target + "|" + link.link.path + "|" +
                     std::to_string(link.link.line) + "|" + std::to_string(link.link.column);
        }
        EXPECT_EQ(found, expected) << text;
    }
}

// The mouse and the keyboard reach the same links, wherever they stand: in styled, wrapped and HTML texts.
TEST(InplaceLinks, are_activated_by_mouse_and_keyboard)
{
    test::log_window_t window;
    std::vector<std::string> activated;
    struct : gen_helpers2::subscriber_base_t
    {
    } subscriber;
    window->link_activated().connect(&subscriber,
                                     [&](const log_link_t& link) { activated.push_back(link.target); });
    const auto tag = window->add_message(
        test::make_message("entry",
                           "see <a href=\"https://a.example/\">there</a> and <a href=\"/b.cpp:2\">here</a>"),
        {});
    std::string wrapped = "\x1b[1mfirst.cpp:1\x1b[m \x1b[31m";
    for (int i = 0; i < 40; ++i)
        wrapped += "some words ";
    window->get_messenger(tag)->say(msngr2::sev_none, (wrapped + "\x1b[32m/last.cpp:2:3").c_str());
    window->get_messenger(tag)->say(msngr2::sev_none, "nothing");
    ASSERT_TRUE(test::wait_for([&] { return window.element(0).GetLines().size() == 2; }));
    test::settle();
    window.focus();

    // Every point of the window is on one link or none.
    std::vector<std::pair<std::string, wxPoint>> seen;
    const wxSize size = window.log().GetWindow()->GetClientSize();
    log_link_t link;
    for (int y = 2; y < 200; y += 4)
        for (int x = 2; x < size.x; x += 4)
            if (window.log().GetLinkAt(wxPoint(x, y), link) &&
                (seen.empty() || seen.back().first != link.target))
                seen.emplace_back(link.target, wxPoint(x, y));
    const auto place_of = [&](const std::string& target) {
        for (const auto& [name, point] : seen)
            if (name == target)
                return point;
        ADD_FAILURE() << target;
        return wxPoint();
    };
    EXPECT_GT(place_of("/last.cpp:2:3").y, place_of("first.cpp:1").y + 20);
    wxUIActionSimulator mouse;
    const auto at = [&](const std::string& target, int more) {
        mouse.MouseMove(window.log().GetWindow()->ClientToScreen(place_of(target) + wxPoint(more, 4)));
        test::settle();
    };
    const std::vector<std::string> all = {"https://a.example/", "/b.cpp:2", "first.cpp:1", "/last.cpp:2:3"};
    for (const std::string& target : all) {
        at(target, 4);
        EXPECT_TRUE(window.log().GetWindow()->GetCursor().IsOk()) << target;
        mouse.MouseClick();
        test::settle();
    }
    EXPECT_EQ(activated, all);
    at("first.cpp:1", 4);
    mouse.MouseDown();
    at("first.cpp:1", 200);
    mouse.MouseUp();
    test::settle();
    EXPECT_EQ(activated.size(), 4u) << "what is selected is not followed";

    activated.clear();
    test::press(WXK_HOME);
    test::press(WXK_DOWN); // the body
    test::press(WXK_RETURN);
    test::press(WXK_RIGHT, wxMOD_CONTROL);
    test::press(WXK_RIGHT, wxMOD_CONTROL);
    test::press(WXK_RETURN);
    test::press(WXK_DOWN);
    test::press(WXK_LEFT, wxMOD_CONTROL);
    test::press(WXK_RETURN);
    test::press(WXK_LEFT, wxMOD_CONTROL);
    test::press(WXK_RETURN);
    test::press(WXK_DOWN);
    test::press(WXK_RETURN); // no link there
    EXPECT_EQ(activated, (std::vector<std::string>{all[0], all[1], all[3], all[2]}));
}

// A program may say where its words lead; what would be no link by itself does not lead anywhere.
TEST(InplaceLinks, are_where_a_program_marks_them)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    window->get_messenger(tag)->say(
        msngr2::sev_none, "\x1b]8;;https://a.example/x\x1b\\here, a.cpp:1\x1b]8;;\x1b\\ or "
                          "\x1b]8;id=1;file:///tmp/a b\athere\x1b]8;;\a, \x1b]8;;javascript:1\anot");
    test::settle();
    const auto rect = window.log().GetLineRect(window.element(0), 0);
    std::vector<std::string> targets;
    log_link_t link;
    for (int x = rect.x; x < rect.GetRight(); x += 2)
        if (window.log().GetLinkAt(wxPoint(x, rect.y + 6), link) &&
            (targets.empty() || targets.back() != link.target))
            targets.push_back(link.target);
    EXPECT_EQ((std::vector<std::string>{"https://a.example/x", "file:///tmp/a b"}), targets);
    window.log().SelectAll();
    EXPECT_EQ("entry\nhere, a.cpp:1 or there, not", window.log().GetSelectedText());
}
