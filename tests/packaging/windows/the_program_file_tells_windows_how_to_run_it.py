"""vantrel.exe opens no console, knows its scaling and long paths, shows its icon and version, and needs Windows alone.

    the_program_file_tells_windows_how_to_run_it.py PROGRAM LIBRARY OBJDUMP VERSION
"""

import pathlib
import re
import struct
import subprocess
import sys
import unittest
import xml.etree.ElementTree

PROGRAM, LIBRARY, OBJDUMP, VERSION = sys.argv[1:]

# What every Windows 10 has.
OF_WINDOWS = """advapi32 authz comdlg32 d3d11 d3d9 dwmapi dwrite dxgi gdi32 imm32 kernel32 msvcrt netapi32 ole32 oleaut32
    shcore shell32 shlwapi user32 userenv version winmm winspool ws2_32 wtsapi32""".split()
ICON, ICONS, VERSIONS, MANIFEST = 3, 14, 16, 24  # types of resources


def Headers(file):
    return subprocess.run([OBJDUMP, "-p", file], check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout


def Libraries(file):
    """Names of the libraries that Windows loads with the file, in small letters and without their ending."""
    names = {pathlib.PurePath(name).stem.lower() for name in re.findall(r"DLL Name: (\S+)", Headers(file))}
    return {name for name in names if not name.startswith("api-ms-win-core-")}


def Resources(file):
    """The resources of the file: the bytes of each, by type and name, of its first language."""
    data = pathlib.Path(file).read_bytes()
    start, = struct.unpack_from("<I", data, 0x3C)
    sections, options = struct.unpack_from("<H12xH", data, start + 6)
    for section in range(sections):
        name, _, address, _, at = struct.unpack_from("<8s4I", data, start + 24 + options + 40 * section)
        if name.startswith(b".rsrc"):
            break
    else:
        raise LookupError(f"{file} has no resources")

    def Entries(folder):
        named, numbered = struct.unpack_from("<2H", data, folder + 12)
        for entry in range(named + numbered):
            key, place = struct.unpack_from("<2I", data, folder + 16 + 8 * entry)
            yield key, at + (place & 0x7FFFFFFF)

    def Bytes(leaf):
        place, size = struct.unpack_from("<2I", data, leaf)
        return data[at + place - address:][:size]

    return {kind: {name: Bytes(next(Entries(languages))[1]) for name, languages in Entries(names)}
            for kind, names in Entries(at)}


class ProgramFile(unittest.TestCase):
    resources = Resources(PROGRAM)

    def test_opens_no_console(self):
        self.assertRegex(Headers(PROGRAM), r"Subsystem\s+00000002\s+\(Windows GUI\)")

    def test_needs_nothing_but_windows(self):
        for file in (PROGRAM, LIBRARY):
            self.assertIn("kernel32", Libraries(file))
            self.assertEqual(sorted(Libraries(file).difference(OF_WINDOWS)), [], file)

    def test_knows_the_scaling_of_each_screen_and_long_paths(self):
        (manifest,) = self.resources[MANIFEST].values()
        settings = {element.tag.split("}")[1]: element.text for element in xml.etree.ElementTree.fromstring(manifest).iter()}
        self.assertEqual(settings["dpiAwareness"], "PerMonitorV2")
        self.assertEqual(settings["dpiAware"], "true/pm")
        self.assertEqual(settings["longPathAware"], "true")

    def test_has_its_icon_in_the_sizes_that_windows_shows(self):
        (group,) = self.resources[ICONS].values()
        count, = struct.unpack_from("<4xH", group)
        icons = [struct.unpack_from("<2B10xH", group, 6 + 14 * icon) for icon in range(count)]
        self.assertLessEqual({16, 32, 48, 0}, {width for width, _, _ in icons})  # 0: 256 pixels
        for _, _, name in icons:
            self.assertGreater(len(self.resources[ICON][name]), 100)

    def test_tells_its_version(self):
        (versions,) = self.resources[VERSIONS].values()
        text = versions.decode("utf-16-le", "replace")
        for key, value in {"FileDescription": "VANTREL", "ProductName": "VANTREL", "FileVersion": VERSION,
                           "ProductVersion": VERSION}.items():
            self.assertRegex(text, rf"{key}\0+{re.escape(value)}\0")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
