#include "tools.h"

#include <ff/search_directories.h>

#include <filesystem>

namespace {

using namespace FF_2_13;
using list_t = std::vector<std::pair<std::string, bool>>;

ObjectPtr<IEditableSearchDirContainer> open(const std::string& file)
{
    gen_helpers2::error_code_t result;
    return make_search_dir_container(cfgmgr2::open_property_storage(file, result));
}

void fill(const ObjectPtr<IEditableSearchDirContainer>& container, search_category_t category,
          const list_t& dirs)
{
    container->clear(category);
    const auto at = container->get_dirs(category);
    for (const auto& [path, recursive] : dirs)
        EXPECT_TRUE(at->add(path, recursive)) << path;
}

list_t dirs_of(const ObjectPtr<IEditableSearchDirContainer>& container, search_category_t category)
{
    list_t dirs;
    for (const auto at = container->get_dirs(category); !at->at_end(); at->next())
        dirs.emplace_back(at->get_path(), at->is_recursive());
    return dirs;
}

// A list is joined into one value: names with line ends, backslashes or foreign bytes could tear it apart.
TEST(SearchDirContainer, AnyBytesComeBackFromTheDiskInTheirOrder)
{
    const test::temp_dir_t dir;
    const list_t odd = {{"/z", true}, {"/a\nb\\x41", false}, {"/\xFF\xC3", true}, {" ", false}, {"-", true}};
    {
        const auto container = open(dir.path() + "/p.xml");
        fill(container, category_sources, odd);
        fill(container, static_cast<search_category_t>(77), {{"/own", false}});
        EXPECT_FALSE(container->get_dirs(category_sources)->add("", true));
        EXPECT_FALSE(container->get_dirs(category_sources)->add(std::string("/a\0b", 4), true));
        EXPECT_TRUE(container->save().succeeded());
    }
    const auto again = open(dir.path() + "/p.xml");
    EXPECT_EQ(odd, dirs_of(again, category_sources));
    EXPECT_EQ(list_t({{"/own", false}}), dirs_of(again, static_cast<search_category_t>(77)));
    EXPECT_EQ(0U, again->count(category_binaries));
}

TEST(SearchDirContainer, OfTwoProgramsThatWriteEachKeepsItsListsWhole)
{
    const test::temp_dir_t dir;
    const std::string file = dir.path() + "/p.xml";
    const auto one = open(file);
    const auto two = open(file);
    fill(one, category_sources, {{"/1", false}, {"/2", false}, {"/3", false}});
    fill(one, category_binaries, {{"/bin", true}});
    EXPECT_TRUE(one->save().succeeded());
    fill(two, category_sources, {{"/4", false}});
    EXPECT_TRUE(two->save().succeeded());
    EXPECT_EQ(list_t({{"/4", false}}), dirs_of(open(file), category_sources));
    EXPECT_EQ(list_t({{"/bin", true}}), dirs_of(open(file), category_binaries)) << "not touched by the other";
}

TEST(SearchDirContainer, WhatCannotBeWrittenStaysToBeWritten)
{
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/config"); // where the folder should be
    const auto container = open(dir.path() + "/config/p.xml");
    fill(container, category_others, {{"/kept", false}});
    EXPECT_TRUE(container->save().failed());
    std::filesystem::remove(dir.path() + "/config");
    EXPECT_TRUE(container->save().succeeded());
    EXPECT_EQ(list_t({{"/kept", false}}), dirs_of(open(dir.path() + "/config/p.xml"), category_others));
    EXPECT_TRUE(make_search_dir_container(nullptr)->save().succeeded());
}

TEST(SearchDirContainer, PlacesStandWhenTheListChangesBehindThem)
{
    const auto container = make_search_dir_container(nullptr);
    fill(container, category_sources, {{"/1", false}, {"/2", false}});
    const auto at = container->get_dirs(category_sources);
    at->next();
    EXPECT_TRUE(at->add("/between", false));
    EXPECT_EQ("/2", at->get_path());
    container->clear(category_sources);
    EXPECT_TRUE(at->at_end());
    EXPECT_EQ("", at->get_path());
    EXPECT_TRUE(at->add("/new", true));
    EXPECT_EQ(list_t({{"/new", true}}), dirs_of(container, category_sources));
}

} // namespace
