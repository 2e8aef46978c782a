#include "tools.h"

#include <ff/search_directories.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

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

/// In memory, but something happens while it is saved.
class busy_storage_t : public gen_helpers2::ref_counted_of_t<cfgmgr2::IPropertyStorage>
{
public:
    using variant_t = gen_helpers2::variant_t;
    using bag_t = gen_helpers2::variant_bag_t;
    gen_helpers2::sptr_t<IPropertyStorage> get_child(const std::string& name) override
    {
        return m_inner->get_child(name);
    }
    bool has_child(const std::string& name) const override { return m_inner->has_child(name); }
    void remove_child(const std::string& name) override { m_inner->remove_child(name); }
    std::vector<std::string> child_names() const override { return m_inner->child_names(); }
    void set_value(const std::string& name, const variant_t& value) override
    {
        m_inner->set_value(name, value);
    }
    variant_t get_value(const std::string& name) const override { return m_inner->get_value(name); }
    bool has_value(const std::string& name) const override { return m_inner->has_value(name); }
    void remove_value(const std::string& name) override { m_inner->remove_value(name); }
    std::vector<std::string> value_names() const override { return m_inner->value_names(); }
    bag_t to_bag() const override { return m_inner->to_bag(); }
    void from_bag(const bag_t& bag) override { m_inner->from_bag(bag); }
    void change(const bag_t& before, const bag_t& after, const std::vector<std::string>& keys) override
    {
        m_inner->change(before, after, keys);
    }
    gen_helpers2::error_code_t save() override
    {
        if (while_saving)
            while_saving();
        return m_inner->save();
    }
    std::function<void()> while_saving;

private:
    gen_helpers2::sptr_t<IPropertyStorage> m_inner = cfgmgr2::make_memory_property_storage();
};

TEST(SearchDirContainer, WhatIsChangedWhileItIsSavedIsSavedTheNextTime)
{
    const gen_helpers2::sptr_t<busy_storage_t> storage(new busy_storage_t);
    const auto container = make_search_dir_container(storage);
    fill(container, category_sources, {{"/first", false}});
    storage->while_saving = [&] { fill(container, category_sources, {{"/second", false}}); };
    EXPECT_TRUE(container->save().succeeded());
    storage->while_saving = nullptr;
    EXPECT_TRUE(container->save().succeeded());
    EXPECT_EQ(list_t({{"/second", false}}), dirs_of(make_search_dir_container(storage), category_sources));
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
