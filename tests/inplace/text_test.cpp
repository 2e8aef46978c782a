// Saving a log as a text: its formats, and that it may change, and go, meanwhile.
#include "log_tools.h"
#include "tools.h"

#include <commondlg3/inplace_contents.h>
#include <gen_helpers2/file.h>
#include <gen_helpers2/strings.h>
#include <nlohmann/json.hpp>
#include <wx_helpers1/ui_settings.h>

#include <filesystem>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

using namespace commondlg3;
using namespace msngr2;
using gen_helpers2::path_t;

namespace {

struct saved_t
{
    std::string text;
    std::string error; // its identifier
};

saved_t save(test::log_window_t& window, text_format_t format, const text_options_t& options = {})
{
    const test::temp_dir_t folder;
    const std::string file = folder.path() + "/log";
    std::optional<gen_helpers2::error_code_t> result;
    window->save_as(path_t(file), format, options,
                    [&](const gen_helpers2::error_code_t& saved) { result = saved; });
    EXPECT_TRUE(test::wait_for([&] { return result.has_value(); }, 60000));
    return {test::read_file(file), result ? result->identifier() : "none"};
}

const std::string odd = "\\ \xff <&>\" \x01 \u2028 \u00e4";

void fill(test::log_window_t& window)
{
    window->add_message(test::make_message("caption", "<b>bold</b> &amp; 1 < 2"), {});
    window->get_messenger(0)->say(sev_none, "plain");
    window->get_messenger(0)->say(sev_status, "busy");
    window->get_messenger(0)->say(sev_error, "failed");
    window->get_messenger(0)->say(sev_critical | sev_error, "first\nsecond");
    test::settle();
    window->add_message(test::make_message("second \xfe"), {});
    window->get_messenger(1)->say(sev_warning, odd.c_str());
    test::settle();
}

} // namespace

TEST(InplaceText, plain_text_is_what_was_said)
{
    test::log_window_t window;
    fill(window);
    const std::string whole =
        "caption\nbold & 1 < 2\nplain\nfailed\nfirst\nsecond\n\nsecond \xfe\n" + odd + "\n";
    EXPECT_EQ(save(window, text_format_t::plain).text, whole);
    window.log().SetFilter(sev_error, "");
    test::settle();
    text_options_t options;
    options.only_shown = true;
    EXPECT_EQ(save(window, text_format_t::plain, options).text,
              "caption\nbold & 1 < 2\nfailed\nfirst\nsecond\n\nsecond \xfe\n");
    EXPECT_EQ(save(window, text_format_t::plain).text, whole);

    const test::variable_guard_t zone("TZ", "Asia/Kolkata");
    tzset();
    options.times = true;
    std::smatch time;
    const std::string text = save(window, text_format_t::plain, options).text;
    ASSERT_TRUE(std::regex_search(
        text, time, std::regex("\n(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d)\\.\\d{3}\\+05:30 failed\n")));
    std::tm parts{};
    ASSERT_TRUE(strptime(time[1].str().c_str(), "%Y-%m-%dT%H:%M:%S", &parts));
    const std::time_t said = timegm(&parts) - 5 * 3600 - 1800;
    EXPECT_LE(std::abs(said - std::time(nullptr)), 600);

    const test::temp_dir_t folder; // what was taken out of a log is written alike
    ASSERT_TRUE(
        window->take_contents().save_as(path_t(folder.path() + "/log"), text_format_t::plain).succeeded());
    EXPECT_EQ(test::read_file(folder.path() + "/log"), whole);
}

TEST(InplaceText, each_json_line_is_an_object_and_nothing_is_lost)
{
    test::log_window_t window;
    fill(window);
    text_options_t options;
    options.times = true;
    std::istringstream lines(save(window, text_format_t::json_lines, options).text);
    std::vector<std::string> seen;
    for (std::string line; std::getline(lines, line);) {
        const auto object = nlohmann::json::parse(line); // throws when it is none
        const auto text = [&object](const char* key) {
            std::string bytes = object.value(key, "");
            EXPECT_TRUE(!object.value("escaped", false) || gen_helpers2::unescape_bytes(bytes, bytes));
            return bytes;
        };
        EXPECT_EQ(object.contains("time"), object.contains("text"));
        seen.push_back(std::to_string(object["entry"].get<int>()) + "|" + text("caption") + "|" +
                       text("message") + "|" + object.value("severity", "") + "|" + text("text"));
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"0|caption|bold & 1 < 2||", "0|caption||information|plain",
                                              "0|caption||error|failed", "0|caption||critical|first\nsecond",
                                              "1|second \xfe|||", "1|second \xfe||warning|" + odd}));
}

TEST(InplaceText, the_page_is_safe_and_readable)
{
    test::log_window_t window;
    fill(window);
    window->get_messenger(1)->say(sev_none, "</p><script>alert(1)</script>\x1b[31mred");
    test::settle();
    const std::string page = save(window, text_format_t::html).text;
    EXPECT_TRUE(gen_helpers2::is_valid_utf8(page));
    EXPECT_EQ(page.find("<script"), std::string::npos);
    EXPECT_NE(page.find("&lt;/script&gt;red</p>"), std::string::npos);
    EXPECT_EQ(page.find('\x01'), std::string::npos);
    for (const char* part :
         {"<p class=\"message\">bold &amp; 1 &lt; 2</p>", "<p>plain</p>",
          "<p class=\"error\"><b>Error:</b> failed</p>", "<h2 dir=\"auto\">second \ufffd</h2>",
          "<p class=\"warning\"><b>Warning:</b> \\ \ufffd &lt;&amp;&gt;&quot; \ufffd \u2028 \u00e4</p>",
          "<p class=\"critical\"><b>Error:</b> first\nsecond</p>"})
        EXPECT_NE(page.find(part), std::string::npos) << part;
    // Every ink of a half on that half's ground.
    const std::size_t dark = page.find("@media (prefers-color-scheme: dark)");
    ASSERT_NE(dark, std::string::npos);
    for (const std::string& half : {page.substr(0, dark), page.substr(dark)}) {
        std::smatch ground;
        ASSERT_TRUE(std::regex_search(half, ground, std::regex("background: (#\\w{6})")));
        const std::regex ink("[{ ]color: (#\\w{6})");
        int inks = 0;
        for (std::sregex_iterator it(half.begin(), half.end(), ink), end; it != end; ++it, ++inks)
            EXPECT_GE(wx_helpers1::contrast_ratio(wxColour((*it)[1].str()), wxColour(ground[1].str())), 4.5)
                << (*it)[1];
        EXPECT_GE(inks, 4);
    }
}

TEST(InplaceText, lines_come_and_entries_go_while_it_is_written)
{
    const test::temp_dir_t folder;
    const auto in_folder = [&folder](const char* name) { return path_t(folder.path() + "/" + name); };
    std::string whole = "long\n";
    for (int i = 0; i < test::flood; ++i)
        whole += test::flood_line(i) + "\n";
    whole += "\nlast\n";
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("long"), {});
    test::say_lines(window, tag, test::flood);
    window->add_message(test::make_message("last"), {});
    int done = 0;
    const auto count = [&](const gen_helpers2::error_code_t& saved) { done += saved.succeeded() ? 1 : 100; };
    window->save_as(in_folder("grows"), text_format_t::plain, {}, count);
    window->get_messenger(tag)->say(sev_none, "too late");
    ASSERT_TRUE(test::wait_for([&] { return done == 1; }, 60000));
    EXPECT_TRUE(test::read_file(folder.path() + "/grows") == whole);

    test::say_lines(window, tag, 1); // "too late" is there by now
    whole.insert(whole.size() - 6, "too late\n" + test::flood_line(0) + "\n");
    window->save_as(in_folder("erased"), text_format_t::plain, {}, count);
    window->erase(tag);
    ASSERT_TRUE(test::wait_for([&] { return done == 2; }, 60000));
    EXPECT_TRUE(test::read_file(folder.path() + "/erased") == whole);

    window->get_messenger(1)->say(sev_none, "line");
    test::settle();
    window->save_as(in_folder("closed"), text_format_t::plain, {}, count);
    window.destroy();
    inplace_contents_t::wait_until_saved();
    test::settle();
    EXPECT_EQ(done, 2) << "its host may have gone, too";
    EXPECT_EQ(test::read_file(folder.path() + "/closed"), "last\nline\n");
}

TEST(InplaceText, what_is_given_up_or_fails_leaves_the_file_as_it_was)
{
    test::log_window_t window;
    test::say_lines(window, window->add_message(test::make_message("entry"), {}), 20000);
    double told = -1;
    text_options_t options;
    options.goes_on = [&told](double done) {
        EXPECT_GE(done, told);
        return (told = done) < 0.5;
    };
    const test::temp_dir_t folder;
    const std::string file = folder.path() + "/log";
    ASSERT_TRUE(gen_helpers2::write_whole_file(path_t(file), "before").succeeded());
    std::string errors;
    const auto note = [&errors](const gen_helpers2::error_code_t& saved) {
        errors += saved.identifier() + " ";
    };
    window->save_as(path_t(file), text_format_t::html, options, note);
    window->save_as(path_t(folder.path() + "/missing/log"), text_format_t::html, {}, note);
    EXPECT_TRUE(test::wait_for([&] { return errors == "gh2::error::Canceled gh2::error::Io "; })) << errors;
    EXPECT_EQ(test::read_file(file), "before");
    options.goes_on = [&told](double done) { return (told = done) <= 1; };
    EXPECT_EQ(save(window, text_format_t::plain, options).error, "");
    EXPECT_EQ(told, 1);
}

namespace {

struct answers_t : test::messages_t
{
    int answer = wxID_CANCEL;
    int Enter(wxDialog* dialog) override
    {
        return messages_t::Enter(dialog) == wxID_CANCEL ? answer : wxID_NONE;
    }
};

} // namespace

TEST(InplaceText, save_as_asks_where_and_tells_what_fails)
{
    const test::temp_dir_t folder;
    test::log_window_t window;
    fill(window);
    const std::string file = folder.path() + "/log.jsonl";
    test::make_file(file, "before");
    answers_t messages;
    const auto save_as = [&] {
        std::string start;
        test::answer_for_real(file, start);
        window->ask_save_as();
    };
    save_as();
    EXPECT_EQ(test::read_file(file), "before");
    messages.answer = wxID_OK; // the first button
    save_as();
    EXPECT_TRUE(test::wait_for([&] { return test::read_file(file).compare(0, 9, "{\"entry\":") == 0; }));
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    save_as();
    EXPECT_TRUE(test::wait_for([&] { return messages.shown.size() == 4; }));
    EXPECT_EQ(messages.shown.front().first, "Replace the file?");
    EXPECT_EQ(messages.shown.back().first, "The messages could not be saved");
}
