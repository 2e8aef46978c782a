#include "gen_helpers2/variant_bag.h"
#include "gen_helpers2/variant_bag_file.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace gen_helpers2;

variant_bag_t nested(int depth)
{
    variant_bag_t root;
    variant_bag_t* at = &root;
    for (int i = 0; i < depth; ++i) {
        at->put("depth", i);
        at = &at->add_child("deeper");
    }
    return root;
}

variant_bag_t records(int count)
{
    variant_bag_t bag;
    for (int i = 0; i < count; ++i) {
        variant_bag_t& record = bag.add_child("record");
        record.put("text", std::string(124, static_cast<char>('a' + i % 26)));
        record.put("number", i);
    }
    return bag;
}

error_code_t load_text(const std::string& inner, variant_bag_t& bag)
{
    return load_from_string("<bag version=\"1\">" + inner + "</bag>", bag);
}

TEST(Variant, GivesBackItsTypeOnly)
{
    const variant_t number(5), large(1LL << 40), text("t\xC3\xA4xt");
    EXPECT_EQ(number.get<long long>(), 5);
    EXPECT_EQ(number.get<double>(), 5.0);
    EXPECT_FALSE(number.can_get<bool>());
    EXPECT_EQ(number.get<std::string>(), "");
    EXPECT_FALSE(large.can_get<int>());
    EXPECT_EQ(large.get<int>(), 0);
    EXPECT_EQ(variant_t(-3LL).get<int>(), -3);
    EXPECT_FALSE(variant_t(2.5).can_get<int>());
    EXPECT_FALSE(variant_t(true).can_get<int>());
    EXPECT_STREQ(text.get<const char*>(), "t\xC3\xA4xt");
    EXPECT_STREQ(number.get<const char*>(), "");
    EXPECT_TRUE(variant_t(static_cast<const char*>(nullptr)).is_empty());
    EXPECT_NE(variant_t(5), variant_t(5LL));
    EXPECT_EQ(variant_t(std::string("a\0b", 3)).get<std::string>().size(), 3U);
    variant_t changed(text);
    changed = number;
    variant_t& itself = changed;
    changed = std::move(itself);
    EXPECT_EQ(changed, number);
    EXPECT_EQ(text.get<std::string>(), "t\xC3\xA4xt");
}

TEST(Bag, KeepsOrderAndKinds)
{
    variant_bag_t bag;
    bag.put("a", 1);
    variant_bag_t& first = bag.add_child("a");
    bag.add_child("c").put("n", 1);
    bag.add_child("c").put("n", 2);
    bag.put("a", "replaced");
    first.put("inside", true);
    EXPECT_TRUE(bag.get<variant_bag_t>("a").has<variant_t>("inside"));
    EXPECT_FALSE(bag.has<variant_t>("c"));
    std::vector<int> numbers;
    bag.for_each_child("c",
                       [&](const variant_bag_t& c) { numbers.push_back(c.get<variant_t>("n").get<int>()); });
    EXPECT_EQ(numbers, (std::vector<int>{1, 2}));

    variant_bag_t copy(bag);
    copy.find_child("c")->put("n", 9);
    EXPECT_NE(copy, bag);
    EXPECT_EQ(copy.remove("a"), 2U);
    EXPECT_EQ(copy.begin()->name(), "c");
    // A bag may become a part of itself.
    bag = std::move(*bag.find_child("c"));
    EXPECT_EQ(bag.get<variant_t>("n").get<int>(), 1);
}

TEST(Bag, MayHaveAnyDepthButInFilesTheSameLimitBothWays)
{
    const variant_bag_t deep = nested(100000);
    {
        variant_bag_t copy(deep);
        EXPECT_EQ(copy, deep);
        copy = nested(3);
        EXPECT_NE(copy, deep);
    }
    std::string text = "before";
    EXPECT_TRUE(save_to_string(deep, text).failed());
    EXPECT_TRUE(save_to_string(nested(1001), text).failed());
    EXPECT_EQ(text, "before");
    variant_bag_t loaded;
    ASSERT_TRUE(save_to_string(nested(1000), text).succeeded());
    EXPECT_TRUE(load_from_string(text, loaded).succeeded());
    EXPECT_EQ(loaded, nested(1000));
    std::string deeper;
    for (int i = 0; i < 1001; ++i)
        deeper += "<child name=\"c\">";
    EXPECT_EQ(load_text(deeper, loaded).identifier(), "gh2::error::Damaged");
}

TEST(BagFile, EveryValueSurvives)
{
    std::string bytes(" \r\n\t");
    for (int i = 255; i > 0; --i)
        bytes += static_cast<char>(i);
    bytes += "<&>\"']]>\\x41\xEF\xBF\xBF\xC3\xA4 ";
    variant_bag_t bag;
    bag.put(bytes, bytes);
    bag.put("empty", variant_t());
    bag.put("flag", false);
    bag.put("min", INT_MIN);
    bag.put("min64", LLONG_MIN);
    for (const double real :
         {0.1, -0.0, 1e308, std::numeric_limits<double>::denorm_min(),
          std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        bag.add_child(bytes).put("real", real);
    bag.add_child("child");
    const test_tools::temp_dir_t dir;
    ASSERT_TRUE(save_variant_bag(bag, dir / "file").succeeded());
    variant_bag_t loaded;
    const auto result = load_variant_bag(dir / "file", loaded);
    ASSERT_TRUE(result.succeeded()) << result.as_string();
    EXPECT_EQ(loaded, bag);
}

TEST(BagFile, DamageIsAnErrorAndChangesNothing)
{
    const std::string damaged[] = {
        "",
        "<bag version=\"1\">",
        "<bag version=\"2\"></bag>",
        "<bag/>",
        "<other version=\"1\"/>",
        "<bag version=\"1\"/><bag version=\"1\"/>",
        "<!DOCTYPE bag [<!ENTITY e \"x\">]><bag version=\"1\"><string name=\"a\">&e;</string></bag>",
        "<!DOCTYPE bag SYSTEM \"/etc/passwd\"><bag version=\"1\"/>"};
    const std::string damaged_inside[] = {"<int name=\"a\">5x</int>",
                                          "<int name=\"a\">99999999999</int>",
                                          "<bool name=\"a\">1</bool>",
                                          "<what name=\"a\">1</what>",
                                          "<int>1</int>",
                                          "<int name=\"a\" more=\"1\">1</int>",
                                          "<string name=\"a\"><b/></string>",
                                          "<string name=\"a\">\\x4</string>",
                                          "<string name=\"\\\">x</string>",
                                          "<child><int name=\"a\">1</int></child>",
                                          "text"};
    variant_bag_t bag;
    bag.put("kept", 1);
    const variant_bag_t before(bag);
    for (const std::string& text : damaged)
        EXPECT_EQ(load_from_string(text, bag).identifier(), "gh2::error::Damaged") << text;
    for (const std::string& inner : damaged_inside)
        EXPECT_EQ(load_text("<int name=\"good\">1</int>" + inner, bag).identifier(), "gh2::error::Damaged")
            << inner;
    const test_tools::temp_dir_t dir;
    EXPECT_EQ(load_variant_bag(dir / "none", bag).identifier(), "gh2::error::Io");
    ASSERT_TRUE(save_variant_bag(records(10), dir / "file").succeeded());
    EXPECT_EQ(load_variant_bag(dir / "file", bag, 100).identifier(), "gh2::error::Io");
    EXPECT_EQ(bag, before);
}

TEST(BagThreads, NamesAreSharedSafely)
{
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([] {
            for (int i = 0; i < 2000; ++i) {
                variant_bag_t bag;
                bag.put("name" + std::to_string(i % 7), i);
                const variant_bag_t copy(bag);
                bag.clear();
                EXPECT_EQ(copy.size(), 1U);
            }
        });
    for (auto& thread : threads)
        thread.join();
}

} // namespace
