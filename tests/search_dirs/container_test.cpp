#include "dirs.h"
#include "tools.h"

#include <string>
#include <thread>

namespace {

using namespace FF_2_13;
using test::dirs_of;
using test::dirs_t;
using test::open_dirs;

void fill(const test::container_t& container, search_category_t category, const dirs_t& dirs)
{
    container->clear(category);
    const auto at = container->get_dirs(category);
    for (const auto& [path, recursive] : dirs)
        EXPECT_TRUE(at->add(path, recursive)) << path;
}

// A list is joined into one value: names with line ends, backslashes or foreign bytes could tear it apart.
TEST(SearchDirContainer, AnyBytesComeBackFromTheDiskInTheirOrder)
{
    const test::temp_dir_t dir;
    const dirs_t odd = {{"/z", true}, {"/a\nb\\x41", false}, {"/\xFF\xC3", true}, {" ", false}, {"-", true}};
    {
        const auto container = open_dirs(dir.path() + "/p.xml");
        fill(container, category_sources, odd);
        fill(container, static_cast<search_category_t>(77), {{"/own", false}});
        EXPECT_FALSE(container->get_dirs(category_sources)->add("", true));
        EXPECT_FALSE(container->get_dirs(category_sources)->add(std::string("/a\0b", 4), true));
        EXPECT_TRUE(container->save().succeeded());
    }
    const auto again = open_dirs(dir.path() + "/p.xml");
    EXPECT_EQ(odd, dirs_of(again, category_sources));
    EXPECT_EQ(dirs_t({{"/own", false}}), dirs_of(again, static_cast<search_category_t>(77)));
}

TEST(SearchDirContainerThreads, WhatIsChangedWhileItIsSavedIsSavedTheNextTime)
{
    const test::temp_dir_t dir;
    const auto container = open_dirs(dir.path() + "/p.xml");
    for (int i = 0; i < 100; ++i) {
        const dirs_t last = {{"/" + std::to_string(i), false}};
        std::thread changing([&] { fill(container, category_sources, last); });
        EXPECT_TRUE(container->save().succeeded());
        changing.join();
        EXPECT_TRUE(container->save().succeeded());
        ASSERT_EQ(last, dirs_of(open_dirs(dir.path() + "/p.xml"), category_sources));
    }
}

} // namespace
