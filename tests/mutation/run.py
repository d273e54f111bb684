"""Runs the mutants: each is built and given to the tests that could notice it. See scripts/mutate."""
import argparse
import collections
import os
import pathlib
import re
import shutil
import subprocess
import sys
import threading
import time

import mutants

# The suites of window_test that look at a file most closely come first: most mutants die there.
NEAREST = [
    (r"engine/|run", "*Batch*"),
    (r"ui/shutdown/", "*Shutdown*:*Countdown*:*ShutDown*"),
    (r"ui/about/", "*About*"),
    (r"framework/", "*Framework*"),
    (r"ui/control_state", "*ControlState*"),
    (r"ui/file_list", "*FileList*"),
    (r"ui/dispatch", "*Dispatch*"),
    (r"ui/set_up.cpp", "*SetUp*"),
    (r"ui/output_folder", "*Folder*:*Shell*:*Browse*:*OpenLog*"),
    (r"ui/application", "*Application*:*StartUp*"),
    (r"log/", "*Log*:*Message*:*String*"),
]
# The programs of tests, in the build.
PROGRAMS = {
    "rules_test": "tests/rules/rules_test.exe",
    "path_and_bytes_test": "tests/rules/path_and_bytes_test.exe",
    "window_test": "tests/window/window_test.exe",
    "model_test": "tests/model/model_test.exe",
}
RULES = re.compile(r"command_line|elapsed_time|log_record|decimal|version_text|drop_filter|open_file|page_edit|clamp")
LONGEST_RUN_S = 150


def steps(file):
    """The programs that could notice a mutant of the file, in turn, each with its arguments."""
    if RULES.search(file):
        yield "rules_test", []
    if re.search(r"output_path|path_buffer|ansi_text", file):
        yield "path_and_bytes_test", []
    nearest = [suites for pattern, suites in NEAREST if re.search(pattern, file)]
    if nearest:
        yield "window_test", [f"--gtest_filter={nearest[0]}"]
        yield "window_test", [f"--gtest_filter=-{nearest[0]}"]
    else:
        yield "window_test", []
    yield "model_test", []


class Job:
    """One copy of the sources with a build, a display and a Wine prefix of its own."""

    def __init__(self, number, root, work):
        self.folder = work / f"job{number}"
        self.source = self.folder / "src"
        self.build = self.folder / "build"
        files = subprocess.run(["git", "-C", root, "ls-files", "-z"], check=True, capture_output=True).stdout
        for name in filter(None, files.decode().split("\0")):
            self.copy(root / name, self.source / name)
        self.environment = dict(os.environ, WINEPREFIX=str(self.folder / "prefix"))
        read, write = os.pipe()
        self.display = subprocess.Popen(  # ends with us, however that comes
            ["setpriv", "--pdeathsig", "TERM", "--",
             "Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:  # the whole line: Xvfb ends when nobody reads to its end
            self.environment["DISPLAY"] = ":" + number.readline().strip()
        self.holder = None

    @staticmethod
    def copy(original, target):
        """What is the same stays untouched, with what was built from it; a mutant that was left goes."""
        if not original.is_file() or target.is_file() and target.read_bytes() == original.read_bytes():
            return
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(original, target)

    def run(self, *command, limit=LONGEST_RUN_S, cwd=None):
        try:
            done = subprocess.run(command, env=self.environment, cwd=cwd or self.source, timeout=limit,
                                  stdin=subprocess.DEVNULL, capture_output=True)
            return done.returncode, (done.stdout + done.stderr).decode("utf-8", "replace")
        except subprocess.TimeoutExpired:
            subprocess.run(["wineserver", "-k"], env=self.environment, check=False)
            if self.holder:
                self.hold_desktop()
            return -1, "timeout"

    def hold_desktop(self):
        """Without this a window takes a second to open, and tests that pass would take too long."""
        if self.holder:
            self.holder.kill()
            self.holder.wait()
        self.holder = subprocess.Popen(["wine", str(self.build / "equipment/desktop_holder.exe")],
                                       env=self.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL)
        if b"ready" not in self.holder.stdout.readline():
            raise RuntimeError("Wine opens no window")

    def passes(self, program, *arguments):
        """Whether its tests come to their end, all of them well. A program that ends early, with whatever code, does
        not pass."""
        code, output = self.run("wine", str(self.build / PROGRAMS[program]), *arguments)
        return code == 0 and "[  PASSED  ]" in output, output

    def prepare(self):
        if not (self.folder / "prefix" / "drive_c").is_dir():
            self.must("wineboot", "-i")
        self.must("wine", "reg", "add", r"HKCU\Software\Wine\X11 Driver", "/v", "Managed", "/d", "N", "/f")
        self.must("cmake", "--preset", "mingw", "-B", str(self.build))
        self.must("ninja", "-C", str(self.build), *PROGRAMS, "desktop_holder", limit=1200)
        self.hold_desktop()
        for program in PROGRAMS:
            good, output = self.passes(program)
            if not good:
                raise RuntimeError(f"{program} fails without a mutant:\n{output[-3000:]}")

    def must(self, *command, limit=300):
        code, output = self.run(*command, limit=limit)
        if code != 0:
            raise RuntimeError(f"failed: {' '.join(command)}\n{output[-3000:]}")

    def judge(self, mutant):
        path = self.source / mutant.file
        original = path.read_text(encoding="utf-8")
        lines = original.splitlines(keepends=True)
        lines[mutant.line - 1] = mutant.text + "\n"
        path.write_text("".join(lines), encoding="utf-8")
        try:
            built = set()
            for program, suites in steps(mutant.file):
                # A program is linked when its turn comes: most mutants die in the first.
                if program not in built and self.run("ninja", "-C", str(self.build), program, limit=600)[0] != 0:
                    return "does not compile"
                built.add(program)
                if not self.passes(program, "--gtest_fail_fast", *suites)[0]:
                    return "killed"
            return "survived"
        finally:
            path.write_text(original, encoding="utf-8")

    def end(self):
        if self.holder:
            self.holder.kill()
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False)
        self.display.terminate()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("--every", type=int, default=1, metavar="N", help="only every N-th mutant")
    parser.add_argument("--first", type=int, default=0, help="where to begin, for a sample beside another")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--files", default="", help="only files that match this expression")
    parser.add_argument("--minutes", type=float, default=1e9, help="begin no mutant after this time")
    wanted = parser.parse_args()

    everything = list(mutants.all_mutants(wanted.root))
    queue = collections.deque(m for m in everything[wanted.first::wanted.every] if re.search(wanted.files, m.file))
    total = len(queue)
    wanted.work.mkdir(parents=True, exist_ok=True)
    jobs = [Job(number, wanted.root, wanted.work) for number in range(wanted.jobs)]
    results = []
    end = time.monotonic() + wanted.minutes * 60
    report = (wanted.work / "report.txt").open("w", encoding="utf-8")

    def work(job):
        job.prepare()
        while queue and time.monotonic() < end:
            try:
                mutant = queue.popleft()
            except IndexError:
                return
            verdict = job.judge(mutant)
            results.append((verdict, mutant))
            report.write(f"{verdict}: {mutant.name()}\n")
            report.flush()
            if verdict == "survived":
                print(f"survived: {mutant.name()}\n    {mutant.text.strip()}", flush=True)

    try:
        threads = [threading.Thread(target=work, args=(job,)) for job in jobs]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    finally:
        for job in jobs:
            job.end()
    count = collections.Counter(verdict for verdict, _ in results)
    counted = count["killed"] + count["survived"]
    share = 100 * count["killed"] / counted if counted else 0
    print(f"mutants: {len(everything)} in all, {total} chosen, {len(results)} tried, "
          f"{count['does not compile']} do not compile, {count['killed']} killed, {count['survived']} survived "
          f"({share:.1f} % killed)")
    return 0 if counted and share >= 95 else 1


if __name__ == "__main__":
    sys.exit(main())
