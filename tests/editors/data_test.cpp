#include "tools.h"

#include <cfgmgr2/property_storage.h>
#include <commondlg3/editor_data.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using commondlg3::editor_data_t;
using commondlg3::language_info;
using gen_helpers2::error_code_t;
using gen_helpers2::system_editor_t;
using gen_helpers2::variant_bag_t;
using names_t = std::vector<std::string>;

constexpr auto cpp = language_info::cpp;
constexpr auto csharp = language_info::csharp;
constexpr auto fortran = language_info::fortran;
constexpr auto other = language_info::other;

system_editor_t custom(const std::string& name, const std::string& path = "/bin/ed")
{
    return {name, name, path, path};
}

names_t names_of(const editor_data_t& data, language_info::language_t language = cpp)
{
    names_t names;
    for (const auto& editor : data.get_editors(language)) {
        names.push_back(editor.name);
        EXPECT_EQ(editor, data.get_editor(language, editor.name)) << "listed and kept are the same";
    }
    return names;
}

void add_stored(variant_bag_t& language, const std::string& name)
{
    variant_bag_t& editor = language.add_child("editor");
    editor.put("name", name);
    editor.put("display_name", name + " shown");
    editor.put("executable", "/bin/" + name);
    editor.put("command_line", "/bin/" + name + " -x");
    editor.put("is_system", false);
}

TEST(Languages, FilesBelongToThemByTheirExtensions)
{
    const struct
    {
        const char* file;
        language_info::language_t language;
    } cases[] = {{"main.cpp", cpp},    {"/a/b.d/x.c++", cpp}, {"x.h++", cpp},        {"x.C", cpp},
                 {"x.mii", cpp},       {"x.F90", fortran},    {"x.fd", fortran},     {"x.cs", csharp},
                 {"x.ccc", cpp},       {"x.c+", other},       {"x.Cpp", other},      {"x.cp|p", other},
                 {"x.hhh", cpp},       {"x.c++c", other},     {"x.fff", other},      {"x.chc", other},
                 {"x.txt", other},     {"Makefile", other},   {"/a.c/x", other},     {".c", other},
                 {"x.", other},        {"", other},           {"..", other},         {"x.c/", cpp},
                 {"y/x.c/.", cpp},     {"x.f/y/..", fortran}, {"\xFF.f08", fortran}, {"x.\xFF", other},
                 {"a\nb.tar.cc", cpp}, {"x*.c", other},       {"/x.c/..", other},    {"x.*", other}};
    for (int i = 0; i < 2; ++i) // the second answer may be one that was kept
        for (const auto& c : cases)
            EXPECT_EQ(c.language, language_info::get_language(c.file)) << c.file;
    EXPECT_EQ(other, language_info::get_language(std::string("x.c\0", 4)));
}

// Whatever is done, what is listed and what is kept must not part.
TEST(EditorData, ListsAndRecordsAgreeAfterEveryOperation)
{
    editor_data_t data;
    EXPECT_TRUE(data.add_editor(cpp, custom("a")));
    EXPECT_TRUE(data.add_editor(cpp, custom("b")));
    EXPECT_TRUE(data.add_editor(fortran, custom("a", "/bin/f")));
    editor_data_t::editor_t system(custom("s"));
    system.is_system = true;
    EXPECT_TRUE(data.add_editor_ex(cpp, system));
    EXPECT_FALSE(data.add_editor(cpp, custom("a", "/bin/second")));
    EXPECT_EQ(1U, test::take_assertions().size());
    EXPECT_EQ((names_t{"a", "b", "s"}), names_of(data));

    EXPECT_TRUE(data.set_editor(cpp, "s", {"s", "S", "/bin/s", "/bin/s -n"}));
    EXPECT_EQ(editor_data_t::editor_type_system, data.get_editor_type(cpp, "s")) << "its origin stays";
    EXPECT_EQ("/bin/s -n", data.get_editor(cpp, "s").command_line);
    EXPECT_FALSE(data.set_editor(cpp, "s", custom("t")));

    const editor_data_t copy = data;
    EXPECT_TRUE(data.remove_editor(cpp, "a"));
    EXPECT_EQ((names_t{"b", "s"}), names_of(data));
    EXPECT_TRUE(data.remove_editors_ex(cpp, false));
    EXPECT_EQ(names_t{"s"}, names_of(data));
    EXPECT_TRUE(data.set_editors(cpp, editor_data_t::editors_t({custom("x"), custom("y"), custom("x")})));
    EXPECT_EQ(names_t{"false"}, test::take_assertions());
    EXPECT_EQ((names_t{"x", "y"}), names_of(data));
    EXPECT_EQ(names_t{"a"}, names_of(data, fortran)) << "the other languages keep theirs";
    EXPECT_EQ((names_t{"a", "b", "s"}), names_of(copy));
    EXPECT_NE(copy, data);
}

TEST(EditorData, WhatIsNotThereIsToldByItsConditionAndChangesNothing)
{
    const std::string condition =
        "(it_tmp = m_langs_to_edt_names.find(language)) != m_langs_to_edt_names.end() && "
        "std::find(it_tmp->second.begin(), it_tmp->second.end(), editor_name) != it_tmp->second.end()";
    editor_data_t data;
    data.add_editor(cpp, custom("a"));
    const editor_data_t before = data;
    EXPECT_FALSE(data.remove_editor(cpp, "b"));
    EXPECT_FALSE(data.set_editor(fortran, "a", custom("a")));
    EXPECT_EQ(editor_data_t::editor_t(), data.get_editor_ex(other, "a"));
    EXPECT_EQ((names_t{condition, condition, condition}), test::take_assertions());
    for (const auto unsupported : {csharp, static_cast<language_info::language_t>(4)}) {
        EXPECT_FALSE(data.add_editor(unsupported, custom("a")));
        EXPECT_FALSE(data.set_editors(unsupported, {}));
        EXPECT_FALSE(data.set_selected_language(unsupported));
        EXPECT_EQ(editor_data_t::editor_t(), data.get_editor_ex(unsupported, "a"));
        EXPECT_FALSE(data.get_editors(unsupported).is_valid());
    }
    EXPECT_EQ(before, data);
}

// Each program saves the editors that it knew when it started, and its own.
TEST(EditorData, EditorsThatTwoProgramsAddAreBothKept)
{
    const test::temp_dir_t dir;
    const auto open = [&] {
        error_code_t result;
        return cfgmgr2::open_property_storage(dir.path() + "/p.xml", result);
    };
    const auto kept = [&] {
        editor_data_t data;
        data.load_storage_info(open());
        return data;
    };
    struct program_t
    {
        gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage> storage;
        editor_data_t editors;
        void save()
        {
            EXPECT_TRUE(editors.save_storage_info(storage));
            EXPECT_TRUE(storage->save().succeeded());
        }
    };
    program_t first{open(), {}};
    first.editors.add_editor(cpp, custom("old"));
    first.save();
    program_t one{open(), kept()}, two{open(), kept()};
    one.editors.load_storage_info(one.storage);
    two.editors.load_storage_info(two.storage);
    one.editors.add_editor(cpp, custom("of one"));
    one.editors.set_default_editor_name(cpp, "of one");
    one.save();
    two.editors.add_editor(cpp, custom("of two"));
    two.editors.set_selected_editor_name(cpp, "of two");
    for (int i = 0; i < 2; ++i) // the second time it has seen the other's, but does not have it
        two.save();
    EXPECT_EQ((names_t{"old", "of two", "of one"}), names_of(kept()));
    EXPECT_EQ("of one", kept().get_default_editor_name(cpp));
    EXPECT_EQ("of two", kept().get_selected_editor_name(cpp));
    one.editors.remove_editor(cpp, "old");
    one.save();
    EXPECT_EQ((names_t{"of one", "of two"}), names_of(kept())) << "what is removed goes";
}

// The file is written by hand: no name in it comes from the code that reads it.
TEST(EditorData, WhatAFileHoldsIsAddedToWhatIsHereAlready)
{
    const test::variable_guard_t visual("VISUAL", "");
    const test::variable_guard_t editor("EDITOR", "/bin/now -e");
    const std::string variable = "vorbex_env_var_editor_name";
    const auto stored = [](const std::string& name) {
        return "<child name=\"editor\"><string name=\"name\">" + name +
               "</string><string name=\"display_name\">Ed</string><string name=\"executable\">/bin/ed"
               "</string><string name=\"command_line\">/bin/ed -s</string>"
               "<bool name=\"is_system\">true</bool></child>";
    };
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/p.xml",
                    "<bag version=\"1\"><child name=\"external_editor\"><child name=\"language\">"
                    "<string name=\"language_name\">C/C++</string>" +
                        stored("known") + stored("new") + stored(variable) +
                        "<string name=\"selected_editor\">kept</string>"
                        "<string name=\"default_editor\">new</string>"
                        "<string name=\"system_default_editor\">known</string></child>"
                        "<string name=\"selected_language\">Fortran</string></child></bag>");
    error_code_t result;
    editor_data_t data;
    data.add_editor(cpp, custom("known", "/bin/found"));
    data.set_selected_editor_name(cpp, "mine");
    EXPECT_TRUE(data.load_storage_info(cfgmgr2::open_property_storage(dir.path() + "/p.xml", result)));
    EXPECT_EQ((names_t{"known", "new", variable}), names_of(data));
    EXPECT_EQ("/bin/found", data.get_editor(cpp, "known").executable);
    EXPECT_EQ((system_editor_t{"new", "Ed", "/bin/ed", "/bin/ed -s"}), data.get_editor(cpp, "new"));
    EXPECT_EQ(editor_data_t::editor_type_system, data.get_editor_type(cpp, "new"));
    EXPECT_EQ("/bin/now -e", data.get_editor(cpp, variable).executable);
    EXPECT_EQ(editor_data_t::editor_type_env_var, data.get_editor_type(cpp, variable));
    EXPECT_EQ("mine", data.get_selected_editor_name(cpp));
    EXPECT_EQ("new", data.get_default_editor_name(cpp));
    EXPECT_EQ("known", data.get_system_default_editor_name(cpp));
    EXPECT_EQ(fortran, data.get_selected_language());
}

TEST(EditorData, DamagedPartsAreLeftOutAndTheRestIsLoaded)
{
    variant_bag_t bag;
    bag.put("language", "a value where a child should be");
    bag.add_child("language").put("language_name", 5);
    variant_bag_t& csharp_bag = bag.add_child("language");
    csharp_bag.put("language_name", language_info::get_localized_name(csharp));
    add_stored(csharp_bag, "none");
    variant_bag_t& stored = bag.add_child("language");
    stored.put("language_name", language_info::get_localized_name(cpp));
    for (const char* missing : {"name", "display_name", "executable", "command_line", "is_system"}) {
        add_stored(stored, std::string("without ") + missing);
        const_cast<variant_bag_t*>(std::prev(stored.end())->child())->remove(missing);
        add_stored(stored, std::string("wrong ") + missing);
        const_cast<variant_bag_t*>(std::prev(stored.end())->child())->remove(missing);
        const_cast<variant_bag_t*>(std::prev(stored.end())->child())->add_child(missing);
    }
    add_stored(stored, "");
    add_stored(stored, "twice");
    add_stored(stored, "twice");
    std::prev(stored.end())->child()->put("executable", "/bin/second");
    add_stored(stored, editor_data_t::env_var_editor_name);
    std::prev(stored.end())->child()->remove("executable");
    std::prev(stored.end())->child()->remove("command_line");
    stored.add_child("selected_editor");
    bag.put("selected_language", true);

    editor_data_t data;
    data.load(bag);
    EXPECT_EQ(names_t{"false"}, test::take_assertions()) << "the language without a name";
    EXPECT_EQ((names_t{"twice", editor_data_t::env_var_editor_name}), names_of(data));
    EXPECT_EQ("/bin/twice", data.get_editor(cpp, "twice").executable);
    EXPECT_EQ("", data.get_selected_editor_name(cpp));
    EXPECT_EQ(cpp, data.get_selected_language());
}

} // namespace
