# SPDX-License-Identifier: MIT
"""The lists that each platform keeps of its own: what CMake asks for, what scripts/lib.sh installs and what vcpkg.json
fetches are the same libraries, the presets set what there is to be set, and versions agree. Platforms have sources of
their own, and no conditions elsewhere."""
import json
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]

# A build's parts: its folders, the array of scripts/lib.sh and the feature of vcpkg.json.
PARTS = {
    None: (("genapi", "gentl", "backend", "simulator", "console"), "build"),
    "fleet": (("fleet",), "fleet"),
    "gui": (("app",), "gui"),
    "tests": (("tests", "tests/*"), "test"),
}
# What CMake asks for: the names of Debian and of vcpkg.
LIBRARIES = {
    "CLI11": ({"libcli11-dev"}, {"cli11"}),
    "GTest": ({"libgtest-dev", "libgmock-dev"}, {"gtest"}),
    "PkgConfig": ({"pkg-config"}, {"pkgconf"}),
    "Python3": ({"python3"}, set()),  # Visual Studio's users have it, or leave out what needs it
    "Qt5": ({"qtbase5-dev"}, {"qt5-base"}),
    "aravis-0.8": ({"libaravis-dev", "libusb-1.0-0-dev"}, set()),  # the tests do without it
    "libutf8proc": ({"libutf8proc-dev"}, {"utf8proc"}),
    "libzip": ({"libzip-dev"}, {"libzip"}),
    "pugixml": ({"libpugixml-dev"}, {"pugixml"}),
    "tomlplusplus": ({"libtomlplusplus-dev"}, {"tomlplusplus"}),
}
VCPKG = json.loads((ROOT / "vcpkg.json").read_text())
PRESETS = {preset["name"]: preset
           for preset in json.loads((ROOT / "CMakePresets.json").read_text())["configurePresets"]}


def asked_for(folders):
    text = "".join(path.read_text() for folder in folders for path in sorted(ROOT.glob(f"{folder}/CMakeLists.txt")))
    return set(re.findall(r"find_package\((\w+)", text)) | set(
        re.findall(r"pkg_check_modules\(\w+ [A-Z_ ]*([\w.-]+)\)", text))


def debian(array):
    text = (ROOT / "scripts" / "lib.sh").read_text()
    return set(re.search(rf"^torvane_{array}_packages=\((.*?)\)", text, re.M | re.S)[1].split())


def vcpkg(feature):
    return set((VCPKG["features"][feature] if feature else VCPKG)["dependencies"])


def options():
    """The cache variables of the project, each with its default."""
    files = [ROOT / "CMakeLists.txt", *ROOT.glob("packaging/*/*.cmake"), *ROOT.glob("cmake/*.cmake")]
    text = "".join(path.read_text() for path in files)
    return dict(re.findall(r'option\((TORVANE_\w+) "[^"]*" (ON|OFF)\)', text)) | dict(
        re.findall(r"set\((TORVANE_\w+) (\S+(?: [^)]*?)?) CACHE", text))


def settings(name):
    preset = PRESETS[name]
    inherited = settings(preset["inherits"]) if "inherits" in preset else {}
    return inherited | preset.get("cacheVariables", {})


class Libraries(unittest.TestCase):
    def test_each_platform_gets_what_cmake_asks_for(self):
        base = asked_for(PARTS[None][0])
        for feature, (folders, array) in PARTS.items():
            wanted = asked_for(folders) if feature is None else asked_for(folders) - base
            with self.subTest(feature=feature):
                self.assertLessEqual(wanted, set(LIBRARIES), "not named in this test")
                if feature == "tests":  # the window and torvane bring Qt to their tests
                    wanted -= {"Qt5"}
                names = [LIBRARIES[name] for name in wanted]
                self.assertEqual(set().union(*(ports for _, ports in names)), vcpkg(feature), "vcpkg.json")
                in_debian = set().union(*(packages for packages, _ in names))
                installed = debian(array)
                self.assertLessEqual(in_debian, installed, "scripts/lib.sh lacks some")
                self.assertEqual({name for name in installed - in_debian if name.endswith("-dev")}, set(),
                                 "scripts/lib.sh has what CMake doesn't ask for")


class Presets(unittest.TestCase):
    def test_they_set_options_that_there_are(self):
        for name in PRESETS:
            used = {key for key in settings(name) if key.startswith("TORVANE_")}
            self.assertLessEqual(used, set(options()), name)

    def test_visual_studio_builds_what_the_release_does(self):
        def parts(name):
            values = options() | settings(name)
            return {key: value for key, value in values.items() if key.startswith("TORVANE_BUILD_")}

        self.assertEqual(parts("visual-studio"), parts("release"))

    def test_features_are_the_parts_that_are_built(self):
        values = options() | settings("visual-studio")
        built = {key.removeprefix("TORVANE_BUILD_").lower() for key, value in values.items()
                 if key.startswith("TORVANE_BUILD_") and value == "ON"}
        self.assertEqual(set(values["VCPKG_MANIFEST_FEATURES"].split(";")), built)
        self.assertEqual(set(VCPKG["features"]), set(PARTS) - {None})


class Versions(unittest.TestCase):
    def test_all_are_the_projects(self):
        version = re.search(r"VERSION (\d+\.\d+\.\d+)", (ROOT / "CMakeLists.txt").read_text())[1]
        self.assertEqual(VCPKG["version-string"], version + ".0")
        self.assertIn(f"\nversion: {version}\n", (ROOT / "packaging/ansible/galaxy.yml").read_text())
        metainfo = (ROOT / "packaging/desktop/alt.torvane.torvane_gui.metainfo.xml.in").read_text()
        self.assertEqual(re.search(r'<release version="([^"]*)"', metainfo)[1], version + ".0")


class Platforms(unittest.TestCase):
    def test_no_condition_asks_for_one_outside_its_sources(self):
        asks = re.compile(
            r"^[ \t]*#[ \t]*(?:el)?if.*\b(?:_?_?WIN(?:32|64|NT)|_MSC_VER|__MINGW\w*|__CYGWIN__|"
            r"_?_?(?:linux|unix)(?:__)?|__APPLE__|__\w*BSD__|Q_OS_\w+|Q_CC_\w+|__(?:x86_64|i386|aarch64|arm)__)\b", re.M)
        sources = [path for path in ROOT.rglob("*") if path.suffix in (".cpp", ".h", ".in")
                   and "build" not in path.relative_to(ROOT).parts and not path.stem.endswith(("Posix", "Windows"))]
        self.assertGreater(len(sources), 300)
        for path in sources:
            found = asks.search(path.read_text())
            self.assertIsNone(found, f"{path.relative_to(ROOT)}: {found and found[0]}")


if __name__ == "__main__":
    unittest.main()
