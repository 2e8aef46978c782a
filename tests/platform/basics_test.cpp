#include "cpil/strings.h"
#include "cpil/ustring.h"
#include "gen_helpers2/error_code.h"
#include "gen_helpers2/intrusive_pointer.h"
#include "gen_helpers2/path.h"
#include "gen_helpers2/strings.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
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

TEST(IntrusivePointerThreads, LastReferenceDeletesOnce)
{
    int living = 0;
    gh2::sptr_t<foreign::i_thing> thing(new thing_t(living));
    EXPECT_EQ(thing->answer(), 42);
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

TEST(Assertion, ReportsAndGoesOnWhateverTheHandlerDoes)
{
    const int* pointer = nullptr;
    EXPECT_TRUE(GH2_ASSERT(1 + 1 == 2, "unit"));
    EXPECT_FALSE(GH2_ASSERT(pointer, "caption"));
    EXPECT_FALSE(GH2_ASSERT_TEXT(pointer != nullptr, "no pointer", "caption"));
    const auto before =
        gh2::set_assertion_handler([](const gh2::assertion_t&) { throw std::runtime_error("handler"); });
    EXPECT_FALSE(GH2_ASSERT(false, "unit"));
    gh2::set_assertion_handler(before);
    const auto seen = test_tools::take_assertions();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].condition, "pointer");
    EXPECT_EQ(seen[0].unit, "caption");
    EXPECT_GT(seen[0].line, 0);
    EXPECT_EQ(seen[1].condition, "no pointer");
}

TEST(AssertionThreads, HandlerChangesWhileOthersAssert)
{
    std::thread asserting([] {
        for (int i = 0; i < 100; ++i)
            GH2_ASSERT(false, "thread");
    });
    for (int i = 0; i < 100; ++i)
        gh2::set_assertion_handler(gh2::set_assertion_handler({}));
    asserting.join();
    EXPECT_LE(test_tools::take_assertions().size(), 100U);
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

TEST(Escaping, LeavesNothingThatALineCouldEndAtAndRefusesWhatIsCut)
{
    EXPECT_EQ(gh2::escape_bytes("\r\n\t").find_first_of("\r\n\t"), std::string::npos);
    std::string back = "untouched";
    for (const char* wrong : {"\\", "\\x", "\\x4", "\\y41", "a\\xG0"})
        EXPECT_FALSE(gh2::unescape_bytes(wrong, back)) << wrong;
    EXPECT_EQ(back, "untouched");
    EXPECT_EQ(gh2::trim(" \t a b\r\n"), "a b");
    EXPECT_EQ(gh2::trim(" \n"), "");
}

TEST(UpperCase, FollowsUnicodeAndKeepsBadBytes)
{
    const std::pair<std::string, std::string> whole[] = {
        {u8"straße ασ \U00010428\xFF\xC3", u8"STRASSE ΑΣ \U00010400\xFF\xC3"}, {"", ""}};
    for (const auto& [text, upper] : whole)
        EXPECT_EQ(cpil2::strings::to_upper(text), upper);
    const std::pair<std::string, std::string> first[] = {{u8"äbc DE", u8"Äbc DE"},
                                                         {u8"Ǧ", u8"Ǧ"},
                                                         {u8"ǆx", u8"ǅx"},
                                                         {u8"e\u0301t", u8"E\u0301t"},
                                                         {"\xFF z", "\xFF z"}};
    for (const auto& [text, upper] : first)
        EXPECT_EQ(cpil2::strings::first_to_upper(text), upper);
}

TEST(Path, TakesApartAndPutsTogether)
{
    EXPECT_EQ(gh2::path_t("/a/b").parent(), gh2::path_t("/a"));
    EXPECT_EQ(gh2::path_t("/a").parent(), gh2::path_t("/"));
    EXPECT_TRUE(gh2::path_t("/").parent().is_empty());
    EXPECT_TRUE(gh2::path_t("a").parent().is_empty());
    EXPECT_EQ(gh2::path_t("..").parent(), gh2::path_t("../.."));
    EXPECT_EQ(gh2::path_t("/a") / "../b", gh2::path_t("/b"));
    EXPECT_EQ(gh2::path_t("/a") / "/b", gh2::path_t("/b"));
    // A refused name must not turn into the folder it was meant for.
    EXPECT_TRUE((gh2::path_t("/a") / "*").is_empty());
    EXPECT_TRUE((gh2::path_t() / "a").is_empty());
}

TEST(Path, NormalisesText)
{
    const std::pair<const char*, const char*> cases[] = {
        {"/a//b/", "/a/b"},      {"/a/./b/../c", "/a/c"},  {"/..", "/"}, {"a/..", "."},      {"../a", "../a"},
        {"../../a/..", "../.."}, {"/a\xFF/b", "/a\xFF/b"}, {"", ""},     {"/tmp/*.txt", ""}, {"...", "..."},
        {" /a", " /a"}};
    for (const auto& [text, normalised] : cases)
        EXPECT_EQ(gh2::path_t(text).as_string(), normalised) << text;
    EXPECT_TRUE(gh2::path_t(std::string("a\0b", 3)).is_empty());
    EXPECT_TRUE(gh2::path_t(static_cast<const char*>(nullptr)).is_empty());
}

} // namespace
