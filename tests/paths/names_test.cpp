#include "tools.h"

#include <commondlg3/path_info.h>
#include <commondlg3/result_saving_pp.h>
#include <gen_helpers2/strings.h>
#include <rdmgr2/result_directory_manager.h>

#include <filesystem>
#include <string>
#include <utility>

namespace {

using commondlg3::path_info_t;
using commondlg3::result_saving_pp_t;
using gen_helpers2::path_t;
using rdmgr2::ResultDirectoryManager;

TEST(ResultNames, TemplatesAreMadeUsable)
{
    const std::string eight(8, '@');
    const std::pair<std::string, std::string> cases[] = {{"result_@@@ \t\n ", "result_@@@"},
                                                         {"COM@", "result_@@@"},
                                                         {std::string(300, 'x') + "@", "result_@@@"},
                                                         {"a\nb@", "result_@@@"},
                                                         {"r@@@_x@y@", "r@@@_xy"},
                                                         {"r" + std::string(12, '@'), "r" + eight},
                                                         {std::string(9, '@') + "x@", eight + "x"},
                                                         {"r" + eight, "r" + eight},
                                                         {"@", "@"},
                                                         {"r\xFF\xE6\x97\xA5@", "r\xFF\xE6\x97\xA5@"}};
    for (const auto& [before, after] : cases) {
        std::string text = before;
        EXPECT_EQ(gen_helpers2::trim(before) != after, result_saving_pp_t::filter_result_template(text))
            << before;
        EXPECT_EQ(after, text) << before;
    }
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
        path_t made;
        EXPECT_EQ(0, ResultDirectoryManager::createResultDirectory("r_@@x", folder, made));
        EXPECT_EQ(folder / next, made);
        EXPECT_TRUE(made.is_directory());
    }
    path_t untouched;
    EXPECT_EQ(rdmgr2::error_not_created,
              ResultDirectoryManager::createResultDirectory("@", folder / "r_07x", untouched));
    EXPECT_TRUE(untouched.is_empty());
}

TEST(ResultNames, TypedPathsKeepWhatIsNoPathAndYieldWhatIs)
{
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/a.TXT");
    const path_info_t pattern(dir.path() + "//*.txt");
    EXPECT_EQ(dir.path() + "//*.txt", pattern.as_string());
    EXPECT_TRUE(pattern.is_str_path() && pattern.is_directory() && pattern.is_exists());
    EXPECT_EQ(path_t("/b/c"), path_info_t("**x*/b//c*/d").extract_path());
    EXPECT_FALSE(path_info_t("a*b").is_ok() || path_info_t("").is_ok());
    path_info_t file(dir.path() + "/./a.TXT");
    EXPECT_EQ(dir.path() + "/a.TXT", file.as_string());
    EXPECT_TRUE(file.is_file() && file.check_extension({"x", "TXT"}));
    EXPECT_FALSE(file.check_extension({"txt"}) || file.check_extension({}));
    file.set_path("/none/*");
    EXPECT_TRUE(file.is_file() && !file.is_exists()) << "what is not there counts as a file";
}

} // namespace
