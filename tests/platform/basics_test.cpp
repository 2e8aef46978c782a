#include "cpil/strings.h"
#include "cpil/ustring.h"
#include "gen_helpers2/environment.h"
#include "gen_helpers2/error_code.h"
#include "gen_helpers2/intrusive_pointer.h"
#include "gen_helpers2/path.h"
#include "gen_helpers2/stdpaths.h"
#include "gen_helpers2/strings.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace foreign {

/// An interface that knows nothing of ours.
class i_thing
{
public:
    virtual void add_ref() = 0;
    virtual void release() = 0;
    virtual int answer() = 0;

protected:
    ~i_thing() = default;
};

} // namespace foreign

namespace {

namespace gh2 = gen_helpers2;

class thing_t : public gh2::ref_counted_of_t<foreign::i_thing>
{
public:
    explicit thing_t(int& living) : m_living(living) { ++m_living; }
    ~thing_t() override { --m_living; }
    int answer() override { return 42; }

private:
    int& m_living;
};

class counted_t : public gh2::ref_counted_t
{
};

TEST(IntrusivePointer, CountsForeignInterfacesAndOwnClasses)
{
    int living = 0;
    gh2::sptr_t<foreign::i_thing> thing(new thing_t(living));
    {
        const gh2::intrusive_pointer_t<foreign::i_thing> second = thing;
        thing.reset();
        EXPECT_EQ(living, 1);
        EXPECT_EQ(second->answer(), 42);
    }
    EXPECT_EQ(living, 0);

    const gh2::sptr_t<counted_t> counted(new counted_t);
    const gh2::sptr_t<gh2::i_ref_counted> base = counted;
    EXPECT_EQ(base.get(), counted.get());
}

TEST(IntrusivePointerThreads, LastReferenceDeletesOnce)
{
    int living = 0;
    gh2::sptr_t<foreign::i_thing> thing(new thing_t(living));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([copy = thing]() mutable {
            for (int n = 0; n < 1000; ++n)
                gh2::sptr_t<foreign::i_thing>(copy).swap(copy);
            copy.reset();
        });
    thing.reset();
    for (auto& thread : threads)
        thread.join();
    threads.clear();
    EXPECT_EQ(living, 0);
}

TEST(Assertion, ReportsAndGoesOn)
{
    test_tools::expected_assertions_t expected;
    const int* pointer = nullptr;
    EXPECT_TRUE(GH2_ASSERT(1 + 1 == 2, "unit"));
    EXPECT_FALSE(GH2_ASSERT(pointer, "caption"));
    EXPECT_FALSE(GH2_ASSERT_TEXT(pointer != nullptr, "no pointer", "caption"));
    const auto seen = expected.take();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].condition, "pointer");
    EXPECT_EQ(seen[0].unit, "caption");
    EXPECT_GT(seen[0].line, 0);
    EXPECT_EQ(seen[1].condition, "no pointer");
}

TEST(Assertion, HandlerIsExchangedAndMayThrow)
{
    auto before =
        gh2::set_assertion_handler([](const gh2::assertion_t&) { throw std::runtime_error("handler"); });
    EXPECT_FALSE(GH2_ASSERT(false, "unit"));
    const auto throwing = gh2::set_assertion_handler(before);
    EXPECT_TRUE(before);
    EXPECT_THROW(throwing(gh2::assertion_t()), std::runtime_error);
}

TEST(AssertionThreads, HandlerChangesWhileOthersAssert)
{
    test_tools::expected_assertions_t expected;
    std::thread asserting([] {
        for (int i = 0; i < 100; ++i)
            GH2_ASSERT(false, "thread");
    });
    for (int i = 0; i < 100; ++i)
        gh2::set_assertion_handler(gh2::set_assertion_handler({}));
    asserting.join();
    EXPECT_LE(expected.take().size(), 100U);
}

TEST(Utf8, TellsWellFormedFromOther)
{
    for (const char* good :
         {"", "abc", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(gh2::is_valid_utf8(good)) << good;
    // Lone continuation, cut sequence, overlong forms, surrogate, beyond U+10FFFF, never used bytes.
    for (const char* bad :
         {"\x80", "\xC3", "\xE2\x82", "\xC0\xAF", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
          "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "a\xC3z"})
        EXPECT_FALSE(gh2::is_valid_utf8(bad)) << gh2::escape_bytes(bad);
    EXPECT_EQ(gh2::replace_invalid_utf8("a\xFF\xFE\xC3z\x80"), "a\xEF\xBF\xBDz\xEF\xBF\xBD");
    EXPECT_EQ(gh2::replace_invalid_utf8("\xC3\xA4"), "\xC3\xA4");
    EXPECT_EQ(cpil2::ustring("a\xC3\xA4\xFF").length(), 3U);
}

TEST(Escaping, EveryByteComesBack)
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    bytes += "\xC3\xA4 \xEF\xBF\xBF \\x41";
    const std::string escaped = gh2::escape_bytes(bytes);
    EXPECT_TRUE(gh2::is_valid_utf8(escaped));
    EXPECT_EQ(escaped.find_first_of("\r\n\t"), std::string::npos);
    std::string back = "untouched";
    for (const char* wrong : {"\\", "\\x", "\\x4", "\\y41", "a\\xG0"})
        EXPECT_FALSE(gh2::unescape_bytes(wrong, back)) << wrong;
    EXPECT_EQ(back, "untouched");
    ASSERT_TRUE(gh2::unescape_bytes(escaped, back));
    EXPECT_EQ(back, bytes);
    EXPECT_EQ(gh2::trim(" \t a b\r\n"), "a b");
    EXPECT_EQ(gh2::trim(" \n"), "");
}

TEST(UpperCase, FollowsUnicodeAndKeepsBadBytes)
{
    EXPECT_EQ(cpil2::strings::to_upper("stra\xC3\x9F"
                                       "e \xCE\xB1\xCF\x83 \xFF\xC3"),
              "STRASSE \xCE\x91\xCE\xA3 \xFF\xC3");
    EXPECT_EQ(cpil2::strings::to_upper("\xF0\x90\x90\xA8"), "\xF0\x90\x90\x80");
    EXPECT_EQ(cpil2::strings::to_upper(""), "");
    EXPECT_EQ(cpil2::strings::first_to_upper("\xC3\xA4"
                                             "bc DE"),
              "\xC3\x84"
              "bc DE");
    EXPECT_EQ(cpil2::strings::first_to_upper("\xC7\xA6"), "\xC7\xA6");
    EXPECT_EQ(cpil2::strings::first_to_upper("\xC7\x86x"), "\xC7\x85x");
    EXPECT_EQ(cpil2::strings::first_to_upper("e\xCC\x81t"), "E\xCC\x81t");
    EXPECT_EQ(cpil2::strings::first_to_upper("\xFF"
                                             "abc"),
              "\xFF"
              "abc");
}

TEST(Path, TakesApartAndPutsTogether)
{
    EXPECT_EQ(gh2::path_t("/a/b").parent(), gh2::path_t("/a"));
    EXPECT_EQ(gh2::path_t("/a").parent(), gh2::path_t("/"));
    EXPECT_TRUE(gh2::path_t("/").parent().is_empty());
    EXPECT_TRUE(gh2::path_t("a").parent().is_empty());
    EXPECT_EQ(gh2::path_t("..").parent(), gh2::path_t("../.."));
    EXPECT_EQ(gh2::path_t("/a/b.c").file_name(), "b.c");
    EXPECT_EQ(gh2::path_t("/").file_name(), "");
    EXPECT_EQ(gh2::path_t("/a") / "../b", gh2::path_t("/b"));
    EXPECT_EQ(gh2::path_t("/a") / "/b", gh2::path_t("/b"));
    // A refused name must not turn into the folder it was meant for.
    EXPECT_TRUE((gh2::path_t("/a") / "*").is_empty());
    EXPECT_TRUE((gh2::path_t() / "a").is_empty());
}

TEST(Path, NormalisesText)
{
    const struct
    {
        const char* text;
        const char* normalised;
    } cases[] = {{"/a//b/", "/a/b"},
                 {"/a/./b/../c", "/a/c"},
                 {"/..", "/"},
                 {"//", "/"},
                 {"a/..", "."},
                 {"../a", "../a"},
                 {"../../a/..", "../.."},
                 {"./a", "a"},
                 {"/a\xFF/b", "/a\xFF/b"},
                 {"", ""},
                 {"/tmp/*.txt", ""},
                 {"...", "..."},
                 {" /a", " /a"}};
    for (const auto& c : cases)
        EXPECT_EQ(gh2::path_t(c.text).as_string(), c.normalised) << c.text;
    EXPECT_TRUE(gh2::path_t(std::string("a\0b", 3)).is_empty());
    EXPECT_TRUE(gh2::path_t(static_cast<const char*>(nullptr)).is_empty());
}

TEST(Path, AsksTheDisk)
{
    const test_tools::temp_dir_t dir;
    test_tools::write_text(dir / "file", "x");
    EXPECT_TRUE((dir / "file").is_file());
    EXPECT_FALSE((dir / "file").is_directory());
    EXPECT_TRUE(dir.path().is_directory());
    EXPECT_FALSE((dir / "none").exists());
    EXPECT_FALSE((dir / "file" / "below").exists());
    EXPECT_FALSE((dir / std::string(5000, 'x').c_str()).exists());
    EXPECT_FALSE(gh2::path_t().exists());
}

TEST(Environment, ReadsVariablesAndFolders)
{
    ::setenv("PLATFORM_TEST_EMPTY", "", 1);
    std::string value = "before";
    EXPECT_FALSE(gh2::get_environ_value("PLATFORM_TEST_UNSET", value));
    EXPECT_FALSE(gh2::get_environ_value("", value));
    EXPECT_FALSE(gh2::get_environ_value("PATH=", value));
    EXPECT_EQ(value, "before");
    EXPECT_TRUE(gh2::get_environ_value("PLATFORM_TEST_EMPTY", value));
    EXPECT_EQ(value, "");
    EXPECT_TRUE((gh2::stdpaths::get_executable_dir() / "platform_tests").is_file());
    EXPECT_TRUE(gh2::stdpaths::get_temp_dir().is_directory());
    EXPECT_TRUE(gh2::stdpaths::get_user_config_dir().is_absolute());
}

} // namespace
