#include <commondlg3/error_warning_dialog.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using commondlg3::create_multi_line;
using lines_t = std::vector<std::string>;

TEST(LineBreaking, CutsAtTheLastSpaceOrLosesTheByteAtTheStartOfTheLine)
{
    EXPECT_EQ(lines_t(), create_multi_line(5, ""));
    EXPECT_EQ(lines_t({"abc"}), create_multi_line(10, "abc"));
    EXPECT_EQ(lines_t({"the quick", "brown fox"}), create_multi_line(10, "the quick brown fox"));
    EXPECT_EQ(lines_t({"", "bc", "def"}), create_multi_line(3, "abc def"));
    // A newline ends a line even within the limit, and gives empty lines where there are several.
    EXPECT_EQ(lines_t({"ab", "", "cd"}), create_multi_line(10, "ab\n\ncd\n"));
    // Spaces are counted but never cause a cut themselves.
    EXPECT_EQ(lines_t({"a     "}), create_multi_line(3, "a     "));
    // Bytes are counted: the cut loses one of a character's, and the line begins inside it.
    EXPECT_EQ(lines_t({"", "\x97\xa5\xe6\x9c\xac"}), create_multi_line(6, "日本"));
    // Limits that no word fits in.
    EXPECT_EQ(lines_t({"", "", "c"}), create_multi_line(1, "abc"));
    EXPECT_EQ(lines_t({"", "", ""}), create_multi_line(0, "abc"));
}

// Whatever the limit, joined lines hold the text's bytes in order; each line but the last lost exactly one.
TEST(LineBreaking, LosesNothingButOneByteALine)
{
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        std::string text(random() % 60, ' ');
        for (char& c : text)
            c = "ab \n\xe6"[random() % 5];
        const auto lines = create_multi_line(random() % 12, text);
        std::size_t at = 0;
        for (const std::string& line : lines) {
            ASSERT_EQ(line, text.substr(at, line.size()));
            at += line.size() + 1;
        }
        ASSERT_TRUE(at == text.size() || at == text.size() + 1) << at << " of " << text.size();
    }
}

} // namespace
