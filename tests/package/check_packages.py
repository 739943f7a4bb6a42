"""What the Debian packages hold, and that it works from where it is. CTest says by the environment where things are."""

import gzip
import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

PACKAGES = pathlib.Path(os.environ["PACKAGES"])
UNPACKED = pathlib.Path(os.environ["UNPACKED"])
PREFIX = pathlib.Path(os.environ["PREFIX"])
BUILT = pathlib.Path(os.environ["BUILT"])
SOURCE = pathlib.Path(os.environ["SOURCE"])
BUILD = os.environ["BUILD"]
LIBDIR = os.environ["LIBDIR"]
INTERFACE = os.environ["INTERFACE"]
VERSION = os.environ["VERSION"]

STATION, DEVELOPMENT, LIBRARIES = "interactive-station", "libkovan-dev", f"libkovan{INTERFACE}"
FRAMEWORKS = ["KovanLogging", "KovanLuaSequencer", "KovanPlatform", "KovanUIExtension"]
DOCUMENTS = f"usr/share/doc/{STATION}"
EXAMPLES = f"usr/share/{STATION}/examples"


def run(*command, folder=None, **more):
    """Runs a command with nothing of this environment but what finds programs and Qt's platform."""
    clean = {"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen",
             "HOME": str(folder or PACKAGES), **more}
    return subprocess.run([str(part) for part in command], cwd=folder, env=clean, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, timeout=120)


def package(name):
    found = list(PACKAGES.glob(f"{name}_{VERSION}-*.deb"))
    assert len(found) == 1, f"{name}: {found}"
    return found[0]


def content(name):
    """Files and links of a package; folders are not counted."""
    listed = subprocess.run(["dpkg-deb", "--fsys-tarfile", package(name)], check=True, capture_output=True).stdout
    names = subprocess.run(["tar", "-tf", "-"], input=listed, check=True, capture_output=True).stdout.decode()
    return {line.removeprefix("./") for line in names.splitlines() if not line.endswith("/")}


def field(name, which):
    return run("dpkg-deb", "-f", package(name), which).stdout.strip()


def dynamic(path):
    return run("readelf", "-d", path).stdout


class Packages(unittest.TestCase):
    maxDiff = None

    def succeeds(self, done):
        self.assertEqual(done.returncode, 0, done.stdout)
        return done.stdout

    def about(self, name):
        doc = f"usr/share/doc/{name}"
        return {f"{doc}/copyright", f"{doc}/changelog.gz", f"{doc}/changelog.Debian.gz",
                f"usr/share/lintian/overrides/{name}"}

    def test_each_has_its_files_and_no_other(self):
        libraries = {f"usr/{LIBDIR}/lib{name}.so.{end}" for name in FRAMEWORKS for end in (INTERFACE, VERSION)}
        self.assertEqual(content(LIBRARIES), self.about(LIBRARIES) | libraries)

        headers = {path for path in content(DEVELOPMENT) if path.startswith("usr/include/interactive-station/")}
        cmake = {f"usr/{LIBDIR}/cmake/Kovan/Kovan{name}.cmake"
                 for name in ("Config", "ConfigVersion", "Targets", "Targets-release")}
        links = {f"usr/{LIBDIR}/lib{name}.so" for name in FRAMEWORKS}
        self.assertEqual(content(DEVELOPMENT) - headers, self.about(DEVELOPMENT) | cmake | links)
        of_the_sequencer = "usr/include/interactive-station/kovan/KovanLuaSequencer/"
        self.assertIn(of_the_sequencer + "KVKLuaSequence.h", headers)
        self.assertNotIn(of_the_sequencer + "KVKLuaBindings.h", headers, "only the library itself includes it")

        guides = {path for path in content(STATION) if path.startswith((f"{DOCUMENTS}/docs/", f"{EXAMPLES}/"))}
        self.assertLess({f"{DOCUMENTS}/docs/station.md", f"{EXAMPLES}/demo/1-position/station.toml"}, guides)
        self.assertEqual(content(STATION) - guides, self.about(STATION) | {
            "usr/bin/station", "usr/bin/interactive-station", "usr/share/man/man1/station.1.gz",
            "usr/share/man/man1/interactive-station.1.gz", f"usr/{LIBDIR}/{STATION}/libInteractiveView.so",
            f"usr/share/applications/{STATION}.desktop", f"usr/share/icons/hicolor/scalable/apps/{STATION}.svg",
            f"{DOCUMENTS}/examples"})
        examples = {str(path.relative_to(SOURCE)) for path in SOURCE.glob("examples/**/*") if path.is_file()}
        self.assertEqual({path.removeprefix(f"usr/share/{STATION}/") for path in guides if path.startswith(EXAMPLES)},
                         examples)

    def test_no_file_names_the_build_folder(self):
        places = [str(SOURCE).encode(), BUILD.encode()]
        for path in UNPACKED.rglob("*"):
            if path.is_file() and not path.is_symlink():
                for place in places:
                    self.assertNotIn(place, path.read_bytes(), path)

    def test_the_changelog_is_of_this_version(self):
        for name in (STATION, DEVELOPMENT, LIBRARIES):
            with gzip.open(UNPACKED / f"usr/share/doc/{name}/changelog.Debian.gz", "rt") as changelog:
                self.assertTrue(changelog.readline().startswith(f"interactive-station ({field(name, 'Version')}) "))

    def test_the_libraries_promise_their_interface(self):
        for name in FRAMEWORKS:
            link = UNPACKED / f"usr/{LIBDIR}/lib{name}.so"
            self.assertTrue(link.is_symlink() and link.exists(), link)
            told = dynamic(link)
            self.assertIn(f"Library soname: [lib{name}.so.{INTERFACE}]", told)
            self.assertIn("Library runpath: [$ORIGIN]", told)
            shlibs = self.succeeds(run("dpkg-deb", "-I", package(LIBRARIES), "shlibs"))
            self.assertIn(f"lib{name} {INTERFACE} {LIBRARIES} (>= {VERSION})\n", shlibs)

    def test_dependencies_were_looked_up(self):
        for name in (STATION, LIBRARIES):
            for wanted in ("libqt6widgets6 (>=", "liblua5.4-0 (>=", "libc6 (>="):
                self.assertIn(wanted, field(name, "Depends"))
        # Nothing that is linked names the drivers; without them no result gets into a database.
        depends = field(STATION, "Depends").split(", ")
        self.assertLessEqual({"libqt6sql6-sqlite", "libqt6sql6-psql"}, set(depends))
        # What brings Qt's plug-ins for sound, for SVG, for X11 and for no display.
        for wanted in ("libqt6multimedia6", "libqt6svg6", "libqt6gui6"):
            self.assertIn(wanted, [name.partition(" ")[0] for name in depends])
        version = field(LIBRARIES, "Version")
        for name in (STATION, DEVELOPMENT):
            self.assertIn(f"{LIBRARIES} (= {version})", field(name, "Depends"))
        self.assertNotIn(LIBRARIES, field(LIBRARIES, "Depends"))

    def test_find_package_takes_this_minor_version_alone(self):
        major, minor, patch = (int(part) for part in VERSION.split("."))
        version_file = PREFIX / LIBDIR / "cmake/Kovan/KovanConfigVersion.cmake"
        for wanted, fits in ((f"{major}.{minor}", True), (f"{major}.{minor}.{patch}", True),
                             (f"{major}.{minor + 1}", False), (f"{major + 1}.0", False)):
            parts = (wanted + ".0").split(".")
            told = self.succeeds(run(
                "cmake", "-D", f"PACKAGE_FIND_VERSION={wanted}", "-D", f"PACKAGE_FIND_VERSION_MAJOR={parts[0]}",
                "-D", f"PACKAGE_FIND_VERSION_MINOR={parts[1]}", "-P", self.script(version_file)))
            self.assertEqual("fits" in told, fits, wanted)

    def script(self, version_file):
        """What find_package() does with a version file."""
        path = tempfile.NamedTemporaryFile("w", suffix=".cmake", delete=False)
        self.addCleanup(os.unlink, path.name)
        with path:
            path.write(f'include("{version_file}")\nif(PACKAGE_VERSION_COMPATIBLE)\n  message("fits")\nendif()\n')
        return path.name

    def test_lintian_finds_no_error_and_no_warning(self):
        done = run("lintian", "--allow-root", "--fail-on", "error,warning", *sorted(PACKAGES.glob("*.deb")))
        self.succeeds(done)

    def test_the_man_page_renders_and_has_every_option(self):
        page = UNPACKED / "usr/share/man/man1/station.1.gz"
        done = run("man", "--warnings", "-l", page, MANWIDTH="100", MANPAGER="cat", LC_ALL="C.UTF-8")
        self.assertNotIn("warning", done.stdout)
        text = self.succeeds(done)
        done = run("mandoc", "-T", "lint", "-W", "warning", page)
        self.assertEqual((done.returncode, done.stdout), (0, ""))
        help_text = self.succeeds(run(UNPACKED / "usr/bin/station", "--help"))
        options = re.findall(r"^  (-.*?)(?:  |$)", help_text, re.MULTILINE)
        self.assertGreater(len(options), 5)
        for option in options:
            # As the page writes it: the value without its brackets.
            self.assertIn(f"       {option.replace('<', '').replace('>', '')}", text)
        for name in ("station", "interactive-station"):
            self.assertIn(name, text)

    def test_the_man_page_names_the_commands_that_there_are(self):
        page = UNPACKED / "usr/share/man/man1/station.1.gz"
        text = self.succeeds(run("man", "-l", page, MANWIDTH="100", MANPAGER="cat", LC_ALL="C.UTF-8"))
        commands = re.findall(r"^ {7}station ([a-z]+) .*(?:FILE|DIR)", text[: text.index("DESCRIPTION")], re.MULTILINE)
        self.assertEqual(commands, ["check", "new", "report"])
        for command in commands:
            told = self.succeeds(run(UNPACKED / "usr/bin/station", command, "--help"))
            self.assertIn(f"Usage: station {command} ", told)

    def test_the_desktop_entry_is_valid_and_starts_what_is_installed(self):
        entry = UNPACKED / f"usr/share/applications/{STATION}.desktop"
        self.assertEqual(self.succeeds(run("desktop-file-validate", "--warn-kde", entry)), "")
        values = dict(line.split("=", 1) for line in entry.read_text().splitlines() if "=" in line)
        program, option, configuration = values["Exec"].split()
        self.assertTrue((UNPACKED / "usr/bin" / program).is_file())
        self.assertEqual(option, "--config")
        self.assertTrue((UNPACKED / configuration.lstrip("/")).is_file(), configuration)
        icon = UNPACKED / f"usr/share/icons/hicolor/scalable/apps/{values['Icon']}.svg"
        self.assertEqual(xml.etree.ElementTree.parse(icon).getroot().tag, "{http://www.w3.org/2000/svg}svg")

    def test_links_of_the_installed_pages_lead_somewhere(self):
        pages = [*(UNPACKED / DOCUMENTS / "docs").rglob("*.md"), *(UNPACKED / EXAMPLES).rglob("*.md")]
        self.assertGreater(len(pages), 4)
        for page in pages:
            for link in re.findall(r"\]\(([^)#\s]+)(?:#[^)]*)?\)", page.read_text()):
                self.assertTrue("://" in link or (page.parent / link).exists(), f"{page}: {link}")

    def test_the_demonstration_runs_from_the_unpacked_files(self):
        station = UNPACKED / "usr/bin/station"
        used = dynamic(station) + dynamic(UNPACKED / f"usr/{LIBDIR}/{STATION}/libInteractiveView.so")
        self.assertEqual(set(re.findall(r"runpath: \[(.*)\]", used)), {f"$ORIGIN/../{LIBDIR}", "$ORIGIN/.."})
        found = re.findall(r"libKovan\S+ => (\S+)", self.succeeds(run("ldd", station)))
        self.assertEqual({pathlib.Path(path).resolve() for path in found},
                         {(UNPACKED / f"usr/{LIBDIR}/lib{name}.so").resolve() for name in FRAMEWORKS})
        with tempfile.TemporaryDirectory() as folder:
            # Where the operator puts pictures.
            pictures = pathlib.Path(folder, "build/demo")
            pictures.mkdir(parents=True)
            for act in ("1-position", "2-group", "3-loop"):
                act_folder = UNPACKED / EXAMPLES / "demo" / act
                told = self.succeeds(run(station, "--headless", "--config", act_folder / "station.toml",
                                         "--operator", act_folder / "operator.lua", folder=folder))
                self.assertIn(": passed\n", told)
            self.assertEqual(sorted(path.name for path in pictures.iterdir()),
                             ["group.png", "loop.png", "station.png"])

    def test_they_come_and_go_without_a_trace(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder, "root")
            for name in ("info", "updates", "triggers"):
                (root / "var/lib/dpkg" / name).mkdir(parents=True)
            (root / "var/lib/dpkg/status").touch()
            log = f"--log={folder}/log"
            dpkg = ["dpkg", f"--root={root}", log, "--force-depends", "--force-not-root", "--force-bad-path",
                    "--force-script-chrootless"]
            self.succeeds(run(*dpkg, "--install", *PACKAGES.glob("*.deb")))
            self.assertTrue((root / "usr/bin/station").is_file())
            self.assertEqual(len(re.findall(r"^ii ", run(*dpkg, "--list").stdout, re.MULTILINE)), 3)
            self.succeeds(run(*dpkg, "--purge", STATION, DEVELOPMENT, LIBRARIES))
            left = [path for path in root.rglob("*") if "var" not in path.relative_to(root).parts]
            self.assertEqual(left, [])

    def test_the_small_host_runs_the_small_plugin(self):
        done = run(BUILT / "host/host", BUILT / "plugin/libLamps.so",
                   PREFIX / f"share/{STATION}/examples/plugin/lamp.lua")
        told = [line for line in self.succeeds(done).splitlines() if not line.startswith("QStandardPaths")]
        self.assertEqual(told, ["lamp -> 1", "lamp -> there is no lamp of the colour 'mauve'", "passed"])

    def test_the_small_host_refuses_what_does_not_fit(self):
        newer = pathlib.Path(BUILD, "tests/end_to_end/plugins/libNewerInterface.so")
        done = run(BUILT / "host/host", newer, "none.lua")
        self.assertEqual(done.returncode, 2)
        self.assertRegex(done.stdout, r"offers the interface '\S+/1\.9999', this host needs \S+/1\.0\n")

    def test_the_example_of_the_small_plugin_is_clean(self):
        # What it calls is known from the plug-in alone.
        example = PREFIX / f"share/{STATION}/examples/plugin"
        files = [example / "station.toml", example / "operator.lua"]
        station = PREFIX / "bin/station"
        self.assertEqual(self.succeeds(run(station, "check", *files, "--plugin", BUILT / "plugin")), "")
        done = run(station, "check", *files, "--plugin", PREFIX / LIBDIR / STATION / "libInteractiveView.so")
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stdout, r"sequence.lua:\d+:\d+: 'lamp' is not defined")

    def test_the_station_runs_the_small_plugin_beside_its_own(self):
        example = PREFIX / f"share/{STATION}/examples/plugin"
        told = self.succeeds(run(PREFIX / "bin/station", "--headless", "--config", example / "station.toml",
                                 "--plugin", BUILT / "plugin", "--operator", example / "operator.lua"))
        for line in ("system 0: lamp -> 1\n", "system 1: lamp -> 2\n", "system 0: passed\n", "system 1: passed\n"):
            self.assertIn(line, told)


if __name__ == "__main__":
    # CTest names a test without the word that Python wants in front of it.
    import sys
    sys.argv[1:] = [argument.replace("Packages.", "Packages.test_") for argument in sys.argv[1:]]
    unittest.main()
