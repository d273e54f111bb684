#!/usr/bin/env python3
"""Libraries that somebody has planted beside the program, as in a download folder, are not loaded.

The planted ones are witnesses: they leave a file beside themselves when they are loaded. Every "is not loaded" here
has its counterpart, in which the same witness is.

On Windows the libraries that Talvenor imports are never looked for in its folder: those of KNOWN are mapped by name
from the system's folder, and comctl32 comes by the manifest. Wine knows no such list, but prefers its own libraries
to any others unless it is set not to; here it is, for those that are not of KNOWN. What Wine's libraries import
of each other is looked for in the program's folder whatever the program does, and so says nothing about it.
"""
import os
import shutil
import subprocess
from pathlib import Path

import packaged
import pe

EQUIPMENT = Path(os.environ["TALVENOR_EQUIPMENT"])
SYSTEM = Path(os.environ["WINEPREFIX"]) / "drive_c" / "windows" / "system32"

KNOWN = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "shell32.dll", "shlwapi.dll", "user32.dll"}
BY_MANIFEST = "comctl32.dll"

# Nobody but us has libraries of these names.
WITNESS = "witness.dll"
OTHER_WITNESS = "witness2.dll"

LIMIT_SECONDS = 120


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def run_wine(*command, prefer_planted=(), check=True):
    overrides = [os.environ.get("WINEDLLOVERRIDES", "")]
    overrides += [f"{name.removesuffix('.dll')}=n,b" for name in prefer_planted]
    result = subprocess.run(["wine", *(str(word) for word in command)], text=True, capture_output=True,
                            timeout=LIMIT_SECONDS, env={**os.environ, "WINEDLLOVERRIDES": ";".join(overrides)})
    if check and result.returncode:
        raise AssertionError(f"{command[0]} failed: {result.stderr}")
    return result.stdout.splitlines()


class Planted(packaged.PackageTest):
    def setUp(self):
        super().setUp()
        self.program = self.folder / "Talvenor.exe"
        shutil.copy(packaged.program_under_test, self.program)
        shutil.copy(EQUIPMENT / "stand_in_converter.exe", self.folder / "pdf2djvu.exe")

    def plant(self, *names, folder=None):
        for name in names:
            shutil.copy(EQUIPMENT / "witness.dll", (folder or self.folder) / name)

    def loaded(self, folder=None):
        return sorted(file.name.removesuffix(".loaded").lower() for file in (folder or self.folder).glob("*.loaded"))

    def replace(self, old, new):
        """In the copy of the program; text of the same length."""
        content = self.program.read_bytes()
        self.assertEqual(content.count(old), 1)
        self.assertEqual(len(old), len(new))
        self.program.write_bytes(content.replace(old, new))

    def run_program(self, *arguments, **options):
        """Starts it, opens its About box; returns the version there, and the libraries by name."""
        version, *paths = run_wine(EQUIPMENT / "library_lister.exe", windows_path(self.program), *arguments, **options)
        return version, {path.split("\\")[-1].lower(): path for path in paths}

    def without_search_order(self):
        """Changes the copy: it does not find the call that sets where libraries are looked for, as on old systems."""
        self.replace(b"SetDefaultDllDirectories", b"NetDefaultDllDirectories")


class EveryName(Planted):
    def setUp(self):
        super().setUp()
        imported = {name.lower() for name in pe.Program(self.program).imports()}
        self.assertEqual(imported - KNOWN, {BY_MANIFEST}, "Windows would look for these in the program's folder")
        self.plant(*imported, "version.dll")

    def test_none_is_loaded(self):
        version, _ = self.run_program(prefer_planted=[BY_MANIFEST])
        self.assertEqual(version, packaged.shipped("kAboutLine"))
        self.assertEqual(self.loaded(), [])

    def test_common_controls_would_be_without_the_manifest(self):
        self.replace(b"Microsoft.Windows.Common-Controls", b"Microsoft.Windows.Other--Controls")
        run_wine(EQUIPMENT / "library_lister.exe", windows_path(self.program), prefer_planted=[BY_MANIFEST],
                 check=False)
        self.assertEqual(self.loaded(), [BY_MANIFEST])


class LateLibrary:
    """One that Talvenor loads when it is first needed. Under Wine it may be loaded before by a library of the system
    that imports it. So its name is replaced, in a copy of the program, by one that nobody else loads."""

    NAME = None
    STAND_IN = None  # of the same length
    NEEDED_BY = []  # arguments of the lister
    VERSION = None  # as About shows it when the library is not found

    def setUp(self):
        super().setUp()
        self.replace(self.NAME.encode("utf-16-le"), self.STAND_IN.encode("utf-16-le"))

    def test_is_not_loaded_from_the_programs_folder(self):
        self.plant(self.STAND_IN)
        version, libraries = self.run_program(*self.NEEDED_BY)
        self.assertEqual(self.loaded(), [])
        self.assertNotIn(self.STAND_IN, libraries)
        self.assertEqual(version, self.VERSION)

    def test_nor_on_old_systems(self):
        self.without_search_order()
        self.plant(self.STAND_IN)
        version, _ = self.run_program(*self.NEEDED_BY)
        self.assertEqual(self.loaded(), [])
        self.assertEqual(version, self.VERSION)

    def test_is_loaded_from_the_systems_folder(self):
        for name in (self.STAND_IN, self.STAND_IN + ".loaded"):
            self.addCleanup((SYSTEM / name).unlink, missing_ok=True)
        self.plant(self.STAND_IN, folder=SYSTEM)
        self.run_program(*self.NEEDED_BY)
        self.assertEqual(self.loaded(SYSTEM), [self.STAND_IN])


class VersionLibrary(LateLibrary, Planted):
    NAME = "version.dll"
    STAND_IN = WITNESS
    VERSION = "Version 0.0 (64-bit)"


class OpenDialogLibrary(LateLibrary, Planted):
    """The witness has no open dialog: "Ajouter" does nothing."""

    NAME = "comdlg32.dll"
    STAND_IN = OTHER_WITNESS
    NEEDED_BY = ["--add"]
    VERSION = packaged.shipped("kAboutLine")


class BareName(Planted):
    """What any part of the program or of the system asks for while the program runs."""

    def setUp(self):
        super().setUp()
        self.plant(WITNESS)

    def test_finds_nothing_beside_the_program(self):
        _, libraries = self.run_program(WITNESS)
        self.assertEqual(self.loaded(), [])
        self.assertNotIn(WITNESS, libraries)

    def test_would_without_the_search_order_that_the_program_sets(self):
        self.without_search_order()
        _, libraries = self.run_program(WITNESS)
        self.assertEqual(self.loaded(), [WITNESS])
        self.assertEqual(libraries[WITNESS], windows_path(self.folder / WITNESS))


class OrdinaryProgram(Planted):
    """One that takes no care: the witness is found in both ways."""

    def setUp(self):
        super().setUp()
        self.program = self.folder / "unguarded.exe"
        shutil.copy(EQUIPMENT / "unguarded.exe", self.program)

    def test_loads_a_planted_version_library_with_its_imports(self):
        self.plant("version.dll")
        run_wine(self.program, prefer_planted=["version.dll"])
        self.assertEqual(self.loaded(), ["version.dll"])

    def test_loads_a_planted_library_by_its_bare_name(self):
        self.plant(WITNESS)
        run_wine(self.program, WITNESS)
        self.assertEqual(self.loaded(), [WITNESS])


if __name__ == "__main__":
    packaged.main()
