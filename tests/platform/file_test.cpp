#include "gen_helpers2/file.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
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

TEST(WriteWholeFile, NewFileIsItsOwnersAlone)
{
    const test_tools::temp_dir_t dir;
    const std::string longest(255, 'n');
    const gh2::path_t file = dir / longest.c_str();
    const mode_t mask = ::umask(0);
    EXPECT_TRUE(gh2::write_whole_file(file, std::string("a\0b", 3)).succeeded());
    ::umask(mask);
    EXPECT_EQ(mode_of(file), 0600U);
    std::string text;
    EXPECT_TRUE(gh2::read_whole_file(file, text).succeeded());
    EXPECT_EQ(text, std::string("a\0b", 3));
    EXPECT_EQ(dir.names(), names_t{longest});
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

TEST(WriteWholeFile, WhatCannotBeWrittenStaysAsItWas)
{
    const test_tools::temp_dir_t dir;
    write_text(dir / "protected", "old");
    ::chmod((dir / "protected").as_string().c_str(), 0444);
    ASSERT_EQ(::symlink("loop", (dir / "loop").as_string().c_str()), 0);
    EXPECT_TRUE(gh2::write_whole_file(dir / "protected", "new").failed());
    EXPECT_TRUE(gh2::write_whole_file(dir / "loop", "new").failed());
    if (::geteuid() == 0) { // who else can make a link of somebody else's
        ASSERT_EQ(::symlink("file", (dir / "theirs").as_string().c_str()), 0);
        ASSERT_EQ(::lchown((dir / "theirs").as_string().c_str(), 65534, 65534), 0);
        EXPECT_TRUE(gh2::write_whole_file(dir / "theirs", "new").failed());
        ::unlink((dir / "theirs").as_string().c_str());
    }
    EXPECT_TRUE(gh2::write_whole_file(dir.path(), "new").failed());
    EXPECT_TRUE(gh2::write_whole_file(dir / "none" / "file", "new").failed());
    EXPECT_TRUE(gh2::write_whole_file("/dev/full", "new").failed());
    EXPECT_EQ(read_text(dir / "protected"), "old");
    EXPECT_EQ(dir.names(), (names_t{"loop", "protected"}));
}

TEST(WriteWholeFile, WhatAnEarlierProgramLeftIsTakenAwayUnlessItIsInUse)
{
    const test_tools::temp_dir_t dir;
    const names_t names = {".unsaved-0123456789abcdef.tmp", ".unsaved-1123456789abcdef.tmp",
                           ".unsaved-2123456789abcdef.tmp", ".unsaved-mine.tmp"};
    for (const std::string& name : names) {
        write_text(dir / name.c_str(), "x");
        const timespec long_ago[2] = {{1000, 0}, {1000, 0}};
        ::utimensat(AT_FDCWD, (dir / name.c_str()).as_string().c_str(), long_ago, 0);
    }
    const int in_use = ::open((dir / names[1].c_str()).as_string().c_str(), O_RDONLY);
    ASSERT_EQ(::flock(in_use, LOCK_EX), 0);
    write_text(dir / names[2].c_str(), "just now");
    EXPECT_TRUE(gh2::write_whole_file(dir / "file", "new").succeeded());
    ::close(in_use);
    EXPECT_EQ(dir.names(), (names_t{names[1], names[2], names[3], "file"}));
}

TEST(ReadWholeFile, RefusesWhatItCannotTake)
{
    const test_tools::temp_dir_t dir;
    write_text(dir / "file", "12345");
    ASSERT_EQ(::mkfifo((dir / "pipe").as_string().c_str(), 0600), 0);
    std::string text = "before";
    EXPECT_TRUE(gh2::read_whole_file(dir / "none", text).failed());
    EXPECT_TRUE(gh2::read_whole_file(dir / "pipe", text).failed());
    EXPECT_TRUE(gh2::read_whole_file(dir / "file", text, 4).failed());
    // Says that its size is zero, and is larger than allowed nevertheless.
    EXPECT_TRUE(gh2::read_whole_file("/proc/self/status", text, 10).failed());
    EXPECT_EQ(text, "before");
    EXPECT_TRUE(gh2::read_whole_file(dir / "file", text, 5).succeeded());
    EXPECT_EQ(text, "12345");
}

} // namespace
