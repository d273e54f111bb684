#!/usr/bin/env python3
"""What is in the package, that it opens well on Windows, and that it is the same each time."""
import os
import re
import subprocess
import time
import unittest
import zipfile

import packaged


def version_of_project():
    text = (packaged.REPOSITORY / "CMakeLists.txt").read_text()
    return re.search(r"project\(Talvenor VERSION ([\d.]+)", text)[1]


class Files(packaged.PackageTest):
    def test_zip_and_checksum_are_named_after_the_version(self):
        package = self.package()
        name = f"Talvenor-{version_of_project()}-x64.zip"
        self.assertEqual(sorted(os.listdir(package.parent)), [name, name + ".sha256"])

    def test_zip_holds_program_guide_and_licence(self):
        with zipfile.ZipFile(self.package()) as archive:
            self.assertEqual(archive.namelist(), ["Talvenor.exe", "LISEZMOI.txt", "LICENSE.txt"])
            self.assertIsNone(archive.testzip())

    def test_program_is_the_one_that_was_built(self):
        program = self.unpack(self.package()) / "Talvenor.exe"
        self.assertEqual(program.read_bytes(), packaged.program_under_test.read_bytes())

    def test_checksum_file_can_be_checked(self):
        package = self.package()
        command = ["sha256sum", "-c", package.name + ".sha256"]
        subprocess.run(command, cwd=package.parent, check=True, capture_output=True)
        package.write_bytes(package.read_bytes()[:-1] + b"x")
        result = subprocess.run(command, cwd=package.parent, capture_output=True)
        self.assertNotEqual(result.returncode, 0, "a changed package passes")


class Texts(packaged.PackageTest):
    def assert_lines_end_as_on_windows(self, content):
        self.assertTrue(content.endswith(b"\r\n"))
        self.assertEqual(content.count(b"\n"), content.count(b"\r\n"))
        self.assertEqual(content.count(b"\r"), content.count(b"\r\n"))

    def test_guide_opens_well_in_every_notepad(self):
        content = (self.unpack(self.package()) / "LISEZMOI.txt").read_bytes()
        mark = b"\xef\xbb\xbf"
        self.assertTrue(content.startswith(mark + b"TALVENOR"))
        self.assertNotIn(mark, content[3:])
        self.assert_lines_end_as_on_windows(content)
        text = content[3:].decode("utf-8")
        self.assertLessEqual(max(map(len, text.split("\r\n"))), 76, "a line is too long for Notepad's window")
        self.assertNotIn("\t", text)

    def test_guide_is_of_this_version_and_french(self):
        text = (self.unpack(self.package()) / "LISEZMOI.txt").read_text("utf-8-sig")
        self.assertEqual(text.splitlines()[0], f"TALVENOR {version_of_project()}")
        self.assertNotIn("@", text)
        for word in ("Éteindre l'ordinateur", "métadonnées", "--no-hyperlinks", "TalvenorLog.txt", "F7"):
            self.assertIn(word, text)

    def test_guide_names_every_text_of_the_window_as_it_is(self):
        """What the guide puts between quotation marks stands in the window, word for word."""
        text = (self.unpack(self.package()) / "LISEZMOI.txt").read_text("utf-8-sig")
        resources = (packaged.REPOSITORY / "res" / "talvenor.rc").read_text("utf-8")
        shown = [re.sub(r"\s+", " ", quoted) for quoted in re.findall("« (.*?) »", text, re.S)]
        self.assertGreater(len(shown), 15)
        self.assertEqual([words for words in shown if words not in resources], [])

    def test_licence_is_that_of_the_repository(self):
        content = (self.unpack(self.package()) / "LICENSE.txt").read_bytes()
        self.assert_lines_end_as_on_windows(content)
        self.assertEqual(content.replace(b"\r\n", b"\n"), (packaged.REPOSITORY / "LICENSE").read_bytes())


class SameBytes(packaged.PackageTest):
    def package_bytes(self, name, **environment):
        packaged.make_package(self.folder / name, environment=environment)
        (package,) = (self.folder / name).glob("*.zip")
        return package.read_bytes()

    def test_in_another_time_zone_and_language(self):
        here = self.package_bytes("here", TZ="UTC", LC_ALL="C.UTF-8")
        there = self.package_bytes("there", TZ="Pacific/Auckland", LC_ALL="C")
        self.assertEqual(here, there)

    def test_an_hour_later_by_the_program_files_own_time(self):
        copy = self.folder / "Talvenor.exe"
        copy.write_bytes(packaged.program_under_test.read_bytes())
        packages = []
        for number, age in enumerate((0, 3600)):
            os.utime(copy, (time.time() - age,) * 2)
            packaged.make_package(self.folder / str(number), program=copy)
            (package,) = (self.folder / str(number)).glob("*.zip")
            packages.append(package.read_bytes())
        self.assertEqual(*packages)

    def test_but_not_from_another_commit(self):
        one = self.package_bytes("one", SOURCE_DATE_EPOCH=str(packaged.TIME_OF_TEST))
        two = self.package_bytes("two", SOURCE_DATE_EPOCH=str(packaged.TIME_OF_TEST + 86400))
        self.assertNotEqual(one, two)


class WrongProgram(packaged.PackageTest):
    def test_program_of_another_version_is_refused(self):
        copy = self.folder / "Talvenor.exe"
        content = packaged.program_under_test.read_bytes()
        version = version_of_project()
        old, new = (text.encode("utf-16-le") for text in (version, "9" + version[1:]))
        self.assertEqual(content.count(old), 2, "file version and product version")
        copy.write_bytes(content.replace(old, new))
        result = packaged.make_package(self.folder / "dist", program=copy, check=False)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("is of version 9", result.stderr)
        self.assertEqual(list((self.folder / "dist").glob("*")), [])


if __name__ == "__main__":
    packaged.main()
