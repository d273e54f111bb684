"""Runs the mutants: each is built and given to the tests that run its lines. See scripts/mutate."""
import argparse
import collections
import concurrent.futures
import hashlib
import json
import pathlib
import pickle
import re
import resource
import signal
import sys
import threading
import time

import build
import cpp_text
import desktop
import ledger
import lines
import mutants

PRODUCT = re.compile(r"\.(cpp|h)$")
NOT_PRODUCT = re.compile(r"(tests|benchmarks|scripts|docs)/")
TEST_NAME = re.compile(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", re.MULTILINE)
# A first try of the tests that are the likeliest to notice, then of more, then of all the others.
TRIES = (6, 40, 10000)
CONTROL_EVERY = 20


def digest(root, names, others=()):
    total = hashlib.sha256("\0".join(others).encode())
    for name in names:
        total.update(name.encode() + b"\0" + hashlib.sha256((root / name).read_bytes()).digest())
    return total.hexdigest()


def equipment_of(tests, included):
    """What each of a program's test files is built with but for itself and other tests. `included`: the files that each
    file of the program's code includes, and itself. A header stands for the code of its name. What no header stands for
    works with every test."""
    code = {name.removesuffix(".cpp"): name for name in included if name not in tests}
    headers = {name.removesuffix(".h") for files in included.values() for name in files if name.endswith(".h")}
    for_all = {name for stem, name in code.items() if stem not in headers}
    found = {}
    for test in tests:
        reached, queue = set(), [test, *for_all]
        while queue:
            new = included[queue.pop()] - reached
            reached |= new
            queue += {code[name.removesuffix(".h")] for name in new if name.removesuffix(".h") in code} - reached
        found[test] = sorted(reached - set(tests))
    return found


def in_product_first(name):
    """The order in which objects are compiled: most that does not compile does not compile in the product."""
    return "tests/" in name, name


class State:
    """What a verdict holds for: the file that was changed, and what else could make another verdict of it. The system's
    part of the build is taken for the same."""

    def __init__(self, product):
        self.product = product
        self.source = product.source
        self.known = {}
        made = product.build
        resources = [name for name in product.all_files if name.startswith("res/")]
        commands = sorted(" ".join(words).replace(str(self.source), "") for words in made.compile_commands.values())
        names = sorted({*made.dependents, *resources})
        self.whole = digest(self.source, names, commands)
        self.headers = sorted(name for name in product.files if name.endswith(".h"))
        self.equipment, self.tests = {}, {}
        for program, objects in made.objects.items():
            included = {made.sources_of(program).get(name): files for name, files in made.includes().items()
                        if name in objects}
            used = {name for files in included.values() for name in files if name not in product.texts}
            self.tests[program] = {name: set(TEST_NAME.findall((self.source / name).read_text(encoding="utf-8")))
                                   for name in used if name.endswith("_test.cpp")}
            included = {name: files & used for name, files in included.items() if name in used}
            self.equipment[program] = equipment_of(self.tests[program], included)

    def of(self, mutant, verdict, by):
        """A kill: of the test that noticed. A survivor: of all tests that run its lines. Else what the compiler reads."""
        if verdict == "killed":
            return self.digest([mutant.file], {tuple(by)}) if by[0] in self.tests else None
        if verdict == "survived":
            return self.digest([mutant.file], self.product.tests_for(mutant))
        return self.digest([mutant.file, *self.headers], set()) if mutant.file.endswith(".cpp") else self.whole

    def digest(self, files, tests):
        """Of these files, those of these tests and what these are built with, but for the product and other tests."""
        programs = sorted({program for program, _ in tests})
        with_tests = sorted({(program, file) for program, test in tests for file in self.files_of(program, test)})
        if (key := (*files, *programs, *with_tests)) not in self.known:
            built_with = sorted({name for program, file in with_tests for name in self.equipment[program][file]})
            self.known[key] = digest(self.source, [*files, *(file for _, file in with_tests), *built_with])
        return self.known[key]

    def files_of(self, program, test):
        """Those that may have it: one, but for names that are made in another way."""
        if (key := (program, test)) not in self.known:
            suite, _, name = test.partition(".")
            wanted = suite.split("/")[-1], name.split("/")[0]
            found = [file for file, names in self.tests[program].items() if wanted in names]
            self.known[key] = found if len(found) == 1 else sorted(self.tests[program])
        return self.known[key]


class Product:
    """The sources as they are now, and what they are built into without a mutant."""

    def __init__(self, root, work, jobs):
        self.work = work
        self.source = work / "src"
        self.all_files = names = build.project_files(root)
        build.copy_tree(root, names, self.source)
        self.files = [name for name in names if PRODUCT.search(name) and not NOT_PRODUCT.match(name)]
        self.texts = {name: (self.source / name).read_text(encoding="utf-8") for name in self.files}
        self.state = None
        self.mutants = mutants.all_mutants(self.texts)
        self.build = build.Build(self.source, work / "build", jobs)
        self.lines_build = build.Build(self.source, work / "lines", jobs)
        self.lines = None
        self.durations = None  # milliseconds of each (program, test)
        self.lock = threading.Lock()
        self.scattered = {}  # the objects that a file's scattered mutants can be in

    def prepare(self):
        print("Building the tests, and once more so that they write down their lines...", flush=True)
        self.build.make("-DTALVENOR_LINES_OF_TESTS=OFF")
        self.build.learn()
        self.state = State(self)
        self.precompile()
        self.lines_build.make("-DTALVENOR_LINES_OF_TESTS=ON", targets=())
        self.lines_build.learn()

    def precompile(self):
        """Once for each state of the sources."""
        kept = self.work / "headers.json"
        if kept.is_file():
            known = json.loads(kept.read_text(encoding="utf-8"))
            if known["digest"] == self.state.whole:
                self.build.precompiled = known["objects"]
                return
        self.build.precompile(self.texts.values(), self.work / "headers")
        objects = {made: str(header) for made, header in self.build.precompiled.items()}
        kept.write_text(json.dumps({"digest": self.state.whole, "objects": objects}), encoding="utf-8")

    def in_test_programs(self, file):
        return file in self.build.dependents

    def observe(self, desktops):
        """What every test runs and how long it takes, once for each state of the sources."""
        kept = self.work / "tests.pickle"
        if kept.is_file():
            with kept.open("rb") as file:
                known = pickle.load(file)
            if known["digest"] == self.state.whole:
                self.lines, self.durations = known["lines"], known["durations"]
                return
        print("Running all tests without a mutant, and once more with their lines written down...", flush=True)
        self.lines, self.durations = lines.Lines(), {}
        problems = []

        def time_them():
            try:
                for program in build.PROGRAMS:
                    path = self.work / f"{program}.exe"
                    if words := self.build.link(program, {}, path):
                        raise build.BuildFailed(words)
                    good, failed, output = desktops[0].run(path, None, 1800)
                    if not good:
                        raise build.BuildFailed(f"{program} fails without a mutant in {failed}:\n{output[-3000:]}")
                    self.durations |= {(program, test): ms for test, ms in desktop.durations(output).items()}
            except Exception as problem:  # pylint: disable=broad-except
                problems.append(problem)

        timing = threading.Thread(target=time_them)
        timing.start()
        if len(desktops) == 1:
            timing.join()
        for program in build.PROGRAMS:
            path = self.work / f"{program}-lines.exe"
            if words := self.lines_build.link(program, {}, path):
                raise build.BuildFailed(words)
            records = desktop.records_of(desktops[-1], path, self.work / "records", 3600)
            sources = self.lines_build.sources_of(program).values()
            self.lines.add(program, path, sources, records, set(self.files))
        timing.join()
        if problems:
            raise problems[0]
        with kept.open("wb") as file:
            pickle.dump({"digest": self.state.whole, "lines": self.lines, "durations": self.durations}, file)

    def places(self, mutant):
        """The lines whose tests could notice it, and whether these lines are all that is made of it."""
        own = [(mutant.file, line) for line in range(mutant.reached_from, mutant.last_line + 1)]
        with_code = [place for place in own if place in self.lines.units]
        if with_code:
            return with_code, True
        text = self.texts[mutant.file]
        source = cpp_text.Source(text)
        at = next(place for place, token in enumerate(source.tokens) if token.end > mutant.start)
        if source.in_code(at):  # an argument on a line of its own belongs to a call that begins above
            for line in range(mutant.line, 0, -1):
                if (mutant.file, line) in self.lines.units:
                    return [(mutant.file, line)], True
        declared = re.search(r"(\w+)\s*(\[.*\])?\s*(=|\{)", text.split("\n")[mutant.line - 1])
        mentioned, with_code_only = [], True
        if declared:
            word = re.compile(rf"\b{declared[1]}\b")
            for file, content in self.texts.items():
                for number, line in enumerate(content.split("\n"), 1):
                    if (file, number) != (mutant.file, mutant.line) and word.search(line):
                        if (file, number) in self.lines.units:
                            mentioned.append((file, number))
                        else:
                            with_code_only = False
        return mentioned, bool(mentioned) and with_code_only

    def tests_for(self, mutant):
        """(program, test) of all that run one of its lines. All tests where its lines cannot be told."""
        places, _ = self.places(mutant)
        found = set()
        for place in places:
            found |= self.lines.tests[place]
        if not places:
            return set(self.durations)
        whole = {program for program, test in found if not test}
        return {key for key in self.durations if key in found or key[0] in whole}

    def is_scattered(self, mutant):
        """Whether its line has no code of its own: what a member begins with is code of every constructor, wherever that
        is."""
        line = self.texts[mutant.file].split("\n")[mutant.line - 1]
        return (mutant.file.endswith(".h") and (mutant.file, mutant.line) not in self.lines.units
                and "constexpr" not in line)

    def objects_of(self, mutant):
        """The objects to compile anew for one that is not scattered: those with code of its lines that is in a program, and
        all that include its file where that cannot be told."""
        dependents = self.build.dependents.get(mutant.file, set())
        if mutant.file.endswith(".cpp"):
            return dependents
        line = self.texts[mutant.file].split("\n")[mutant.line - 1]
        places, told = self.places(mutant)
        if not told:
            return dependents
        # The product is optimised: what the linker drops may be in its functions all the same. Tests are not.
        units = set()
        for place in places:
            kept = self.lines.kept[place] or self.lines.units[place]
            units |= {source for source in self.lines.units[place] if not source.startswith("tests/") or source in kept}
        word = None
        if places and (mutant.file, mutant.line) not in self.lines.units:
            declared = re.search(r"(\w+)\s*(\[.*\])?\s*(=|\{)", line)
            word = declared and re.compile(rf"\b{declared[1]}\b")
        found = set()
        for made in dependents:
            source = pathlib.Path(self.build.compile_commands[made][-1])
            name = str(source.relative_to(self.source))
            if name in units or word and word.search(source.read_text(encoding="utf-8")):
                found.add(made)
        return found


class Results:
    """Every mutant's fate, kept from run to run. What was found in another state is only a hint."""

    def __init__(self, path, state, all_mutants):
        self.state = state
        self.mutants = {(mutant.key(), self.text_of(mutant)): mutant for mutant in all_mutants}
        self.lock = threading.Lock()
        self.known = {}
        self.killers = {}  # of what is called the same, at any time
        self.kills = collections.defaultdict(collections.Counter)  # (file, line) -> tests that killed there
        if path.is_file():
            for line in path.read_text(encoding="utf-8").splitlines():
                try:
                    self._learn(json.loads(line))
                except ValueError:
                    continue  # cut in the middle of a line
        self.file = path.open("a", encoding="utf-8")
        self.file.write("\n")

    def _learn(self, result):
        key = tuple(result["mutant"])
        mutant = self.mutants.get((key, result["text"]))
        if mutant and result["state"] == self.state.of(mutant, result["verdict"], result["by"]):
            self.known[mutant] = result
        if result["by"]:
            self.killers[key] = tuple(result["by"])
            self.kills[key[0], result["line"]][tuple(result["by"])] += 1

    @staticmethod
    def text_of(mutant):
        return hashlib.sha256(f"{mutant.start} {mutant.end} {mutant.new}".encode()).hexdigest()

    def of(self, mutant):
        return self.known.get(mutant)

    def add(self, mutant, verdict, by, seconds):
        result = {"mutant": mutant.key(), "line": mutant.line, "text": self.text_of(mutant),
                  "state": self.state.of(mutant, verdict, by), "verdict": verdict, "by": by, "seconds": round(seconds, 1)}
        with self.lock:
            self._learn(result)
            self.file.write(json.dumps(result) + "\n")
            self.file.flush()

    def likeliest(self, mutant, tests, lines_of_test, durations):
        """The tests in the order in which they may notice it: what killed it before, what killed its neighbours, what runs
        little else, what is quick."""
        scores = collections.Counter()
        with self.lock:
            for (file, line), killers in self.kills.items():
                if file == mutant.file:
                    for test, times in killers.items():
                        scores[test] += times / (1 + abs(line - mutant.line))
            before = self.killers.get(mutant.key())
        if before:
            scores[before] += 1000
        return sorted(tests, key=lambda test: (-scores[test], lines_of_test[test] * (50 + durations[test])))


class Job:
    """Tries mutants one after another, in a copy of the sources and on a desktop of its own."""

    def __init__(self, product, results, screen, folder):
        self.product = product
        self.results = results
        self.screen = screen
        self.folder = folder
        self.source = folder / "src"
        build.copy_tree(product.source, product.all_files, self.source)
        self.unproved = []  # kills whose tests must still show that they pass without a mutant

    def judge(self, mutant, lines_of_test):
        """What becomes of it, and the (program, test) that noticed."""
        objects = sorted(self.objects_of(mutant), key=in_product_first)
        path = self.source / mutant.file
        path.write_text(mutant.applied(self.product.texts[mutant.file]), encoding="utf-8")
        try:
            return self.judge_written(mutant, objects, lines_of_test)
        finally:
            path.write_text(self.product.texts[mutant.file], encoding="utf-8")

    def judge_written(self, mutant, objects, lines_of_test):
        made = self.product.build
        changed = {}
        same = True
        for place, name in enumerate(objects):
            target = self.folder / f"changed{place}.obj"
            if made.compile(name, self.source, target) is not None:
                return "does not compile", None
            if target.read_bytes() != (made.folder / name).read_bytes():
                same = False
                changed[name] = target
        if same:
            return "same code", None
        tests = self.product.tests_for(mutant)
        order = self.results.likeliest(mutant, tests, lines_of_test, self.product.durations)
        for program in sorted({program for program, _ in tests}, key=list(build.PROGRAMS).index):
            names = [test for of, test in order if of == program]
            if not set(changed) & made.objects[program]:
                continue
            target = self.folder / f"{program}.exe"
            if made.link(program, changed, target) is not None:
                return "does not compile", None
            begin = 0
            for count in TRIES:
                chosen, begin = names[begin:begin + count], begin + count
                if chosen and (failed := self.notices(program, target, chosen)):
                    return "killed", (program, failed)
        return "survived", None

    def objects_of(self, mutant):
        """Scattered mutants of one file are made all at once to see what any of them can be in."""
        if not self.product.is_scattered(mutant):
            return self.product.objects_of(mutant)
        with self.product.lock:
            if mutant.file not in self.product.scattered:
                self.product.scattered[mutant.file] = self.objects_of_scattered(mutant.file)
            return self.product.scattered[mutant.file]

    def objects_of_scattered(self, file):
        made = self.product.build
        path, text = self.source / file, self.product.texts[file]
        first, *others = sorted(made.dependents[file], key=in_product_first)
        by_line = {}
        for mutant in self.product.mutants:
            if mutant.file == file and mutant.line not in by_line and self.product.is_scattered(mutant):
                path.write_text(mutant.applied(text), encoding="utf-8")
                if made.compile(first, self.source, self.folder / "scattered.obj") is None:
                    by_line[mutant.line] = mutant
        changed = text
        for mutant in sorted(by_line.values(), key=lambda mutant: -mutant.start):
            changed = mutant.applied(changed)
        path.write_text(changed, encoding="utf-8")

        def differs(name):
            target = self.folder / f"scattered{others.index(name)}.obj"
            return (made.compile(name, self.source, target) is not None
                    or target.read_bytes() != (made.folder / name).read_bytes())

        try:
            with concurrent.futures.ThreadPoolExecutor(made.jobs) as pool:
                return {first} | {name for name, different in zip(others, pool.map(differs, others)) if different}
        finally:
            path.write_text(text, encoding="utf-8")

    def notices(self, program, target, tests):
        """The test that fails, if one does: twice, for a busy machine makes a test fail now and then."""
        good, failed, _ = self.screen.run(target, tests, self.limit(program, tests))
        if good:
            return None
        for again in ([failed], tests):  # or only behind the others
            if (program, again[0]) in self.product.durations:
                good, failed_again, _ = self.screen.run(target, again, self.limit(program, again))
                if not good:
                    return failed_again
        print(f"    fails once and then no more: {program} {failed}", flush=True)
        return None

    def limit(self, program, tests):
        """Well above what they take. A test that hangs ends in time."""
        return 20 + 8 * sum(self.product.durations.get((program, test), 0) for test in tests) / 1000

    def control(self):
        """Whether the tests that killed pass without a mutant now, on this desktop. What one killed that does not is tried
        again."""
        by_program = collections.defaultdict(set)
        for _, by, _ in self.unproved:
            by_program[by[0]].add(by[1])
        failed = set()
        for program, tests in by_program.items():
            known = [test for test in tests if (program, test) in self.product.durations]
            while known:
                good, bad = self.passes(program, known)
                if good:
                    break
                failed.add((program, bad))
                print(f"    fails without a mutant: {program} {bad}", flush=True)
                if bad not in known:
                    failed |= {(program, test) for test in known}
                    break
                known.remove(bad)
        again = []
        for mutant, by, seconds in self.unproved:
            if by in failed:
                again.append(mutant)
            else:
                self.results.add(mutant, "killed", by, seconds)
        self.unproved = []
        return again

    def passes(self, program, tests):
        """Whether they do without a mutant, and the one that fails, if one does: in this session and then in another."""
        bad = None
        for _ in range(2):
            if bad:
                self.screen.renew()
            good, bad, _ = self.screen.run(self.product.work / f"{program}.exe", tests, 3 * self.limit(program, tests))
            if good:
                break
        return good, bad

    def work(self, queue, end, lines_of_test, tell):
        """Takes mutants from the queue until it is empty or the time is over."""
        tries = collections.Counter()
        while True:
            while queue and time.monotonic() < end:
                try:
                    mutant = queue.popleft()
                except IndexError:
                    break
                begun = time.monotonic()
                verdict, by = self.judge(mutant, lines_of_test)
                seconds = time.monotonic() - begun
                tell(mutant, verdict, by, seconds)
                if verdict == "killed":
                    self.unproved.append((mutant, by, seconds))
                    if len(self.unproved) >= CONTROL_EVERY:
                        break
                else:
                    self.results.add(mutant, verdict, by, seconds)
            again = self.control()
            for mutant in again:
                tries[mutant] += 1
                if tries[mutant] < 3:
                    queue.append(mutant)
            if not queue or time.monotonic() >= end:
                return


def parse(words):
    parser = argparse.ArgumentParser(prog="scripts/mutate")
    parser.add_argument("root", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("work", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("--sample", type=int, metavar="N", help="only N, the same whenever the product is the same")
    parser.add_argument("--files", default="", metavar="EXPRESSION", help="only files whose names match")
    parser.add_argument("--minutes", type=float, default=1e9, help="begin none after this time; the next run goes on")
    parser.add_argument("--jobs", type=int, default=2, help="how many at a time (2)")
    parser.add_argument("--list", action="store_true", help="only print them")
    return parser.parse_args(words)


def processor_seconds():
    used = [resource.getrusage(who) for who in (resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN)]
    return sum(usage.ru_utime + usage.ru_stime for usage in used)


def write_report(path, chosen, results, reasons):
    with path.open("w", encoding="utf-8") as report:
        for mutant in sorted(chosen, key=lambda mutant: (mutant.file, mutant.line)):
            result = results.of(mutant)
            by = " by " + " ".join(result["by"]) if result and result["by"] else ""
            report.write(f"{result['verdict'] if result else 'not tried'}{by}: {mutant.name()}\n")
            if result and result["verdict"] == "survived" and mutant.key() not in reasons:
                report.write("\n" + ledger.entry(mutant) + "\n")


def main(words):
    wanted = parse(words)
    begun = time.monotonic()
    wanted.work.mkdir(parents=True, exist_ok=True)
    reasons = ledger.read(wanted.root / "tests/mutation/ledger.toml")
    product = Product(wanted.root, wanted.work, wanted.jobs)
    matching = [mutant for mutant in product.mutants if re.search(wanted.files, mutant.file)]
    if wanted.list:
        for mutant in matching:
            print(mutant.name())
        return 0
    product.prepare()
    chosen = [mutant for mutant in matching if product.in_test_programs(mutant.file)]
    elsewhere = sorted({mutant.file for mutant in matching} - {mutant.file for mutant in chosen})
    chosen = mutants.order_of_sample(chosen)[:wanted.sample]
    screens = []
    try:
        screens = [desktop.Desktop(wanted.root, wanted.work / f"job{number}", wanted.work / "build/equipment/desktop_holder.exe")
                   for number in range(wanted.jobs)]
        product.observe(screens)
        results = Results(wanted.work / "results.jsonl", product.state, product.mutants)
        lines_of_test = collections.Counter(test for tests in product.lines.tests.values() for test in tests)
        # Neighbours one after another: what killed one most likely kills the next.
        missing = sorted((mutant for mutant in chosen if not results.of(mutant)),
                         key=lambda mutant: (mutant.file.endswith(".h"), mutant.file, mutant.line))
        print(f"{len(product.mutants)} mutants, {len(chosen)} chosen, {len(chosen) - len(missing)} known already", flush=True)
        queue = collections.deque(missing)
        tried = []

        def tell(mutant, verdict, by, seconds):
            tried.append(mutant)
            if verdict == "survived":
                print(f"    survived: {mutant.name()}\n        {mutant.line_text}", flush=True)
            if len(tried) % 50 == 0:
                print(f"{len(tried)} of {len(missing)} in {(time.monotonic() - begun) / 60:.1f} minutes", flush=True)

        end = begun + wanted.minutes * 60
        jobs = [Job(product, results, screen, screen.folder) for screen in screens]
        problems = []

        def work(job):
            try:
                job.work(queue, end, lines_of_test, tell)
            except Exception as problem:  # pylint: disable=broad-except
                problems.append(problem)
                queue.clear()

        threads = [threading.Thread(target=work, args=(job,), daemon=True) for job in jobs]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if problems:
            raise problems[0]
    finally:
        for screen in screens:
            screen.end()

    verdicts = {mutant: results.of(mutant)["verdict"] for mutant in chosen if results.of(mutant)}
    write_report(wanted.work / "report.txt", chosen, results, reasons)
    # A name in the ledger may be of a file that was not asked for.
    asked = {key: reason for key, reason in reasons.items() if re.search(wanted.files, key[0])}
    wrong = ledger.problems(asked, product.mutants, verdicts)
    for problem in wrong:
        print(problem)
    count = collections.Counter(verdicts.values())
    if elsewhere:
        print(f"not in a test program, and not tried: {', '.join(elsewhere)}")
    answered = sum(verdict == "survived" and mutant.key() in reasons for mutant, verdict in verdicts.items())
    print(f"mutants: {len(product.mutants)} in all, {len(chosen)} chosen, {len(verdicts)} tried: "
          f"{count['does not compile']} do not compile, {count['same code']} give the same code, {count['killed']} killed, "
          f"{count['survived']} survived, {answered} of these in the ledger. "
          f"{(time.monotonic() - begun) / 60:.0f} minutes, {processor_seconds() / 60:.0f} of the processor.")
    return 1 if wrong or len(verdicts) < len(chosen) else 0


if __name__ == "__main__":
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))  # what was started ends too
    try:
        sys.exit(main(sys.argv[1:]))
    except build.BuildFailed as failure:
        sys.exit(f"error: {failure}")
