"""What the tests of the package share: the package made from the program under test, unpacked.

Every test file is run as `FILE Talvenor.exe [unittest arguments]`.
"""
import os
import re
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]
SCRIPT = REPOSITORY / "scripts" / "package"
TIME_OF_TEST = 1767225600  # 2026-01-01; the script asks for the last commit's time when it gets none

program_under_test = None


def project_version():
    text = (REPOSITORY / "CMakeLists.txt").read_text()
    return re.search(r"project\(Talvenor VERSION ([\d.]+)", text)[1]


def shipped(name):
    """A text that the tests expect of the program's version."""
    text = (REPOSITORY / "tests" / "equipment" / "shipped_version.h").read_text()
    return re.search(name + r'\[\] = L"(.*?)"', text)[1]


def make_package(folder, *options, program=None, environment=None, check=True):
    """Runs the script; its files land in the folder."""
    command = [SCRIPT, "--program", program or program_under_test, "--output", folder, *options]
    return subprocess.run(
        [str(word) for word in command], check=check, text=True, capture_output=True,
        env={**os.environ, "SOURCE_DATE_EPOCH": str(TIME_OF_TEST), **(environment or {})})


class PackageTest(unittest.TestCase):
    """Gives each test a folder of its own, `self.folder`, that goes with it."""

    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = Path(temporary.name)

    def package(self):
        """Makes the package; returns the path of the zip file."""
        make_package(self.folder / "dist")
        (package,) = (self.folder / "dist").glob("*.zip")
        return package

    def unpack(self, package):
        """Unpacks it; returns the folder."""
        target = self.folder / "unpacked"
        with zipfile.ZipFile(package) as archive:
            archive.extractall(target)
        return target


def main():
    global program_under_test
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    program_under_test = Path(sys.argv.pop(1)).resolve()
    # A test file imports this module under its own name.
    sys.modules["packaged"].program_under_test = program_under_test
    unittest.main(module="__main__", verbosity=2)
