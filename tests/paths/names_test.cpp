#include "tools.h"

#include <commondlg3/name_chars.h>
#include <commondlg3/path_info.h>
#include <commondlg3/path_validation.h>
#include <commondlg3/result_saving_pp.h>
#include <gen_helpers2/path_state.h>
#include <gen_helpers2/stdpaths.h>
#include <rdmgr2/result_directory_manager.h>

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace {

using commondlg3::path_info_t;
using commondlg3::result_saving_pp_t;
using gen_helpers2::path_t;
using rdmgr2::ResultDirectoryManager;

TEST(ResultNames, CharactersAreFoundListedAndRemoved)
{
    using namespace commondlg3;
    EXPECT_FALSE(check_file_name_for_chars("a/b", disabled_file_chars));
    EXPECT_TRUE(check_folder_name_for_chars("a/b"));
    EXPECT_TRUE(check_folder_name_for_chars("C:\\a?"));
    EXPECT_FALSE(check_file_name_for_chars("", ""));
    EXPECT_TRUE(check_file_name_for_chars("a", ""));
    EXPECT_TRUE(check_string_for_disabled_symbols("", "*"));
    EXPECT_FALSE(check_string_for_disabled_symbols("ab*", "*"));
    std::string listed;
    for (int i = -1; i < 12; ++i)
        listed += create_disabled_char_string(i) + create_disabled_folder_char_string(i);
    EXPECT_EQ("\\*/\":<*>?|\"<>|", listed) << "each once, in order, and nothing beyond";
    std::string text = "a*b?c\xFF\xC3\xA4";
    EXPECT_TRUE(replace_disabled_chars(text));
    EXPECT_FALSE(replace_disabled_chars(text));
    EXPECT_EQ("abc\xFF\xC3\xA4", text);
    text = "/a:b|";
    EXPECT_TRUE(replace_disabled_chars_in_folder(text));
    EXPECT_FALSE(replace_disabled_chars(text, ""));
    EXPECT_EQ("/a:b", text);
}

TEST(ResultNames, OneRunOfAtLeastOneAndAtMostEightNumbersIsLeft)
{
    const std::string eight(8, '@');
    const std::pair<std::string, std::string> cases[] = {{"r@@@_x@y@", "r@@@_xy"},
                                                         {"r" + std::string(12, '@'), "r" + eight},
                                                         {std::string(10, '@') + "_run", eight + "_run"},
                                                         {"a@b@c", "a@bc"},
                                                         {"r" + eight, "r" + eight},
                                                         {std::string(9, '@') + "x@", eight + "x"},
                                                         {"none", "none"},
                                                         {"", ""},
                                                         {"@", "@"}};
    for (const auto& [before, after] : cases) {
        std::string text = before;
        EXPECT_EQ(before != after, result_saving_pp_t::replace_wrong_ats(text)) << before;
        EXPECT_EQ(after, text) << before;
    }
}

TEST(ResultNames, TemplatesAreMadeUsable)
{
    const struct
    {
        std::string before;
        std::string after;
        bool changed;
    } cases[] = {{"result_@@@", "result_@@@", false},
                 {"result_@@@ \t\n ", "result_@@@", false},
                 {"", "result_@@@", true},
                 {"   ", "result_@@@", true},
                 {"without", "result_@@@", true},
                 {"a*@b@", "a@b", true},
                 {"@", "@", false},
                 {"COM@", "result_@@@", true},
                 {std::string(300, 'x') + "@", "result_@@@", true},
                 {"a\nb@", "result_@@@", true},
                 {"r\xFF\xE6\x97\xA5@", "r\xFF\xE6\x97\xA5@", false}};
    for (const auto& c : cases) {
        std::string text = c.before;
        EXPECT_EQ(c.changed, result_saving_pp_t::filter_result_template(text)) << c.before;
        EXPECT_EQ(c.after, text) << c.before;
    }
}

TEST(ResultNames, EachRefusalOfAPatternSaysWhyInItsOwnWords)
{
    const std::pair<const char*, std::string> cases[] = {{"empty", " \t"},
                                                         {"no place", "result"},
                                                         {"several places", "a@b@"},
                                                         {"too many", "@@@@@@@@@"},
                                                         {"cannot have", std::string("a\x01@")},
                                                         {"devices", "nul.@"},
                                                         {"too long", std::string(255, 'x') + "@"}};
    std::set<std::string> sentences;
    for (const auto& [word, pattern] : cases) {
        const auto error = ResultDirectoryManager::validateResultDirectoryPattern(pattern);
        const std::string sentence = rdmgr2::toString(error);
        EXPECT_NE(std::string::npos, sentence.find(word)) << sentence;
        EXPECT_TRUE(sentences.insert(sentence).second) << sentence;
    }
    for (const std::string good : {"@", "COM1_@", "a b@@@@@@@@c", ".@"})
        EXPECT_EQ(0, ResultDirectoryManager::validateResultDirectoryPattern(good)) << good;
    EXPECT_EQ(0, ResultDirectoryManager::validateResultDirectoryPattern(std::string(254, 'x') + "@"));
    EXPECT_EQ("", rdmgr2::toString(rdmgr2::error_none));
}

// What is shown as the next name and what is made must not be counted in two ways.
TEST(ResultNames, TheNextNameIsTheOneThatIsMade)
{
    const test::temp_dir_t dir;
    const path_t folder = path_t(dir.path()) / "new" / "results";
    const char* const expected[] = {"r_01x", "r_02x", "r_08x", "r_100x"};
    for (const std::string next : expected) {
        if (next == "r_08x")
            test::make_file((folder / "r_07x").as_string());
        if (next == "r_100x")
            for (const char* other : {"r_99x", "r_0100x", "r_5x", "r_ax", "r_x", "r_777", "R_555x"})
                std::filesystem::create_directory((folder / other).as_filesystem_path());
        EXPECT_EQ(next, ResultDirectoryManager::getNextResultDirectoryName("r_@@x", folder));
        EXPECT_EQ(next, ResultDirectoryManager::getNextResultDirectoryName("r_@@x", folder)) << "remembered";
        path_t made;
        EXPECT_EQ(0, ResultDirectoryManager::createResultDirectory("r_@@x", folder, made));
        EXPECT_EQ(folder / next, made);
        EXPECT_TRUE(made.is_directory());
    }
    path_t untouched;
    EXPECT_EQ(rdmgr2::error_not_created,
              ResultDirectoryManager::createResultDirectory("@", folder / "r_07x", untouched));
    EXPECT_EQ(rdmgr2::error_no_number, ResultDirectoryManager::createResultDirectory("x", folder, untouched));
    EXPECT_TRUE(untouched.is_empty());
}

TEST(ResultNames, TypedPathsKeepWhatIsNoPathAndYieldWhatIs)
{
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/a.TXT");
    const path_info_t nothing("");
    EXPECT_TRUE(nothing.is_str_path() && !nothing.is_ok() && nothing.as_string().empty());
    const path_info_t pattern(dir.path() + "//*.txt");
    EXPECT_EQ(dir.path() + "//*.txt", pattern.as_string());
    EXPECT_TRUE(pattern.is_str_path() && pattern.is_directory() && pattern.is_exists());
    EXPECT_EQ(path_t("/b/c"), path_info_t("**x*/b//c*/d").extract_path());
    EXPECT_FALSE(path_info_t("a*b").is_ok());
    path_info_t file(dir.path() + "/./a.TXT");
    EXPECT_EQ(dir.path() + "/a.TXT", file.as_string());
    EXPECT_TRUE(file.is_file() && file.check_extension({"x", "TXT"}));
    EXPECT_FALSE(file.check_extension({"txt"}) || file.check_extension({}));
    file.set_path("/none/*");
    EXPECT_TRUE(file.is_file() && !file.is_exists()) << "what is not there counts as a file";
    file.set_path(path_t("/"));
    file.set_path(path_t());
    EXPECT_EQ("/none/*", file.as_string());
    EXPECT_EQ("", path_t("/a.b/.hidden").get_ext(false) + path_t("/a.b/c").get_ext(true));
}

TEST(ResultNames, PathsAreJudgedByWhatIsThere)
{
    using commondlg3::check_path;
    using commondlg3::path_message_t;
    const test::temp_dir_t dir;
    EXPECT_EQ(path_message_t::empty_relative, check_path(path_t("a/b"), false));
    EXPECT_EQ(path_message_t::empty_relative, check_path(path_t("."), true)) << "even where it exists";
    EXPECT_EQ(path_message_t::empty_relative, check_path(path_t(), false));
    EXPECT_EQ(path_message_t::nonexisting, check_path(path_t(dir.path()) / "x", true));
    EXPECT_EQ(std::nullopt, check_path(path_t(dir.path()) / "x/y", false));
    EXPECT_EQ(path_message_t::nonexisting_parent_dir, check_path(path_t(dir.path()) / "aux/x", false))
        << "reserved";
    int position = -1;
    EXPECT_TRUE(path_t::validate("/" + std::string(255, 'x') + "/", true, position));
    EXPECT_EQ(-1, position);
    EXPECT_FALSE(path_t::validate("/" + std::string(256, 'x'), true, position));
    EXPECT_EQ(256, position);
    for (const std::string& bad : {std::string(), std::string("/a*"), "/x" + std::string(10000, '/')})
        EXPECT_FALSE(path_t::validate(bad, true, position)) << bad.size();
}

TEST(ResultNames, AFolderThatCannotTakeResultsIsKnownBeforehand)
{
    using gen_helpers2::examine_folder;
    using state = gen_helpers2::folder_state_t;
    const test::temp_dir_t dir;
    const path_t root(dir.path());
    std::filesystem::permissions(root.as_filesystem_path(), std::filesystem::perms::all);
    test::make_file((root / "file").as_string());
    std::filesystem::create_symlink("nowhere", (root / "dangling").as_filesystem_path());
    std::filesystem::create_symlink("loop", (root / "loop").as_filesystem_path());
    std::filesystem::create_directory((root / "closed").as_filesystem_path());
    std::filesystem::permissions((root / "closed").as_filesystem_path(), std::filesystem::perms::none);
    const std::pair<path_t, state> cases[] = {{root, state::usable},
                                              {root / "x/y/z", state::usable},
                                              {path_t("relative"), state::no_path},
                                              {root / "file/x", state::not_a_folder},
                                              {root / "file", state::not_a_folder},
                                              {root / "dangling/x", state::broken_link},
                                              {root / "loop/x", state::broken_link},
                                              {root / std::string(300, 'x'), state::too_long}};
    for (const auto& [folder, expected] : cases)
        EXPECT_EQ(expected, examine_folder(folder)) << folder.as_string().substr(0, 80);
    const test::ordinary_user_t user;
    EXPECT_EQ(state::usable, examine_folder(root / "x"));
    EXPECT_EQ(state::not_allowed, examine_folder(root / "closed"));
    EXPECT_EQ(state::not_allowed, examine_folder(root / "closed/x"));
}

} // namespace
