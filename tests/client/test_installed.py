"""Installs the build, moves what was installed, and lets products find, build and run against it: through CMake's
package and through pkg-config; the example is used by keys. Installed programs run from there, on the display that is there.

usage: test_installed.py CMAKE BUILD_FOLDER COMPILER LIBRARY_FOLDER
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "gallery"))
from driver import Gallery  # noqa: E402

CMAKE, BUILD, COMPILER, LIBRARIES = sys.argv[1:5]
PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "project")
# What a compiler emits in every library that uses a template or an inline function, wherever that was declared.
WEAK = set("WVu")
# Marks that the linker puts into every library.
LINKER = {"__bss_start", "_edata", "_end"}
OURS = re.compile(r"^(?:(?:non-)?virtual thunk to |vtable for |VTT for |typeinfo (?:name )?for |guard variable for )?"
                  r"(?:.* )?commondlg3::")


def run(*command, **variables):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env={**os.environ, "LC_ALL": "C.UTF-8", **variables})
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(command)}\n{done.stdout}")
    return done.stdout


def page_of_documents():
    """The page that the documents show, as a source file."""
    with open(os.path.join(PROJECT, "..", "..", "..", "docs", "preferences.md"), encoding="utf-8") as file:
        return re.search(r"```cpp page\n(.*?)```", file.read(), re.DOTALL)[1]


class InstalledTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="commondlg3-client-")
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        first = os.path.join(cls.folder, "first")
        run(CMAKE, "--install", BUILD, "--prefix", first)
        # A path that was baked in at installation leads nowhere after this.
        cls.prefix = os.path.join(cls.folder, "moved there")
        os.rename(first, cls.prefix)

    def test_library_alone(self):
        """A product with a platform of its own builds the library against that: here, against ours."""
        build = os.path.join(self.folder, "alone")
        run(CMAKE, "-G", "Ninja", "-S", os.path.dirname(os.path.dirname(os.path.dirname(PROJECT))), "-B", build,
            f"-DCOMMONDLG3_PLATFORM_DIR={self.prefix}/{LIBRARIES}/cmake/commondlg3_platform",
            f"-DCMAKE_CXX_COMPILER={COMPILER}")
        self.assertNotIn("gen_helpers2", run("ninja", "-C", build, "-t", "targets", "all"))
        run("ninja", "-C", build, "commondlg3/CMakeFiles/commondlg3.dir/src/paths/path_info.cpp.o", "commondlg3_archive")

    def check_output(self, output, data):
        text, resource = output.splitlines()
        self.assertEqual(text, "&OK")
        self.assertEqual(os.path.normpath(resource), f"{os.path.normpath(data)}/commondlg3.dat#zip:commondlg.xrc")
        self.assertTrue(os.path.isfile(resource.split("#")[0]), resource)

    def test_cmake_package(self):
        build = os.path.join(self.folder, "cmake-client")
        page = os.path.join(self.folder, "page.cpp")
        with open(page, "w", encoding="utf-8") as file:
            self.assertLess(file.write(page_of_documents()), 40 * 110)
        run(CMAKE, "-G", "Ninja", "-S", PROJECT, "-B", build, f"-DPAGE={page}", f"-DCMAKE_PREFIX_PATH={self.prefix}",
            f"-DCMAKE_CXX_COMPILER={COMPILER}")
        run(CMAKE, "--build", build)
        for program in "client", "messages":
            self.check_output(run(os.path.join(build, program), LANGUAGE="en"),
                              os.path.join(self.prefix, "share", "commondlg3"))
        resolved = run("ldd", os.path.join(build, "client"))
        for name in ("commondlg3", "wx_helpers1", "cfgmgr2", "cpil", "gen_helpers2"):
            self.assertIn(f"lib{name}.so.3 => {self.prefix}/{LIBRARIES}/lib{name}.so.3", resolved)

    def test_pkg_config(self):
        """Everything, and messages alone: each header links with what its file names, in the order of the linker."""
        # Flags of a folder with a space in its name cannot be told apart by everybody who reads them.
        prefix = os.path.join(self.folder, "plain")
        os.symlink(self.prefix, prefix)
        path = {"PKG_CONFIG_PATH": f"{prefix}/{LIBRARIES}/pkgconfig"}
        for package, parts in ("commondlg3", ("messages", "log", "pages")), ("commondlg3-messages", ("messages",)):
            ask = lambda *what: run("pkg-config", *what, package, **path).split()
            data, = ask("--variable=datadir")
            locale, = ask("--variable=localedir")
            client = os.path.join(self.folder, package)
            sources = [f"{PROJECT}/{name}.cpp" for name in ("client", *(f"interface_{part}" for part in parts))]
            options = ["-DMESSAGES_ALONE"] if len(parts) == 1 else []
            run(COMPILER, "-std=c++17", f'-DDATA_DIR="{data}"', f'-DLOCALE_DIR="{locale}"', *options,
                *ask("--cflags"), *sources, "-o", client, "-Wl,--no-as-needed", *ask("--libs"))
            self.check_output(run(client, LANGUAGE="en", LD_LIBRARY_PATH=f"{prefix}/{LIBRARIES}"), data)

    def test_gallery_runs_where_it_was_installed(self):
        sources = os.path.join(self.prefix, "share", "commondlg3", "gallery", "src")
        editor = pathlib.Path(self.folder, "geany")  # which the desktop has registered
        editor.write_text("#!/bin/sh\n")
        editor.chmod(0o755)
        os.makedirs(self.folder + "/gallery")  # whatever others there are: it is the one that the user has chosen
        pathlib.Path(self.folder, "gallery", "mimeapps.list").write_text("[Default Applications]\ntext/x-csrc=geany.desktop\n")
        gallery = Gallery("--language", "de", binary=os.path.join(self.prefix, "bin", "commondlg3_gallery"),
                          environment={"XDG_CONFIG_HOME": self.folder + "/gallery", "PATH": self.folder + ":" + os.environ["PATH"]})
        gallery.expect("opened")
        gallery.wait_for_window("Nutzungsdaten")
        gallery.press_to_open("Escape")
        gallery.wait_until_at_rest()
        gallery.press("ctrl+u")
        shown = gallery.expect("signal")
        self.assertEqual("code_shown", shown["name"])
        self.assertTrue(os.path.samefile(sources + "/message_entries.cpp", shown["value"]))
        gallery.press("ctrl+q")
        self.assertEqual(0, gallery.end())

    def start(self, home):
        starter = Gallery(binary=os.path.join(self.folder, "starter", "starter"),
                          environment={"HOME": home, "XDG_CONFIG_HOME": self.folder + "/config"})
        starter.wait_for_focus()
        starter.wait_until_at_rest()
        return starter

    def end(self, starter):
        starter.press("alt+F4")
        # The loader of pictures of newer desktops misses its sandbox where root runs in a folder of its own.
        said = [line for line in starter.process.stderr.read().decode().splitlines() if line and "Glycin" not in line]
        self.assertEqual([], said)
        self.assertEqual(0, starter.end())

    def test_starter_is_built_and_used(self):
        build, home = os.path.join(self.folder, "starter"), os.path.join(self.folder, "home")
        os.makedirs(home)
        for name, size in (("/large", 2500000), ("/small", 10)):
            with open(home + name, "wb") as file:
                file.truncate(size)
        run(CMAKE, "-G", "Ninja", "-S", os.path.join(self.prefix, "share/doc/libcommondlg3-dev/examples/starter"),
            "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DCMAKE_CXX_COMPILER={COMPILER}",
            "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror")
        run(CMAKE, "--build", build)
        starter = self.start(home)
        for ending in ("alt+s", "alt+o"):  # saved when it asks, and by OK
            starter.press_to_open("alt+p")
            starter.wait_until_at_rest()
            starter.press("alt+f", "ctrl+a")
            starter.type("1" if ending == "alt+s" else "2")
            if ending == "alt+s":
                starter.press_to_open("Escape")
                starter.wait_until_at_rest()
            starter.press_to_open(ending)
            starter.wait_until_at_rest()
        starter.press_to_open("alt+s")
        starter.wait_until_at_rest()
        starter.press("shift+Tab", "space")
        starter.press_to_open("Return")
        starter.wait_until_at_rest()
        starter.press("shift+Tab", "shift+Tab", "ctrl+a", "ctrl+c")
        starter.wait_until_at_rest()
        copied = run("xclip", "-selection", "clipboard", "-o")
        self.assertIn(f"2 MB  {home}/large\n", copied + "\n")
        self.end(starter)

        starter = self.start("/usr")
        starter.press("alt+s")  # is not asked any more
        for _ in range(2000):
            names = [file.read_text() for file in pathlib.Path(f"/proc/{starter.process.pid}/task").glob("*/comm")]
            if names.count("starter\n") > 1:  # a thread has its program's name
                break
        else:
            self.fail("nobody searches")
        self.end(starter)

        starter = self.start(home)
        starter.press_to_open("alt+p")
        starter.wait_until_at_rest()
        starter.press("Down")
        starter.wait_until_at_rest()
        starter.press("Tab", "Delete")  # of the list of silenced messages
        starter.press_to_open("alt+o")
        starter.wait_until_at_rest()
        starter.press_to_open("alt+s")
        starter.wait_until_at_rest()
        starter.press_to_open("Escape")
        self.end(starter)

    def test_library_shows_only_what_is_its_own(self):
        library = os.path.join(self.prefix, LIBRARIES, "libcommondlg3.so")
        self.assertRegex(run("readelf", "-d", library), r"SONAME.*\[libcommondlg3\.so\.3\]")
        symbols = [line.split(" ", 2)[1:] for line in run("nm", "-DC", "--defined-only", library).splitlines()]
        self.assertGreater(len(symbols), 100)
        self.assertIn("commondlg3::show_modal(commondlg3::message_window_t const&, wxWindow*)",
                      [name for _, name in symbols])
        foreign = [name for kind, name in symbols
                   if kind not in WEAK and name not in LINKER and not OURS.match(name)]
        self.assertEqual(foreign, [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
