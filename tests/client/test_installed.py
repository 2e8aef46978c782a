"""Installs the build, moves what was installed, and lets a product find, build and run against it: through CMake's
package and through pkg-config.

usage: test_installed.py CMAKE BUILD_FOLDER COMPILER LIBRARY_FOLDER
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

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
        self.check_output(run(os.path.join(build, "client"), LANGUAGE="en"),
                          os.path.join(self.prefix, "share", "commondlg3"))
        resolved = run("ldd", os.path.join(build, "client"))
        for name in ("commondlg3", "wx_helpers1", "cfgmgr2", "cpil", "gen_helpers2"):
            self.assertIn(f"lib{name}.so.3 => {self.prefix}/{LIBRARIES}/lib{name}.so.3", resolved)

    def test_pkg_config(self):
        # Flags of a folder with a space in its name cannot be told apart by everybody who reads them.
        prefix = os.path.join(self.folder, "plain")
        os.symlink(self.prefix, prefix)
        path = {"PKG_CONFIG_PATH": f"{prefix}/{LIBRARIES}/pkgconfig"}
        ask = lambda *what: run("pkg-config", *what, "commondlg3", **path).split()
        data, = ask("--variable=datadir")
        locale, = ask("--variable=localedir")
        client = os.path.join(self.folder, "pkg-config-client")
        run(COMPILER, "-std=c++17", f'-DDATA_DIR="{data}"', f'-DLOCALE_DIR="{locale}"',
            "-DWITHOUT_INTERFACE", *ask("--cflags"), f"{PROJECT}/client.cpp", "-o", client, *ask("--libs"))
        self.check_output(run(client, LANGUAGE="en", LD_LIBRARY_PATH=f"{prefix}/{LIBRARIES}"), data)

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
