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

// People write comments into the file; whoever rewrites a list must lose neither them nor what was disabled.
TEST(SearchDirContainer, CommentsAndDisabledDirectoriesOutliveAList)
{
    const test::temp_dir_t dir;
    const auto open_list = [&](const std::string& written = {}) {
        gen_helpers2::error_code_t result;
        const auto storage = cfgmgr2::open_property_storage(dir.path() + "/p.xml", result);
        if (!written.empty())
            storage->get_child("search_directories")->set_value("3", written);
        return make_search_dir_container(storage);
    };
    auto container = open_list("# of a\n#2\n+/a\n?/newer\n!-/b\n-/c\n# end\n");
    const auto first = container->get_dirs(category_sources);
    EXPECT_EQ(" of a\n2", first->get_comment());
    fill(container, category_sources,
         {{"/c", true}, {"/b", false}, {"/a", true}}); // as those do who know nothing of it
    container->get_dirs(category_sources)->add_entry({"/new", false, false, "mine"});
    ASSERT_TRUE(container->save().succeeded());
    container = open_list();
    std::string found;
    for (const auto at = container->get_dirs(category_sources); !at->at_end(); at->next())
        found += at->get_path() + (at->is_enabled() ? "|" : " off|") + at->get_comment() + ";";
    EXPECT_EQ("/new off|mine;/c|;/b off|;/a| of a\n2;", found);
    container->clear(category_sources);
    ASSERT_TRUE(container->save().succeeded());
    gen_helpers2::error_code_t result;
    const auto stored = cfgmgr2::open_property_storage(dir.path() + "/p.xml", result);
    EXPECT_EQ("# end\n", stored->get_child("search_directories")->get_value("3").get<std::string>());
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
