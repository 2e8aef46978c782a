#include "tools.h"

#include <commondlg3/editor_data.h>
#include <gen_helpers2/stdpaths.h>

#include <algorithm>
#include <filesystem>
#include <string>

namespace {

using commondlg3::editor_data_t;
using commondlg3::language_info;

constexpr char real_editor[] = "geany.desktop"; // of a Debian package that the tests need

int count_of(const editor_data_t& data, const std::string& name)
{
    const auto editors = data.get_editors(language_info::cpp);
    return static_cast<int>(
        std::count_if(editors.begin(), editors.end(), [&](const auto& e) { return e.name == name; }));
}

std::string probe_file()
{
    return (gen_helpers2::stdpaths::get_temp_dir() / "vorbex_test.c").as_string();
}

TEST(EditorProbe, FindsTheRealEditorsAndTheEnvironmentsEachTime)
{
    const test::variable_guard_t visual("VISUAL", nullptr);
    const test::variable_guard_t editor("EDITOR", "/bin/old");
    editor_data_t data;
    ASSERT_TRUE(data.load_system_info(language_info::cpp));
    EXPECT_EQ(1, count_of(data, real_editor));
    EXPECT_EQ("/usr/bin/geany", data.get_editor(language_info::cpp, real_editor).executable);
    EXPECT_EQ(editor_data_t::editor_type_system, data.get_editor_type(language_info::cpp, real_editor));
    EXPECT_NE("", data.get_system_default_editor_name(language_info::cpp));
    EXPECT_EQ("/bin/old",
              data.get_editor(language_info::cpp, editor_data_t::env_var_editor_name).command_line);
    const auto before = data.get_editors(language_info::cpp).size();
    {
        const test::variable_guard_t now("VISUAL", "code --wait");
        EXPECT_TRUE(data.load_system_info(language_info::cpp));
        EXPECT_EQ("code --wait",
                  data.get_editor(language_info::cpp, editor_data_t::env_var_editor_name).executable);
    }
    EXPECT_EQ(before, data.get_editors(language_info::cpp).size()) << "no double";
    const test::variable_guard_t none("EDITOR", nullptr);
    EXPECT_TRUE(data.load_system_info());
    EXPECT_EQ("", data.get_editor(language_info::cpp, editor_data_t::env_var_editor_name).executable);
    EXPECT_EQ(1, count_of(data, editor_data_t::env_var_editor_name)) << "also when there is none";
    EXPECT_FALSE(data.load_system_info("x.cs")) << "nothing to ask with";
}

TEST(EditorProbe, ACustomEditorKeepsItsName)
{
    editor_data_t data;
    data.add_editor(language_info::cpp, {real_editor, "Mine", "/bin/mine", "/bin/mine"});
    EXPECT_TRUE(data.load_system_info("/nowhere/x.h"));
    EXPECT_EQ("/bin/mine", data.get_editor(language_info::cpp, real_editor).executable);
    EXPECT_EQ(editor_data_t::editor_type_custom, data.get_editor_type(language_info::cpp, real_editor));
}

// The temporary folder is everybody's: what was there before is not ours to remove, be it a link to nowhere.
TEST(EditorProbe, RemovesItsFileAndNobodyElses)
{
    namespace fs = std::filesystem;
    fs::remove(probe_file());
    editor_data_t data;
    EXPECT_TRUE(data.load_system_info(language_info::cpp));
    EXPECT_FALSE(fs::exists(fs::symlink_status(probe_file())));
    test::make_file(probe_file(), "precious");
    EXPECT_TRUE(data.load_system_info(language_info::cpp));
    EXPECT_EQ("precious", test::read_file(probe_file()));
    fs::remove(probe_file());
    fs::create_symlink("nowhere", probe_file());
    EXPECT_TRUE(data.load_system_info(language_info::cpp));
    EXPECT_TRUE(fs::is_symlink(probe_file()));
    EXPECT_FALSE(fs::exists(fs::path(probe_file()).parent_path() / "nowhere")) << "nor is the link followed";
    fs::remove(probe_file());
}

} // namespace
