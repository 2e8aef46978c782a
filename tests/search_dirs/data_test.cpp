#include "tools.h"

#include <commondlg3/search_dirs_data.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace commondlg3;
using mark = dir_mark_t::kind_t;
using state = dir_state_t::kind_t;
using texts_t = std::vector<std::string>;

std::vector<dir_mark_t> marks_of(const std::vector<std::pair<std::string, bool>>& dirs)
{
    std::vector<listed_dir_t> listed;
    for (const auto& [path, recursive] : dirs)
        listed.push_back({path, recursive, examine_dir(path)});
    return mark_dirs(listed);
}

TEST(SearchDirsData, EachRowIsToldTheFirstThingThatMakesItUseless)
{
    const test::temp_dir_t dir;
    const std::string base = dir.path();
    std::filesystem::create_directories(base + "/a/b/c");
    std::filesystem::create_directory(base + "/ab");
    std::filesystem::create_symlink(base + "/ab", base + "/link");
    std::filesystem::create_symlink("nowhere", base + "/dead");
    test::make_file(base + "/file");
    const auto marks = marks_of({{base + "/a/b/c", false},
                                 {base + "/a", true},
                                 {base + "/a/b", false}, // below a recursive one
                                 {base + "/a/b/c", false},
                                 {base + "/link", false},
                                 {base + "/ab", false}, // its other name came first
                                 {base + "/file", true},
                                 {base + "/file/x", false}, // not below a recursive one: nothing is there
                                 {base + "/dead", false},
                                 {base + "/none", false},
                                 {base + "/none", false},
                                 {".", false},
                                 {base + "/*", false}});
    const std::vector<dir_mark_t> expected = {
        {mark::none, 0},    {mark::none, 0},     {mark::shadowed, 1},        {mark::duplicate, 0},
        {mark::none, 0},    {mark::shadowed, 4}, {mark::not_a_directory, 0}, {mark::missing, 0},
        {mark::missing, 0}, {mark::missing, 0},  {mark::missing, 0},         {mark::relative, 0},
        {mark::none, 0}};
    ASSERT_EQ(expected.size(), marks.size());
    for (std::size_t i = 0; i < marks.size(); ++i)
        EXPECT_TRUE(expected[i] == marks[i]) << i << ": " << static_cast<int>(marks[i].kind);
    EXPECT_TRUE(mark_dirs({{"/x", false, {}}})[0] == (dir_mark_t{mark::waiting, 0}));
}

TEST(SearchDirsData, PastedTextsOfManyKindsAreListsOfDirectories)
{
    const struct
    {
        std::string text;
        texts_t dirs;
    } cases[] = {{"", {}},
                 {"/a\r\n\t/b c \n\n/d", {"/a", "/b c", "/d"}},
                 {"/usr/bin:/bin:~/bin:$HOME/x", {"/usr/bin", "/bin", "~/bin", "$HOME/x"}},
                 {"/data/12:30:relative", {"/data/12:30:relative"}},
                 {":/a::/b:", {"/a", "/b"}},
                 {"file:///tmp/a%20b", {"/tmp/a b"}},
                 {"file://", {"file://"}},
                 {"C:/Work", {"C", "/Work"}},
                 {"/\xFF:/\xFE", {"/\xFF", "/\xFE"}}};
    for (const auto& c : cases)
        EXPECT_EQ(c.dirs, split_dirs(c.text)) << c.text;
}

} // namespace
