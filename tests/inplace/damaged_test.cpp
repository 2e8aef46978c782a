#include "log_tools.h"

#include <string>

using namespace commondlg3;
using namespace msngr2;
using gen_helpers2::variant_bag_t;

namespace {

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr std::size_t huge = 1000 * 1000;
#else
constexpr std::size_t huge = 10 * 1000 * 1000;
#endif

} // namespace

TEST(InplaceDamaged, lines_that_no_one_should_say)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry", "a\x01\xff & <"), {});
    IMessenger* messenger = window->get_messenger(tag);
    std::string words, binary, bytes;
    while (words.size() < huge)
        words += "some words ";
    for (std::size_t i = 0; i < 100000; ++i)
        binary += static_cast<char>(1 + (i * 7919) % 255);
    for (int c = 1; c < 256; ++c)
        bytes += static_cast<char>(c);
    for (const std::string& text :
         {words, std::string(huge, 'x'), binary, bytes, std::string("\xed\xa0\x80\xf8\xc0\xaf"),
          std::string("a\nb\r\n\tc"), std::string()})
        messenger->say(sev_warning, text.c_str());
    messenger->say(sev_none, "last");
    test::settle();
    ASSERT_EQ(test::lines_of(window.control(), 0).size(), 8u);
    EXPECT_EQ(test::lines_of(window.control(), 0)[2], binary);
    EXPECT_EQ(test::lines_of(window.control(), 0)[0].size(), words.size());
    // Drawn, from end to end; found, selected and copied.
    const auto state = window.log().GetState();
    for (int i = 0; i <= 10; ++i) {
        window.log().ScrollTo(state.height * i / 10);
        test::settle();
    }
    EXPECT_TRUE(window.log().Find("last", true));
    window.log().SelectAll();
    EXPECT_GT(window.log().GetSelectedText().size(), 2 * huge);
    window.frame()->SetClientSize(120, 300);
    test::settle();
    window.frame()->SetClientSize(60, 60);
    test::settle();
    EXPECT_TRUE(test::wait_for([&] { return window.log().GetState().exact; }));
}

TEST(InplaceDamaged, whatever_ends_a_line_begins_a_row)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    const std::string said = "one\r\ntwo\xe2\x80\xa9three\xe2\x80\xa8"
                             "four\rfive\xc2\x85six";
    for (const char* text : {said.c_str(), "one", "one\ntwo"})
        window->get_messenger(tag)->say(sev_none, text);
    test::settle();
    const auto height_of = [&](std::size_t line) {
        return window.log().GetLineRect(*window.log().GetElements()[0], line).height;
    };
    const int row = height_of(2) - height_of(1);
    EXPECT_GT(row, 8);
    EXPECT_EQ(height_of(0), height_of(1) + 5 * row);
    EXPECT_NE(std::string::npos, window.log().GetText().find(said)) << "copied as it was said";
}

TEST(InplaceDamaged, bodies_that_no_one_should_write)
{
    test::log_window_t window;
    std::string deep, angles, entities, wide, rows, nested;
    for (int i = 0; i < 3000; ++i) {
        deep += "<ul><li><table><tr><td>";
        angles += "<";
        wide += "<td colspan=9>";
        rows += "<tr><td rowspan=9>";
        if (i < 12)
            nested += "<table><tr><td>a<td>";
        entities += "&#" + std::to_string(i * 991) + ";";
    }
    wide = "<table><tr>" + wide;
    rows = "<table>" + rows;
    for (const std::string& body : {deep, angles, entities, std::string(60000, 'x'), std::string(huge, '<'),
                                    std::string("<font size=+99>big</font>"),
                                    std::string("<table width=1000000><tr><td width=-5>x</table>"),
                                    std::string("<table><tr><td colspan=99999999>"),
                                    std::string("<table><tr><td rowspan=99999999><td>"), wide, rows, nested,
                                    std::string("<img src=\"file:///dev/zero\">")})
        window->add_message(test::make_message("Caption", body), {});
    test::settle();
    for (int i = 0; i <= 10; ++i) {
        window.log().ScrollTo(window.log().GetState().height * i / 10);
        test::settle();
    }
    EXPECT_EQ(window.log().GetElements().size(), 13u);
    EXPECT_GT(window.log().GetText().size(), huge) << "what is given is kept, whatever it is";
}
