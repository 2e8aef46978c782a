#include "cfgmgr2/property_storage.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace gen_helpers2;
using cfgmgr2::IPropertyStorage;
using storage_t = sptr_t<IPropertyStorage>;
using names_t = std::vector<std::string>;
using test_tools::read_text;
using test_tools::write_text;

class PropertyStorage : public testing::Test
{
protected:
    storage_t open(const char* expected_error = "")
    {
        error_code_t result;
        storage_t storage = cfgmgr2::open_property_storage(m_file, result);
        EXPECT_EQ(result.identifier(), expected_error) << result.message();
        return storage;
    }
    static void save(const storage_t& storage)
    {
        const error_code_t result = storage->save();
        EXPECT_TRUE(result.succeeded()) << result.as_string();
    }
    static int number(const storage_t& storage, const char* child, const char* name = "n")
    {
        return storage->get_child(child)->get_value(name).get<int>();
    }

    test_tools::temp_dir_t m_dir;
    path_t m_file = m_dir / "config" / "settings.xml";
};

TEST_F(PropertyStorage, IsThereAgainNextTime)
{
    {
        const storage_t child = open()->get_child("dialog");
        child->set_value("width", 640);
        child->get_child("column")->set_value("title", "\xFF\r");
        save(child);
    }
    const storage_t root = open();
    EXPECT_EQ(number(root, "dialog", "width"), 640);
    EXPECT_EQ(root->get_child("dialog")->get_child("column")->get_value("title").get<std::string>(),
              "\xFF\r");
    root->remove_child("dialog");
    save(root);
    EXPECT_FALSE(open()->has_child("dialog"));
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(m_file.as_string()).permissions(),
              perms::owner_read | perms::owner_write);
    EXPECT_EQ(std::filesystem::status(m_file.parent().as_string()).permissions(), perms::owner_all);
}

TEST_F(PropertyStorage, TooDeepIsAnAssertion)
{
    storage_t at = open();
    for (int i = 0; i < 1001; ++i)
        at = at->get_child("deeper");
    EXPECT_EQ(test_tools::take_assertions().size(), 1U);
    at->set_value("lost", 1);
    save(at);
    EXPECT_TRUE(open()->has_child("deeper"));
    variant_bag_t bag;
    variant_bag_t* inner = &bag;
    for (int i = 0; i < 50000; ++i)
        inner = &inner->add_child("deeper");
    open()->from_bag(bag);
    EXPECT_EQ(test_tools::take_assertions().size(), 1U);
}

TEST_F(PropertyStorage, DamagedFileIsKeptAsideUnlessSomebodyMendedIt)
{
    const path_t aside(m_file.as_string() + ".damaged");
    std::filesystem::create_directories(m_file.parent().as_filesystem_path());
    write_text(m_file, "<bag");
    const storage_t root = open("gh2::error::Damaged");
    const storage_t other = open("gh2::error::Damaged");
    EXPECT_TRUE(root->child_names().empty());
    EXPECT_EQ(read_text(m_file), "<bag");
    root->set_value("n", 1);
    save(root);
    EXPECT_EQ(read_text(aside), "<bag");
    std::filesystem::remove(aside.as_filesystem_path());
    other->set_value("mine", 2);
    save(other);
    EXPECT_EQ(open()->value_names(), (names_t{"mine", "n"}));
    EXPECT_FALSE(aside.exists());
}

TEST_F(PropertyStorage, WhatAnotherProcessWroteIsTakenOver)
{
    {
        const storage_t root = open();
        for (const char* name : {"mine", "theirs", "both", "removed_here", "removed_there"})
            root->get_child(name)->set_value("n", 0);
        save(root);
    }
    const storage_t mine = open(), theirs = open();
    const storage_t held = mine->get_child("removed_there");
    mine->get_child("mine")->set_value("n", 1);
    mine->get_child("both")->set_value("n", 1);
    mine->remove_child("removed_here");
    mine->get_child("new_here")->set_value("n", 1);

    theirs->get_child("theirs")->set_value("n", 2);
    theirs->get_child("both")->set_value("n", 2);
    theirs->get_child("both")->set_value("other", 2);
    theirs->get_child("removed_here")->set_value("n", 2);
    theirs->remove_child("removed_there");
    theirs->get_child("new_there")->set_value("n", 2);
    save(theirs);
    save(mine);

    const storage_t now = open();
    EXPECT_EQ(number(now, "mine"), 1);
    EXPECT_EQ(number(now, "theirs"), 2);
    EXPECT_EQ(number(now, "both"), 1);
    EXPECT_EQ(number(now, "both", "other"), 2);
    EXPECT_FALSE(now->has_child("removed_here"));
    EXPECT_FALSE(now->get_child("removed_there")->has_value("n"));
    EXPECT_EQ(number(now, "new_here"), 1);
    EXPECT_EQ(number(now, "new_there"), 2);
    // The objects at hand have taken it over as well, and still have their place.
    EXPECT_EQ(number(mine, "theirs"), 2);
    held->set_value("n", 3);
    save(mine);
    EXPECT_EQ(number(open(), "removed_there"), 3);
}

variant_bag_t records(const std::vector<std::pair<const char*, int>>& all)
{
    variant_bag_t bag;
    for (const auto& [name, n] : all) {
        variant_bag_t& record = bag.add_child("record");
        record.put("n", n);
        record.put("key", name);
    }
    return bag;
}

// A program gives back the list that it read at its start, and knows nothing of what came into it meanwhile.
TEST_F(PropertyStorage, RecordsOfTwoProgramsStandSideBySide)
{
    const auto list = [](const storage_t& storage) { return storage->get_child("list"); };
    const std::vector<std::string> keys{"key"};
    const auto first = records({{"a", 1}, {"b", 2}, {"c", 3}});
    {
        const storage_t root = open();
        list(root)->change({}, first, keys);
        save(root);
    }
    const storage_t mine = open(), theirs = open();
    const auto theirs_now = records({{"b", 20}, {"c", 3}, {"new there", 5}});
    list(theirs)->change(first, theirs_now, keys);
    save(theirs);
    const auto mine_now = records({{"c", 30}, {"a", 1}, {"new here", 4}});
    list(mine)->change(first, mine_now, keys);
    save(mine);
    EXPECT_EQ(list(open())->to_bag(), records({{"c", 30}, {"new here", 4}, {"new there", 5}}))
        << "what one changed or removed and the other did not touch";
    list(mine)->change(mine_now, mine_now, keys);
    save(mine);
    list(theirs)->change(theirs_now, records({{"new there", 5}}), keys);
    save(theirs);
    EXPECT_EQ(list(open())->to_bag(), records({{"new there", 5}, {"a", 1}, {"new here", 4}}))
        << "what was never known here is not removed from here, and what is kept here is put back";
}

TEST_F(PropertyStorage, UnreadableFileIsNotReplaced)
{
    std::filesystem::create_directories(m_file.as_filesystem_path());
    const storage_t root = open("gh2::error::Io");
    root->set_value("n", 1);
    EXPECT_EQ(root->save().identifier(), "gh2::error::Io");
    EXPECT_TRUE(m_file.is_directory());
}

using PropertyStorageThreads = PropertyStorage;

TEST_F(PropertyStorageThreads, WritersAndSaversTogether)
{
    const storage_t root = open();
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([&root, t] {
            const storage_t own = root->get_child("thread" + std::to_string(t));
            for (int i = 0; i < 50; ++i) {
                own->set_value("n", i);
                if (i % 25 == 24)
                    save(own);
            }
        });
    for (auto& thread : threads)
        thread.join();
    for (const char* name : {"thread0", "thread1", "thread2"})
        EXPECT_EQ(number(open(), name), 49);
}

} // namespace
