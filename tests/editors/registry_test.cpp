#include "gen_helpers2/program.h"
#include "gen_helpers2/system_editor.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace gen_helpers2;

std::filesystem::path root;

void write(const std::filesystem::path& file, const std::string& text)
{
    std::filesystem::create_directories(file.parent_path());
    test_tools::write_text(path_t(file.native()), text);
}

std::string make_program(const std::string& name)
{
    const auto file = root / name;
    write(file, "#!/bin/sh\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    return file.native();
}

void make_entry(const std::string& id, const std::string& exec, const std::string& more = {},
                const std::string& type = "text/x-csrc")
{
    write(root / "data/applications" / id, "[Desktop Entry]\nType=Application\nName=Editor " + id +
                                               "\nExec=" + exec + "\nMimeType=" + type + ";\n" + more);
}

// The desktop's registry notices new entries after a while.
std::vector<system_editor_t> editors_of(const std::string& file, std::size_t expected, int type = 1)
{
    generic_iterator_t<system_editor_t> editors;
    for (int tries = 0; tries < 200; ++tries) {
        const unsigned status = get_system_editors(file, editors, type);
        EXPECT_EQ(editors.is_valid() ? 0U : 1U, status);
        if (editors.size() == expected)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return {editors.begin(), editors.end()};
}

class Registry : public testing::Test
{
protected:
    void SetUp() override { editors_of("x.c", 0); }
    void TearDown() override
    {
        for (const char* folder : {"data/applications", "config"})
            for (const auto& entry : std::filesystem::directory_iterator(root / folder))
                std::filesystem::remove_all(entry.path());
    }
};

TEST_F(Registry, EditorsHaveFullPathsAndNoFieldCodes)
{
    const std::string program = make_program("my ed");
    const std::string quoted = "\"" + program + "\"";
    const struct
    {
        std::string exec, executable, command_line;
    } cases[] = {{"true %F", find_program("true"), find_program("true")},
                 {quoted + "   --new  \"a b\" %U", program, program + "   --new  \"a b\""},
                 {quoted + " -c \"%f\" %i 100%% --class=%c", program, program + " -c   100% --class="}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.exec);
        make_entry("one.desktop", c.exec);
        std::vector<system_editor_t> found = editors_of("/nowhere/x.c", 1);
        ASSERT_EQ(1U, found.size());
        EXPECT_EQ(system_editor_t("one.desktop", "Editor one.desktop", c.executable, c.command_line),
                  found[0]);
        std::filesystem::remove(root / "data/applications/one.desktop");
        EXPECT_TRUE(editors_of("x.c", 0).empty());
    }
}

// A registry is written by many installers: one bad entry must neither show nor hide the others.
TEST_F(Registry, DamagedEntriesAreLeftOut)
{
    write(root / "data/applications/garbage.desktop", std::string("\0\xFF[[\n", 6));
    write(root / "data/applications/empty.desktop", "");
    make_entry("gone.desktop", "/nowhere/ed %F");
    make_entry("tried.desktop", "true", "TryExec=/nowhere/ed\n");
    make_entry("quotes.desktop", "true \"%F");
    make_entry("hidden.desktop", "true", "Hidden=true\n");
    make_entry("no_menu.desktop", "true", "NoDisplay=true\nTerminal=true\n");
    make_entry("other_type.desktop", "true", "", "image/png");
    make_entry("plain.desktop", "true", "", "text/plain");
    write(root / "config/mimeapps.list", "[Default Applications]\ntext/x-csrc=plain.desktop\n");
    const auto found = editors_of("x.c", 2);
    ASSERT_EQ(2U, found.size()) << "one for its kind, and one for every text";
    std::string default_editor;
    for (int tries = 0; tries < 200 && default_editor != "plain.desktop"; ++tries) {
        default_editor = editors_of("x.c", 1, 0).at(0).name;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ("plain.desktop", default_editor);
    EXPECT_TRUE(system_editor_needs_terminal("no_menu.desktop"));
    EXPECT_FALSE(system_editor_needs_terminal("plain.desktop"));
    EXPECT_FALSE(system_editor_needs_terminal("nobody.desktop"));
    EXPECT_FALSE(system_editor_needs_terminal(std::string("\xFF\0x", 3)));
    generic_iterator_t<system_editor_t> editors;
    EXPECT_EQ(system_editors_failed, get_system_editors("", editors, 1)) << "no path";
    EXPECT_EQ(system_editors_failed, get_system_editors("x.c", editors, 2)) << "no such question";
}

// An index is what desktops go by; without one the entries themselves are read.
TEST_F(Registry, TheIndexDecidesWhereThereIsOne)
{
    make_entry("b.desktop", "true");
    make_entry("a.desktop", "true", "", "text/plain");
    auto found = editors_of("x.c", 2);
    ASSERT_EQ(2U, found.size());
    EXPECT_EQ("b.desktop", found[0].name) << "what is made for the very kind comes first";
    EXPECT_EQ("b.desktop", editors_of("x.c", 1, 0).at(0).name);
    write(root / "data/applications/mimeinfo.cache", "[MIME Cache]\ntext/plain=a.desktop;gone.desktop;\n");
    found = editors_of("x.c", 1);
    ASSERT_EQ(1U, found.size());
    EXPECT_EQ("a.desktop", found[0].name);
    write(root / "notes_zzz", "some words\n");
    EXPECT_EQ(1U, editors_of(root / "notes_zzz", 1).size()) << "its name says nothing: it is looked into";
}

TEST(Programs, ThoseThatCannotStartSaySoAndNoneIsLeftBehind)
{
    EXPECT_TRUE(start_program({}, {}).failed());
    EXPECT_TRUE(start_program({"/nowhere/ed"}, {}).failed());
    write(root / "no_program", "x");
    EXPECT_TRUE(start_program({(root / "no_program").native()}, {}).failed());
    const std::string note = (root / "pid").native();
    ASSERT_TRUE(start_program({"/bin/sh", "-c", "echo $$ > \"$0\"", note}, {}).succeeded());
    pid_t pid = 0;
    for (int tries = 0; tries < 500 && (pid <= 0 || kill(pid, 0) == 0); ++tries) {
        std::ifstream(note) >> pid;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ASSERT_GT(pid, 0);
    EXPECT_NE(0, kill(pid, 0)) << "nobody runs an event loop here, and still it is reaped";
}

} // namespace

// The toolkit's library reads these folders once: they are set before it does.
int main(int argc, char** argv)
{
    const test_tools::temp_dir_t folder;
    root = folder.path().as_filesystem_path();
    std::filesystem::create_directories(root / "data/applications");
    std::filesystem::create_directories(root / "config");
    std::filesystem::create_directories(root / "system");
    std::filesystem::create_directory_symlink("/usr/share/mime", root / "system/mime");
    setenv("XDG_DATA_HOME", (root / "data").c_str(), 1);
    setenv("XDG_DATA_DIRS", (root / "system").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (root / "config").c_str(), 1);
    setenv("XDG_CONFIG_DIRS", (root / "system").c_str(), 1);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
