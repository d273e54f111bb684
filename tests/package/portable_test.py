#!/usr/bin/env python3
"""The packed tests, as a person on Windows meets them: unpacked into a folder with blanks and accents, started by run.cmd.

ctest runs it as `portable_test.py BUILD-FOLDER`. With `--compare BUILD-FOLDER ZIP` it runs all suites of the package and
ctest beside it, and compares them test by test.
"""
import fnmatch
import os
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]
TIME_OF_TEST = 1767225600  # 2026-01-01
# What cmd.exe, or a program that takes its own path apart, could trip over. Without "%": the cmd.exe of Wine takes
# the text that a variable or %~dp0 stands for apart once more, which that of Windows does not.
ODD_FOLDER = "Éssais à part & co (^1) l'été !"
LIMIT_SECONDS = 3600

build = None


def make_package(folder):
    command = [REPOSITORY / "scripts" / "package", "--tests", "--build", build, "--output", folder]
    subprocess.run([str(word) for word in command], check=True, text=True, capture_output=True,
                   env={**os.environ, "SOURCE_DATE_EPOCH": str(TIME_OF_TEST)})
    (package,) = folder.glob("*.zip")
    return package


def unpack(package, folder):
    with zipfile.ZipFile(package) as archive:
        archive.extractall(folder)


def run(folder, *arguments):
    """As a double click does, which has cmd.exe run it; returns exit code and what was shown."""
    result = subprocess.run(["wine", folder / "run.cmd", *arguments], capture_output=True, cwd="/",
                            stdin=subprocess.DEVNULL, timeout=LIMIT_SECONDS)
    return result.returncode, result.stdout.decode("utf-8", "replace")


def in_temporary_folder(pattern):
    """The contents of the temporary folder of the Wine session, which is not in the same place in every version."""
    users = Path(os.environ["WINEPREFIX"]) / "drive_c" / "users"
    return [path for folder in ("Temp", "AppData/Local/Temp") for path in users.glob(f"*/{folder}/{pattern}")]


def outcomes(results):
    """Of a results.txt: what came out, by suite and test."""
    found = {}
    for suite, tests in re.findall(r"^===== (\S+): .*\n((?:(?!=====).*\n)*)", results, re.M):
        for outcome, name in re.findall(r"^(passed|skipped|FAILED|CRASHED|TOO LONG|NOT RUN) +(\S+)$", tests, re.M):
            found[suite, name] = outcome
    return found


def tests_of(program):
    """The names of all its tests, as GoogleTest lists them."""
    listed = subprocess.run(["wine", program, "--gtest_list_tests"], check=True, stdout=subprocess.PIPE,
                            timeout=LIMIT_SECONDS).stdout.decode("utf-8")
    suite = ""
    for line in listed.splitlines():
        name = line.split("#")[0].rstrip()
        if name.startswith("  "):
            yield suite + name.strip()
        elif name.endswith("."):
            suite = name


def tests_of_suites(folder):
    """By suite of the unpacked package: its program, the patterns of its tests' names, and the names themselves."""
    names = {}
    for line in (folder / "suites.txt").read_text().splitlines():
        suite, _, program, *arguments = line.split("\t")
        if program not in names:
            names[program] = list(tests_of(folder / program))
        filters = [text.removeprefix("--gtest_filter=") for text in arguments if text.startswith("--gtest_filter=")]
        patterns = filters[0].split(":") if filters else ["*"]
        yield suite, program, [name for name in names[program]
                               if any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns)], names[program]


def read_results(folder):
    content = (folder / "results.txt").read_bytes()
    text = content.decode("utf-8")
    assert text.startswith("\ufeff") and text.count("\n") == text.count("\r\n"), "not as every Notepad reads it"
    return text.removeprefix("\ufeff").replace("\r\n", "\n")


class Folder(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.root = Path(temporary.name)
        self.folder = self.root / ODD_FOLDER

    def files(self):
        return sorted(str(path.relative_to(self.folder)) for path in self.folder.rglob("*") if path.is_file())


class Package(Folder):
    def setUp(self):
        super().setUp()
        self.package = make_package(self.root / "dist")
        unpack(self.package, self.folder)

    def test_holds_what_the_suites_name_and_no_more(self):
        programs = {line.split("\t")[2] for line in (self.folder / "suites.txt").read_text().splitlines()}
        self.assertGreater(len(programs), 4)
        others = {"Talvenor.exe", "LICENSE.txt", "run.cmd", "run_tests.exe", "suites.txt", "left_out.txt",
                  "equipment/stand_in_converter.exe", "tests/faults/fatal_probe.exe", "tests/faults/fault_product.dll"}
        self.assertEqual(set(self.files()), programs | others)

    def test_is_the_same_again_and_names_no_folder_of_this_machine(self):
        again = make_package(self.root / "again")
        self.assertEqual(self.package.read_bytes(), again.read_bytes())
        for path in self.folder.rglob("*.exe"):
            content = path.read_bytes()
            self.assertNotIn(str(REPOSITORY).encode(), content, path.name)
            self.assertNotIn(str(REPOSITORY).encode("utf-16-le"), content, path.name)

    def test_needs_nothing_but_windows(self):
        for path in [*self.folder.rglob("*.exe"), *self.folder.rglob("*.dll")]:
            headers = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", path], check=True, capture_output=True, text=True)
            libraries = {name.lower() for name in re.findall("DLL Name: (.*)", headers.stdout)}
            self.assertGreater(len(libraries), 0)
            of_windows = {"advapi32.dll", "comctl32.dll", "gdi32.dll", "imm32.dll", "kernel32.dll", "msvcrt.dll",
                          "ntdll.dll", "ole32.dll", "shell32.dll", "shlwapi.dll", "user32.dll", "version.dll"}
            self.assertLessEqual(libraries, of_windows, path.name)

    def test_texts_are_for_windows_and_the_script_is_plain(self):
        for name in ("run.cmd", "suites.txt", "left_out.txt", "LICENSE.txt"):
            content = (self.folder / name).read_bytes()
            self.assertEqual(content.count(b"\n"), content.count(b"\r\n"), name)
            content.decode("ascii")

    def test_every_test_of_a_program_is_in_one_suite_and_every_name_left_out_is_a_test(self):
        suites_of_test = {}
        for suite, program, tests, all_tests in tests_of_suites(self.folder):
            self.assertTrue(tests, f"{suite} has no tests")
            for test in all_tests:
                suites_of_test.setdefault((program, test), []).extend([suite] if test in tests else [])
        self.assertEqual({test: suites for test, suites in suites_of_test.items() if len(suites) != 1}, {})
        left_out = re.findall(r"^(?!#|entry )(\S+): ", (self.folder / "left_out.txt").read_text(), re.M)
        tests = [test for _, test in suites_of_test]
        self.assertGreater(len(left_out), 5)
        self.assertEqual([name for name in left_out if not fnmatch.filter(tests, name)], [], "left out, and no test")

    def test_every_entry_of_ctest_is_a_suite_or_left_out_by_name(self):
        listed = subprocess.run(["ctest", "-N", "--test-dir", build], check=True, capture_output=True, text=True)
        entries = re.findall(r"^ +Test +#\d+: (\S+)", listed.stdout, re.M)
        suites = {line.split("\t")[0] for line in (self.folder / "suites.txt").read_text().splitlines()}
        left_out = re.findall(r"^entry (\S+?)\*?: ", (self.folder / "left_out.txt").read_text(), re.M)
        self.assertGreater(len(entries), 20)
        self.assertEqual([name for name in entries if name not in suites and not name.startswith(tuple(left_out))], [])


class Sample(Folder):
    """A few suites of the package itself."""

    def setUp(self):
        super().setUp()
        unpack(make_package(self.root / "dist"), self.folder)

    def check(self, beginning):
        before = self.files()
        code, shown = run(self.folder, "--only", beginning)
        results = read_results(self.folder)
        self.assertEqual(code, 0, shown + results)
        self.assertIn("\nGOOD: ", results)
        expected = {(suite, test): "passed" for suite, _, tests, _ in tests_of_suites(self.folder)
                    if suite.startswith(beginning) for test in tests}
        self.assertGreater(len(expected), 0)
        self.assertEqual(outcomes(results), expected)
        self.assertEqual(self.files(), sorted([*before, "results.txt"]))
        return results

    def test_rules_run_and_say_where(self):
        results = self.check("rules")
        for fact in ("Windows: ", "ANSI code page: ", "Dpi: ", "Keyboard: "):
            self.assertRegex(results, f"\n{fact}.+\n")
        self.assertIn("\nMay shut down: no\n", results)
        self.assertRegex(results, r"\nRealConverter\.\*: .+\n")

    def test_program_itself_runs_from_there(self):
        self.check("app.countdown")


class Unruly(Folder):
    """A suite that does everything wrong: each is reported, and none hides another."""

    def setUp(self):
        super().setUp()
        unpack(make_package(self.root / "dist"), self.folder)
        (self.folder / "unruly_suite.exe").write_bytes((build / "tests/portable/unruly_suite.exe").read_bytes())
        (self.folder / "left_out.txt").write_text("*.IsLeftOut: it does nothing\n")
        self.suites("unruly\t5\tunruly_suite.exe\t\n")

    def suites(self, text):
        (self.folder / "suites.txt").write_text(text)

    def test_every_misdeed_is_reported(self):
        code, _ = run(self.folder)
        results = read_results(self.folder)
        self.assertEqual(code, 1)
        self.assertIn("\nNOT GOOD: 3 of 8 tests passed, 1 skipped", results)
        self.assertEqual(outcomes(results), {("unruly", f"Unruly.{name}"): outcome for name, outcome in {
            "Passes": "passed", "Fails": "FAILED", "Crashes": "CRASHED", "Hangs": "TOO LONG", "Skips": "skipped",
            "LeavesAFile": "passed", "LeavesAProcess": "passed", "ShutsDown": "FAILED"}.items()})
        self.assertIn("it may not", results)
        self.assertIn("of the Été", results)
        self.assertIn("the program ended with 0xC0000005", results)
        self.assertIn("not over after 5 s", results)
        self.assertIn("PROBLEM in unruly: Unruly.LeavesAFile left in the temporary folder: forgotten.txt", results)
        self.assertIn("PROBLEM in unruly: Unruly.LeavesAProcess left 1 processes running", results)
        self.assertIn("for no reason", results)
        self.assertIn("*.IsLeftOut: it does nothing", results)

    def test_interruption_ends_it_and_leaves_nothing(self):
        self.suites("unruly\t600\tunruly_suite.exe\t--gtest_filter=Unruly.Passes:Unruly.Hangs\n"
                    "never\t5\tunruly_suite.exe\t--gtest_filter=Unruly.Passes\n")
        running = subprocess.Popen(["wine", self.folder / "run_tests.exe", "--only", ""], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.addCleanup(running.kill)
        deadline = time.monotonic() + 60
        while not in_temporary_folder("talvenor-tests-*/hanging"):
            self.assertLess(time.monotonic(), deadline, "the hanging test does not begin")
            time.sleep(0.1)
        running.send_signal(signal.SIGINT)
        running.communicate(timeout=60)
        self.assertEqual(running.returncode, 1)
        results = read_results(self.folder)
        self.assertIn("PROBLEM in unruly: interrupted", results)
        self.assertIn("in 1 of 2 suites", results)
        self.assertEqual(in_temporary_folder("talvenor-tests-*"), [])

    def test_suite_without_its_program_is_reported(self):
        self.suites("gone\t5\tgone.exe\t\n")
        code, _ = run(self.folder, "--only", "gone")
        self.assertEqual(code, 1)
        self.assertRegex(read_results(self.folder), "PROBLEM in gone: .*gone.exe")

    def test_script_alone_says_what_to_do(self):
        (self.folder / "run_tests.exe").unlink()
        code, shown = run(self.folder)
        self.assertEqual(code, 2)
        self.assertIn("Unpack the whole zip", shown)


def outcomes_of_ctest(suites):
    """By suite and test, of these suites."""
    pattern = "^(" + "|".join(re.escape(name) for name in suites) + ")$"
    result = subprocess.run(["ctest", "--test-dir", build, "-V", "-R", pattern], capture_output=True)
    text = result.stdout.decode("utf-8", "replace").replace("\r", "")
    entries = dict(re.findall(r"^ +Start +(\d+): (\S+)$", text, re.M))
    words = {"OK": "passed", "FAILED": "FAILED", "SKIPPED": "skipped"}
    # The time, or what a failed test was given, distinguishes a test's own line from the list of failures at the end.
    lines = re.findall(r"^(\d+): .*?\[ +(OK|FAILED|SKIPPED) +\] (\S+?)(?:, where .*)? \(\d+ ms\)$", text, re.M)
    return {(entries[number], name): words[word] for number, word, name in lines}


def compare(package):
    with tempfile.TemporaryDirectory() as root:
        folder = Path(root) / ODD_FOLDER
        unpack(package, folder)
        code, shown = run(folder)
        print(shown, flush=True)
        results = read_results(folder)
        suites = [line.split("\t")[0] for line in (folder / "suites.txt").read_text().splitlines()]
        left_out = [line.split(": ")[0] for line in (folder / "left_out.txt").read_text().splitlines()]
    packed = outcomes(results)
    here = outcomes_of_ctest(suites)
    patterns = [re.compile(re.escape(name).replace(r"\*", ".*") + "$") for name in left_out]
    expected = {test: outcome for test, outcome in here.items()
                if not any(pattern.match(test[1]) for pattern in patterns)}
    differences = [f"{' '.join(test)}: {packed.get(test, 'not run')} from the package, {expected.get(test, 'not run')} by ctest"
                   for test in sorted(packed.keys() | expected.keys()) if packed.get(test) != expected.get(test)]
    print(f"{len(packed)} tests from the package, {len(here)} by ctest, of which {len(here) - len(expected)} are left out of "
          f"the package; {len(differences)} differences")
    print("\n".join(differences))
    return 1 if differences or code or not packed else 0


def main():
    global build
    if len(sys.argv) == 4 and sys.argv[1] == "--compare":
        build = Path(sys.argv[2]).resolve()
        sys.exit(compare(Path(sys.argv[3]).resolve()))
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    build = Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)


if __name__ == "__main__":
    main()
