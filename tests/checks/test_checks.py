#!/usr/bin/env python3
"""The build checks: each is silent about a good tree and names the line of each fault put into it."""
import os
import subprocess
import sys
import tempfile
import unittest

SCRIPTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts")
sys.path.insert(0, SCRIPTS)
from catalog_format import FormatError, argument_names, shown_text  # noqa: E402

PO_HEADER = 'msgid ""\nmsgstr ""\n"Content-Type: text/plain; charset=UTF-8\\n"\n'
CATALOG_TREE = {
    "po/en.po": PO_HEADER + 'msgid "btn.ok"\nmsgstr "&OK"\n'
                'msgid "count"\nmsgstr "{n, plural, one {#} other {# {x}}}"\n',
    "po/de.po": PO_HEADER + 'msgid "btn.ok"\nmsgstr "&OK"\nmsgid "count"\nmsgstr ""\n"{x}: "\n"{n, number}"\n',
    "src/a.cpp": '// translate_message("old.key")\n'
                 'auto s = translate_message("count", {{"n", f(1, 2)}});\n'
                 'auto t = text_of(catalog, wide ? "count" : "btn.ok", {});\n'
                 'auto u = get_message("po", "gallery." + id);\n',
    "a.xrc": '<resource>\n<object class="wxPanel" name="p">\n<label>btn.ok</label>\n<label/>\n'
             '<content><item translate="0">Not a key</item></content>\n</object>\n</resource>\n',
    "src/list.cfg": "<string>btn.ok</string>\n<string>Plain 3.0 text.</string>\n",
}
RESOURCE_TREE = {
    "src/a.cpp": 'a_t::a_t() : base_t("x"), m_n{0} { set_resource_object(name); }\n'
                 'void a_t::on_init()\n'
                 '{\n'
                 '    m_ok = from_xrc<wxButton>(this, "m_ok");\n'
                 '    auto f = [this] { return from_xrc<ns::my_text_t>(this, "m_text"); };\n'
                 '    m_any = from_xrc<wxWindow>(this, "m_text");\n'
                 '    m_grid = from_xrc<my_grid_t>(this, "m_place");\n'
                 '}\n'
                 'constexpr char name[] = "dlg.a";\n',
    "src/b.h": 'class b_t : public base_t {\n  b_t() { set_resource_object("dlg.b"); }\n'
               '  void f() { from_xrc<wxControl>(this, "m_only_b"); }\n};\n',
    "src/c.cpp": 'void f(wxWindow* w)\n{\n    find<wxCheckBox>(w, "m_only_b");\n    XRCID("m_ok");\n}\n',
    "a.xrc": '<resource>\n<object class="wxDialog" name="dlg.a">\n<object class="wxBoxSizer" name="m_sizer">\n'
             '<object class="wxButton" name="m_ok"/>\n'
             '<object class="wxTextCtrl" subclass="ns::my_text_t" name="m_text"/>\n'
             '<object class="unknown" name="m_place"/>\n</object></object>\n'
             '<object class="wxPanel" name="dlg.b">'
             '<object class="wxCheckBox" name="m_only_b"/></object>\n</resource>\n',
    "src/image_loader.cpp": 'void l_t::create_image_names_map()\n{\n    m_names = {{type::up, "up"}};\n}\n'
                            'void l_t::create_animation_names_map()\n{\n'
                            '    m_animations = {{type::turn, "turn"}};\n}\n',
    "images.xrc": '<resource>\n<object class="wxBitmap" name="up" size="4,4">pictures/up.svg</object>\n'
                  '<object class="wxAnimation" name="turn" size="4,4" delay="80">\n<frame>pictures/t0.svg</frame>\n'
                  '<frame>pictures/t1.svg</frame>\n</object>\n</resource>\n',
    "pictures/up.svg": "<svg/>", "pictures/t0.svg": "<svg/>", "pictures/t1.svg": "<svg/>",
}
LAYER_TREE = {
    "platform/gen_helpers2/src/a.cpp": '#include "gen_helpers2/a.h"\n#include <boost/any.hpp>\n',
    "platform/cpil/src/a.cpp": "#include <gen_helpers2/a.h>\n#include <unicode/msgfmt.h>\n",
    "platform/cfgmgr2/src/a.cpp": "#include <cpil/a.h>\n#include <expat.h>\n",
    "platform/wx_helpers1/src/a.cpp": "#include <cfgmgr2/a.h>\n#include <gtk/gtk.h>\n#include <wx/wx.h>\n",
    "platform/msngr2/src/a.cpp": "#include <gen_helpers2/a.h>\n#include <string>\n",
    "platform/rdmgr2/src/a.cpp": "#include <cfgmgr2/a.h>\n#include <string>\n",
    "platform/cctrl2/src/a.cpp": "#include <rdmgr2/a.h>\n#include <string>\n",
    "platform/ff/src/a.cpp": "#include <cfgmgr2/a.h>\n#include <string>\n",
    "platform/vdxpropgrid2/src/a.cpp": "#include <wx_helpers1/a.h>\n#include <gtk/gtk.h>\n",
    "platform/vdx/src/a.cpp": "#include <wx_helpers1/a.h>\n#include <gtk/gtk.h>\n",
    "commondlg3/src/a.cpp": '#include "inner.h"\n#include "sub/b.h"\n#include <wx_helpers1/a.h>\n#include <wx/wx.h>\n'
                            "#include <string>\n#include <unistd.h>\n// #include <gallery/a.h>\n",
    "commondlg3/src/inner.h": "", "commondlg3/src/sub/b.h": '#include "inner.h"\n',
    "gallery/a.cpp": "#include <commondlg3/a.h>\n#include <nlohmann/json.hpp>\n#include <cpil/a.h>\n",
}


class CheckTest(unittest.TestCase):
    def run_check(self, files, script, *arguments):
        with tempfile.TemporaryDirectory() as folder:
            for path, text in files.items():
                path = os.path.join(folder, path)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text)
            result = subprocess.run([sys.executable, "-B", os.path.join(SCRIPTS, script), *arguments], cwd=folder,
                                    text=True, capture_output=True, check=False)
            return result.returncode, (result.stdout + result.stderr).splitlines()

    def faults(self, tree, cases):
        """cases: (file, what is replaced, by what, expected beginning of the only finding, words in it)"""
        self.assertEqual(self.run_check(tree, *self.command), (0, []), "the tree without a fault")
        for path, old, new, place, words in cases:
            with self.subTest(file=path, fault=new):
                text = tree.get(path, "")
                self.assertEqual(text.count(old), 1 if old else len(text) + 1, "the fault must hit one place")
                code, lines = self.run_check({**tree, path: text.replace(old, new) if old else new}, *self.command)
                self.assertEqual(code, 1, lines)
                self.assertEqual(len(lines), 1, lines)
                self.assertTrue(lines[0].startswith(place + ": "), lines)
                self.assertIn(words, lines[0])


class CatalogTest(CheckTest):
    command = "check_catalogs.py", "--catalogs", "po", "--sources", "src", "--xrc", "a.xrc"

    def test_faults(self):
        de_ok = 'msgid "btn.ok"\nmsgstr "&OK"\n'
        self.faults(CATALOG_TREE, [
            ("src/a.cpp", '"btn.ok"', '"btn.gone"', "src/a.cpp:3", '"btn.gone" has no text in de, en'),
            ("a.xrc", "<label>btn.ok<", "<label>btn.gone<", "a.xrc:3", "de, en"),
            ("a.xrc", "<label>btn.ok<", "<label>Press me<", "a.xrc:3", "not from the catalog"),
            ("a.xrc", ' translate="0"', "", "a.xrc:5", "not from the catalog"),
            ("src/list.cfg", "btn.ok", "btn.gone", "src/list.cfg:1", '"btn.gone" has no text in de, en'),
            ("po/de.po", de_ok, de_ok + 'msgid "more"\nmsgstr "mehr"\n', "po/de.po:6", "not in English"),
            ("po/en.po", de_ok, de_ok + 'msgid "more"\nmsgstr "more"\n', "po/en.po:6", '"more" is missing in de'),
            ("po/de.po", de_ok, de_ok + de_ok, "po/de.po:6", "twice"),
            ("po/de.po", '"&OK"', '""', "po/de.po:4", "no text in de"),
            ("po/de.po", de_ok, "#, fuzzy\n" + de_ok, "po/de.po:5", "fuzzy"),
            ("po/de.po", 'msgid "btn.ok"', "nonsense", "po/de.po:4", "neither"),
            ("po/de.po", "{x}: ", "{y}: ", "po/de.po:6", "['n', 'y'] in de, but ['n', 'x'] in English"),
            ("po/de.po", "{x}: ", "'{x}' {x: ", "po/de.po:6", "broken pattern"),
            ("po/en.po", "other", "few", "po/en.po:6", 'plural without "other"'),
        ])

    def test_another_catalog_may_hold_the_key(self):
        tree = {**CATALOG_TREE, "src/a.cpp": 'text_of("far.key", {});\n'}
        for language in ("en", "de"):
            tree[f"far/{language}.po"] = PO_HEADER + 'msgid "far.key"\nmsgstr "x"\n'
        self.assertEqual(self.run_check(tree, *self.command)[0], 1)
        self.assertEqual(self.run_check(tree, *self.command, "--also", "far"), (0, []))

    def test_further_functions(self):
        tree = {**CATALOG_TREE, "src/a.cpp": 'use(my_text("gone"), text("anything"));\n'}
        self.assertEqual(self.run_check(tree, *self.command), (0, []))
        self.assertEqual(self.run_check(tree, *self.command, "--functions", "my_text"),
                         (1, ['src/a.cpp:1: "gone" has no text in de, en']))

    def test_unused_keys(self):
        for source, result in [("", (1, ['po/en.po:6: nobody uses "count"'])),
                               ('f("btn." + id, "count")', (0, []))]:
            tree = {**CATALOG_TREE, "src/a.cpp": source}
            self.assertEqual(self.run_check(tree, *self.command, "--users", "src"), result)


class StyleTest(CheckTest):
    GLOSSARY = ("## de\n\n| English | word | never |\n|---|---|---|\n| folder | Ordner | Verzeichnis |\n"
                "| directory, directories | Verzeichnis | Ordner |\n"
                "\n## ja\n\n| English | word | never |\n|---|---|---|\n| folder | フォルダー | フォルダ |\n")
    TEXTS = {"en": "&Folder “{dir}”:", "de": "&Ordner „{dir}“:", "ja": "フォルダー「{dir}」の約2%（F3）(&D):",
             "ar": "&المجلد «\u2068{dir}\u2069» من \u2068Vorbex\u2069:"}

    def test_faults(self):
        """Each language's text, and what is wrong with it once a part of it is replaced."""
        for language, old, new, fault in [
            ("en", "“{dir}”", '"{dir}"', "typewriter"), ("en", "“{dir}”", "it's {dir}", "typewriter"),
            ("en", "Folder ", "Folder  ", "two blanks"), ("en", "Folder", "Folder...", "three points"),
            ("de", "Ordner", "Verzeichnis", '"Verzeichnis" is not used for "folder": Ordner'),
            ("de", "“", "”", "quotation marks"), ("de", "“", "", "pairs"), ("de", ":", "", "“:” at the end"),
            ("de", "Ordner", "2 % Ordner", "no-break"), ("de", "Ordner", "{n, number}% Ordner", "no-break"),
            ("ja", "フォルダー", "フォルダ", '"フォルダ" is not used'), ("ja", "の約2%", "の約 2%", "a blank beside"),
            ("ja", "約2%", "約{dir} 2%", "a blank beside"), ("ja", "（F3）", "(F3)", "half-width"),
            ("ar", "\u2068{dir}\u2069", "{dir}", "argument outside"), ("ar", "\u2068Vorbex\u2069", "Vorbex", "Latin"),
            ("ar", "من", "\u200eمن", "mark of direction"), ("ar", "Vorbex\u2069", "Vorbex", "not closed"),
            ("ar", "من", "من 3", "Latin"), ("ar", "«", "“", "quotation marks"),
        ]:
            with self.subTest(language=language, fault=new):
                self.assertEqual(self.said({}), (0, []), "the texts without a fault")
                text = self.TEXTS[language]
                self.assertEqual(text.count(old), 1, "the fault must hit one place")
                code, lines = self.said({language: text.replace(old, new)})
                self.assertEqual(code, 1, lines)
                self.assertTrue(all(line.startswith(f"po/{language}.po:4: ") for line in lines), lines)
                self.assertIn(fault, "\n".join(lines))

    def test_letters(self):
        """Each has one that English gives one, and no two of a menu have the same."""
        self.assertIn("behind &", self.said({"ja": self.TEXTS["ja"].replace("(&D)", "")})[1][0])
        entries = "".join(f'msgid "m.menu_{name}"\nmsgstr "{text}"\n' for name, text in [("a", "&Ab"), ("b", "C&b")])
        for text, count in ("C&b", 0), ("C&ab", 1), ("&lt; &copy", 0):
            lines = self.run_check({"po/en.po": PO_HEADER + entries.replace("C&b", text)}, "check_catalogs.py",
                                   "--catalogs", "po")[1]
            self.assertEqual(len(lines), count, lines)

    def test_a_word_is_right_where_the_english_has_both(self):
        both = {"en": "&A folder, not a directory:", "de": "&Ein Ordner, kein Verzeichnis:"}
        self.assertEqual(self.said({**both, "ja": "フォルダー(&A):", "ar": "&مجلد:"}), (0, []))

    def said(self, texts):
        tree = {f"po/{language}.po": f'{PO_HEADER}msgid "a"\nmsgstr "{self.quoted(text)}"\n'
                for language, text in {**self.TEXTS, **texts}.items()}
        code, lines = self.run_check({**tree, "glossary.md": self.GLOSSARY}, "check_catalogs.py", "--catalogs", "po",
                                     "--glossary", "glossary.md")
        return code, [line for line in lines if "has the arguments" not in line]

    @staticmethod
    def quoted(text):
        return text.replace('"', '\\"')


class LanguageTest(CheckTest):
    """A language is added by its file alone, which begins as what the template says."""
    PROJECT = ("cmake_minimum_required(VERSION 3.22)\nproject(catalogs NONE)\nset(CMAKE_INSTALL_DATADIR share)\n"
               "find_package(Python3 REQUIRED)\nfind_package(Gettext REQUIRED)\ninclude({resources})\n"
               "commondlg3_add_catalogs(all_catalogs INSTALL DOMAIN d SOURCE_DIR ${{CMAKE_SOURCE_DIR}})\n")

    def test_a_file_is_compiled_and_installed(self):
        resources = os.path.join(SCRIPTS, "..", "cmake", "Resources.cmake")
        with tempfile.TemporaryDirectory() as folder:
            def run(*command):
                subprocess.run(command, cwd=folder, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.STDOUT)

            def write(name, text):
                with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                    file.write(text)

            def languages():
                run("cmake", "--build", "b")
                run("cmake", "--install", "b", "--prefix", "installed")
                return sorted(os.listdir(os.path.join(folder, "installed/share/locale")))

            write("CMakeLists.txt", self.PROJECT.format(resources=resources))
            write("en.po", PO_HEADER + '#. A greeting.\nmsgid "a"\nmsgstr "Good \\"day\\""\n')
            run("cmake", "-G", "Ninja", "-S", ".", "-B", "b")
            self.assertEqual(languages(), ["en"])
            run("msginit", "--no-translator", "-l", "fr", "-i", "installed/share/commondlg3/d.pot", "-o", "fr.po")
            with open(os.path.join(folder, "fr.po"), encoding="utf-8") as file:
                begun = file.read()
            entry = '#. A greeting.\n#. English: Good "day"\nmsgid "a"\nmsgstr ""\n'
            self.assertIn(entry, begun)
            write("fr.po", begun.replace(entry, entry[:-3] + '"Bonjour"\n'))
            self.assertEqual(languages(), ["en", "fr"])
            os.unlink(os.path.join(folder, "fr.po"))
            run("cmake", "--build", "b")
            self.assertEqual(sorted(os.listdir(os.path.join(folder, "b/share/locale/fr/LC_MESSAGES"))), [])


class PatternTest(unittest.TestCase):
    def test_arguments(self):
        for pattern, names in [
            ("plain # text, it's and it''s", set()),
            ("{a}{ b }{c, number}{d, date, short}{e, number, ¤#,##0.00}", set("abcde")),
            ("{n, plural, offset:1 =0 {none} one {{who}} other {# {what, select, x {{deep}} other {}}}}",
             {"n", "who", "what", "deep"}),
            ("'{not}' {yes} '{'{also}'}'", {"yes", "also"}),
            ("{n, selectordinal, other {'#' it''s {m}}}", {"n", "m"}),
            ("{数, plural, other{#}}", {"数"}),
        ]:
            with self.subTest(pattern=pattern):
                self.assertEqual(argument_names(pattern), names)

    def test_what_is_shown(self):
        self.assertEqual(shown_text("a {x} {n, plural, one {# b} other {{n, number} '{q}' it''s}}."),
                         "a \ue000 \n# b\n\ue001 {q} it's\n.")

    def test_broken(self):
        for pattern in ["{", "}", "{a", "a}", "{}", "{1a}", "{a b}", "{a, nummer}", "{a, number", "'{never ends",
                        "{a, plural}", "{n, plural, one {x}}", "{n, plural, one {x} other {y}",
                        "{n, plural, many_ {x} other {y}}",
                        "{n, select, x {1} x {2} other {3}}", "{n, plural, other {'#}}"]:
            with self.subTest(pattern=pattern):
                self.assertRaises(FormatError, argument_names, pattern)


class ResourceTest(CheckTest):
    command = ("check_resources.py", "--sources", "src", "--xrc", "a.xrc", "--image-loader", "src/image_loader.cpp",
               "--images", "images.xrc")

    def test_layout_faults(self):
        self.faults(RESOURCE_TREE, [
            ("src/a.cpp", '"m_ok"', '"m_okay"', "src/a.cpp:4", '"m_okay" is not below "dlg.a"'),
            ("src/a.cpp", '"m_ok"', '"m_only_b"', "src/a.cpp:4", "not below"),
            ("src/a.cpp", "<wxButton>", "<wxStaticText>", "src/a.cpp:4", "is a wxButton, not a wxStaticText"),
            ("src/a.cpp", "<ns::my_text_t>", "<other_t>", "src/a.cpp:5", "not a other_t"),
            ("src/a.cpp", '<wxWindow>(this, "m_text")', '<wxWindow>(this, "m_sizer")', "src/a.cpp:6", "wxBoxSizer"),
            ("src/b.h", "dlg.b", "dlg.c", "src/b.h:2", 'no resource has an object "dlg.c"'),
            ("src/b.h", "<wxControl>", "<wxTextCtrl>", "src/b.h:3", "is a wxCheckBox"),
            ("src/c.cpp", '"m_only_b"', '"m_only"', "src/c.cpp:3", '"m_only" is not below any layout'),
            ("src/c.cpp", "wxCheckBox", "wxButton", "src/c.cpp:3", "is a wxCheckBox"),
            ("src/c.cpp", '"m_ok"', '"m_oh"', "src/c.cpp:4", '"m_oh" is not below any layout'),
            ("src/c.cpp", "XRCID(", "wxXmlResource::GetXRCID(", "src/c.cpp:4", "looked up by from_xrc"),
            ("a.xrc", 'name="m_place"/>', 'name="m_place"/>\n<object class="wxPanel" name="m_ok"/>', "a.xrc:7",
             "twice, first in line 4"),
            ("a.xrc", "</resource>", '<object class="wxPanel" name="dlg.b"/>\n</resource>', "a.xrc:9", "second"),
            ("a.xrc", "</object></object>\n<", "</object>\n<", "a.xrc:9", "mismatched"),
        ])

    def test_picture_faults(self):
        self.faults(RESOURCE_TREE, [
            ("src/image_loader.cpp", '"up"', '"upp"', "src/image_loader.cpp:3", 'no wxBitmap is called "upp"'),
            ("src/image_loader.cpp", '"turn"', '"up"', "src/image_loader.cpp:7", 'no wxAnimation is called "up"'),
            ("src/image_loader.cpp", "create_image_names_map", "make_map", "src/image_loader.cpp:1", "is missing"),
            ("pictures/spare.svg", "", "<svg/>", "pictures/spare.svg:1", "does not name"),
            ("images.xrc", "</resource>", '<object class="wxBitmap" name="no">pictures/no.svg</object>\n</resource>',
             "images.xrc:7", 'no file "pictures/no.svg"'),
            ("images.xrc", "<frame>pictures/t1.svg", "<frame>pictures/t0.svg", "pictures/t1.svg:1", "does not name"),
        ])


class LayerTest(CheckTest):
    command = "check_layers.py", "."

    def test_faults(self):
        gen, cpil, messenger = (f"platform/{name}/src/a.cpp" for name in ("gen_helpers2", "cpil", "msngr2"))
        self.faults(LAYER_TREE, [
            (gen, "boost/any.hpp", "cpil/a.h", f"./{gen}:2", "gen_helpers2 stands below cpil"),
            (cpil, "unicode/msgfmt.h", "cfgmgr2/a.h", f"./{cpil}:2", "cpil stands below cfgmgr2"),
            (messenger, "<string>", "<wx/window.h>", f"./{messenger}:2", "may not include wx/window.h"),
            ("platform/ff/src/a.cpp", "<string>", "<wx/window.h>", "./platform/ff/src/a.cpp:2", "may not include wx"),
            ("commondlg3/src/a.cpp", "<string>", "<gallery/a.h>", "./commondlg3/src/a.cpp:5", "stands below gallery"),
            ("commondlg3/src/a.cpp", "<string>", "<expat.h>", "./commondlg3/src/a.cpp:5", "may not include expat.h"),
            ("commondlg3/src/a.cpp", '"sub/b.h"', '"../a.h"', "./commondlg3/src/a.cpp:2", "leaves the folder"),
            ("gallery/a.cpp", "nlohmann/json.hpp", "boost/any.hpp", "./gallery/a.cpp:2", "may not include boost"),
        ])


class DocumentedTest(CheckTest):
    command = "check_documented.py", "w.txt"
    WARNED = [("~c_t()", "function", 4), ("f() override", "function", 5), ("get_x() const", "function", 6),
              ("set_y(int y)", "function", 7), ("m_z", "variable", 9), ("on_a(wxCommandEvent &event)", "function", 10)]
    TREE = {
        "a.h": "#pragma once\n/// A class.\nclass c_t\n~c_t();\nvoid f() override;\nint get_x() const;\nvoid set_y(int y);\n"
               "int get_y(); ///< The y.\nint m_z;\nvoid on_a(wxCommandEvent& event);\n",
        "w.txt": "".join(f"a.h:{line}: warning: Member {name} ({kind}) of class c_t is not documented.\n"
                         for name, kind, line in WARNED),
    }

    def test_faults(self):
        self.faults(self.TREE, [
            ("a.h", "f() override", "f()", "a.h:5", "Member f()"),
            ("w.txt", "get_x() const", "get_x(int) const", "a.h:6", "Member get_x(int)"),
            ("a.h", " ///< The y.", " // the y", "a.h:7", "Member set_y"),
            ("w.txt", "m_z (variable)", "m_z (enumeration)", "a.h:9", "Member m_z"),
            ("w.txt", "Member m_z (variable) of class c_t is", "Compound d_t is", "a.h:9", "Compound d_t"),
            ("w.txt", "on_a(wxCommandEvent &event)", "on_a()", "a.h:10", "Member on_a()"),
        ])


if __name__ == "__main__":
    unittest.main()
