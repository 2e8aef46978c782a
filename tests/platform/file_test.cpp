#include "gen_helpers2/file.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <vector>

namespace {

namespace gh2 = gen_helpers2;
using names_t = std::vector<std::string>;
using test_tools::read_text;
using test_tools::write_text;

unsigned mode_of(const gh2::path_t& file)
{
    struct stat status
    {
    };
    ::stat(file.as_string().c_str(), &status);
    return status.st_mode & 07777;
}

TEST(WriteWholeFile, NewFileHasUsualPermissions)
{
    const test_tools::temp_dir_t dir;
    const mode_t mask = ::umask(027);
    EXPECT_TRUE(gh2::write_whole_file(dir / "file", std::string("a\0b", 3)).succeeded());
    ::umask(mask);
    EXPECT_EQ(mode_of(dir / "file"), 0640U);
    std::string text;
    EXPECT_TRUE(gh2::read_whole_file(dir / "file", text).succeeded());
    EXPECT_EQ(text, std::string("a\0b", 3));
    EXPECT_EQ(dir.names(), names_t{"file"});
}

TEST(WriteWholeFile, KeepsPermissionsAndLinks)
{
    const test_tools::temp_dir_t dir;
    write_text(dir / "target", "old");
    ::chmod((dir / "target").as_string().c_str(), 0604);
    ASSERT_EQ(::symlink("target", (dir / "link").as_string().c_str()), 0);
    ASSERT_EQ(::symlink("missing", (dir / "dangling").as_string().c_str()), 0);
    EXPECT_TRUE(gh2::write_whole_file(dir / "link", "new").succeeded());
    EXPECT_TRUE(gh2::write_whole_file(dir / "dangling", "made").succeeded());
    EXPECT_EQ(read_text(dir / "target"), "new");
    EXPECT_EQ(mode_of(dir / "target"), 0604U);
    EXPECT_EQ(read_text(dir / "missing"), "made");
    EXPECT_EQ(dir.names(), (names_t{"dangling", "link", "missing", "target"}));
}

TEST(WriteWholeFile, FailureLeavesEverythingAsItWas)
{
    const test_tools::temp_dir_t dir;
    write_text(dir / "file", "old");
    write_text(dir / "protected", "old");
    ::chmod((dir / "protected").as_string().c_str(), 0444);
    ASSERT_EQ(::symlink("loop", (dir / "loop").as_string().c_str()), 0);
    {
        const test_tools::disk_limit_t full(1000);
        const auto result = gh2::write_whole_file(dir / "file", std::string(5000, 'x'));
        EXPECT_EQ(result.identifier(), "gh2::error::Io");
    }
    EXPECT_TRUE(gh2::write_whole_file(dir / "protected", "new").failed());
    EXPECT_TRUE(gh2::write_whole_file(dir / "loop", "new").failed());
    EXPECT_TRUE(gh2::write_whole_file(dir.path(), "new").failed());
    EXPECT_TRUE(gh2::write_whole_file(dir / "none" / "file", "new").failed());
    EXPECT_TRUE(gh2::write_whole_file("/dev/full", "new").failed());
    EXPECT_TRUE(gh2::write_whole_file(gh2::path_t(), "new").failed());
    EXPECT_EQ(read_text(dir / "file"), "old");
    EXPECT_EQ(read_text(dir / "protected"), "old");
    EXPECT_EQ(dir.names(), (names_t{"file", "loop", "protected"}));
}

TEST(WriteWholeFile, LongestNameIsPossible)
{
    const test_tools::temp_dir_t dir;
    const std::string name(255, 'n');
    EXPECT_TRUE(gh2::write_whole_file(dir / name.c_str(), "x").succeeded());
    EXPECT_EQ(dir.names(), names_t{name});
}

TEST(ReadWholeFile, RefusesWhatItCannotTake)
{
    const test_tools::temp_dir_t dir;
    write_text(dir / "file", "12345");
    ASSERT_EQ(::mkfifo((dir / "pipe").as_string().c_str(), 0600), 0);
    std::string text = "before";
    EXPECT_TRUE(gh2::read_whole_file(dir / "none", text).failed());
    EXPECT_TRUE(gh2::read_whole_file(dir.path(), text).failed());
    EXPECT_TRUE(gh2::read_whole_file(dir / "pipe", text).failed());
    EXPECT_TRUE(gh2::read_whole_file(dir / "file", text, 4).failed());
    // Says that its size is zero, and is larger than allowed nevertheless.
    EXPECT_TRUE(gh2::read_whole_file("/proc/self/status", text, 10).failed());
    EXPECT_EQ(text, "before");
    EXPECT_TRUE(gh2::read_whole_file(dir / "file", text, 5).succeeded());
    EXPECT_EQ(text, "12345");
}

} // namespace
