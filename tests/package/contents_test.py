#!/usr/bin/env python3
"""What is in the package, that it opens well on Windows, and that it is the same each time."""
import os
import re
import subprocess
import time
import unittest
import zipfile

import packaged


class Files(packaged.PackageTest):
    def test_zip_and_checksum_are_named_after_the_version(self):
        package = self.package()
        name = f"Talvenor-{packaged.project_version()}-x64.zip"
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
        self.assertEqual(text.splitlines()[0], f"TALVENOR {packaged.project_version()}")
        self.assertNotIn("@", text)
        for word in ("Éteindre l'ordinateur", "métadonnées", "--no-hyperlinks", "TalvenorLog.txt", "F7"):
            self.assertIn(word, text)

    def test_guide_is_the_repositorys_with_all_that_it_says(self):
        guide = (packaged.REPOSITORY / "LISEZMOI.md").read_text("utf-8")
        text = (self.unpack(self.package()) / "LISEZMOI.txt").read_text("utf-8-sig")
        headings = [heading.upper() for heading in re.findall("^## (.*)$", guide, re.M)]
        self.assertGreater(len(headings), 7)
        self.assertEqual(re.findall(r"^(.+)\n-+$", text, re.M), headings)
        # Each sentence and each cell of a table, but for the headings of tables and the marks of Markdown.
        said = re.sub(r"^(#.*|!\[.*|\|.*\|\n\|[-|]+\|)$", "", guide, flags=re.M).replace("`", "")
        pieces = [" ".join(piece.split()) for piece in re.split(r"(?<=[.;]) |\||\n\n|^(?:-|\d\.) ", said, flags=re.M)]
        self.assertGreater(len(pieces), 100)
        whole = " ".join(re.sub(r"^(?:-|\d\.) ", "", text, flags=re.M).split())
        self.assertEqual([piece for piece in pieces if piece not in whole], [])

    def test_guide_shows_no_marks_and_splits_nothing_that_belongs_together(self):
        text = (self.unpack(self.package()) / "LISEZMOI.txt").read_text("utf-8-sig")
        self.assertEqual(re.findall(r"`|!\[|\]\(|^#|\|", text, re.M), [])
        self.assertEqual(re.findall(r"^\s*[»:;!?%].*|.*«$", text, re.M), [])

    def test_guide_names_every_text_of_the_window_as_it_is(self):
        """What the guide puts between quotation marks is in the window, word for word."""
        text = (self.unpack(self.package()) / "LISEZMOI.txt").read_text("utf-8-sig")
        resources = (packaged.REPOSITORY / "res" / "talvenor.rc").read_text("utf-8").replace("\\r\\n", " ")
        shown = [re.sub(r"\s+", " ", quoted) for quoted in re.findall("« (.*?) »", text, re.S)]
        self.assertGreater(len(shown), 15)
        self.assertEqual([words for words in shown if words not in resources], [])

    def test_licence_is_that_of_the_repository(self):
        content = (self.unpack(self.package()) / "LICENSE.txt").read_bytes()
        self.assert_lines_end_as_on_windows(content)
        self.assertEqual(content.replace(b"\r\n", b"\n"), (packaged.REPOSITORY / "LICENSE").read_bytes())


class UnknownMarkdown(unittest.TestCase):
    def test_is_refused_and_not_shown_to_the_reader(self):
        script = packaged.REPOSITORY / "scripts" / "plain_text.py"
        for text in ("### Trop bas", "Du code `qui ne finit pas", "[un lien](README.md)", "Du **gras**", "<b>gras</b>",
                     "> citation", "* puce", "| a | b |\n| c | d |", "| a | b |\n|---|---|\n| c |", "- a\nb"):
            result = subprocess.run(["python3", "-B", script, "1"], input=text, capture_output=True, text=True)
            self.assertNotEqual(result.returncode, 0, text)
            self.assertIn("cannot be written as plain text", result.stderr, text)


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
        version = packaged.project_version()
        old, new = (text.encode("utf-16-le") for text in (version, "9" + version[1:]))
        self.assertEqual(content.count(old), 2, "file version and product version")
        copy.write_bytes(content.replace(old, new))
        result = packaged.make_package(self.folder / "dist", program=copy, check=False)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("is of version 9", result.stderr)
        self.assertEqual(list((self.folder / "dist").glob("*")), [])


if __name__ == "__main__":
    packaged.main()
