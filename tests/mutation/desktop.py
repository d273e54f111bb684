"""A display and a Wine session of one job's own, and the test programs run in it."""
import os
import pathlib
import re
import shutil
import signal
import subprocess
import threading

import build
import lines

PASSED = re.compile(r"^\[ {7}OK \] (\S+) \((\d+) ms\)", re.MULTILINE)
FAILED = re.compile(r"^\[  FAILED  \] ([^\s,]+\.[^\s,]+?)(?:,| \(\d+ ms\)|$)", re.MULTILINE)
BEGUN = re.compile(r"^\[ RUN      \] (\S+)", re.MULTILINE)


class Ended(Exception):
    pass


class Desktop:
    def __init__(self, root, folder, holder):
        self.lock = threading.Lock()
        self.ended = False
        self.folder = folder
        self.holder_program = holder
        self.holder = None
        folder.mkdir(parents=True, exist_ok=True)
        read, write = os.pipe()
        self.display = subprocess.Popen(  # ends with us, however that comes
            ["setpriv", "--pdeathsig", "TERM", "--",
             "Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:  # the whole line: Xvfb ends when nobody reads to its end
            self.environment = dict(os.environ, WINEPREFIX=str(folder / "prefix"), DISPLAY=":" + number.readline().strip())
        self.end_session()  # of a run that was killed
        build.must(["bash", "-euc", 'source "$1/scripts/lib.sh"; WINEPREFIX=$2; create_prefix; '
                    "set_registry 'HKCU\\Software\\Wine\\X11 Driver' Managed REG_SZ N",
                    "bash", root, folder / "prefix"], env=self.environment, limit=300)
        self.hold()

    def hold(self):
        """Without this a window takes a second to open, and tests that pass would take too long."""
        if self.holder:
            self.holder.kill()
            self.holder.wait()
        self.holder = self.start(["wine", str(self.holder_program)], env=self.environment, stdin=subprocess.PIPE,
                                 stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        if b"ready" not in self.holder.stdout.readline():
            raise build.BuildFailed("Wine opens no window")

    def start(self, command, **options):
        """Not behind the end: what a job starts then would stay."""
        with self.lock:
            if self.ended:
                raise Ended
            return subprocess.Popen(command, **options)

    def run(self, program, tests, limit, stop_at_failure=True, lines_folder=None):
        """Runs these tests of a program, or all. Whether it came to its end with all of them well, the test that it failed
        or ended in, and its words."""
        command = ["wine", str(program)]
        if tests is not None:
            (self.folder / "tests.flags").write_text("--gtest_filter=" + ":".join(tests) + "\n", encoding="utf-8")
            command.append("--gtest_flagfile=tests.flags")
        if stop_at_failure:
            command.append("--gtest_fail_fast")
        environment = dict(self.environment)
        if lines_folder:
            environment["TALVENOR_LINES_FOLDER"] = "Z:" + str(lines_folder).replace("/", "\\")
        with (self.folder / "tests.log").open("w+b") as log:  # no pipe: a program left behind would hold it open
            started = self.start(command, env=environment, cwd=self.folder, stdin=subprocess.DEVNULL, stdout=log,
                                 stderr=subprocess.STDOUT, start_new_session=True)
            try:
                code = started.wait(limit)
            except subprocess.TimeoutExpired:
                code = None
                os.killpg(started.pid, signal.SIGKILL)
                started.wait()
                self.renew()
            log.seek(0)
            output = log.read().decode("utf-8", "replace")
        if code == 0 and "[  PASSED  ]" in output:
            return True, None, output
        failed = FAILED.findall(output)
        begun = BEGUN.findall(output)
        return False, failed[0] if failed else begun[-1] if begun else "(start)", output + ("" if code is not None else "(time)")

    def renew(self):
        """Another session in the place of one that a mutant may have spoilt."""
        self.end_session()
        self.hold()

    def end_session(self):
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False)
        try:
            subprocess.run(["wineserver", "-w"], env=self.environment, check=False, timeout=20)
        except subprocess.TimeoutExpired:  # a suspended process does not see that its server has ended
            self.kill_processes()
            subprocess.run(["wineserver", "-w"], env=self.environment, check=False, timeout=60)

    def kill_processes(self):
        ours = f"WINEPREFIX={self.environment['WINEPREFIX']}".encode()
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if ours in (process / "environ").read_bytes().split(b"\0") and int(process.name) != os.getpid():
                    os.kill(int(process.name), signal.SIGKILL)
            except OSError:  # it has ended meanwhile, or is not ours to read
                continue

    def end(self):
        with self.lock:
            self.ended = True
        if self.holder:
            self.holder.kill()
        self.end_session()
        self.display.terminate()


def durations(output):
    """Milliseconds of each test that passed."""
    return {name: int(milliseconds) for name, milliseconds in PASSED.findall(output)}


def records_of(desktop, program, folder, limit):
    """Runs all tests of a program that writes down their lines; what they wrote, one for each process."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    good, failed, output = desktop.run(program, None, limit, stop_at_failure=False, lines_folder=folder)
    # Slower than usual, a test may fail here; but it must have run, and written down what.
    records = [lines.load_record(path) for path in sorted(folder.glob("*.lines"))]
    if not records or "[==========]" not in output:
        raise build.BuildFailed(f"{program.name} writes down no lines: {output[-3000:]}")
    if not good:
        print(f"    {program.name}: {failed} failed while its lines were written down", flush=True)
    return records
