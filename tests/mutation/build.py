"""The test programs with one file of the product changed. They are built once in the ordinary way; a mutant then costs the
compiling of what includes its file, and a link. That is done by LLVM's linker, which needs an eighth of a second where
GNU's needs ten."""
import collections
import pathlib
import re
import shlex
import shutil
import subprocess

# By the folder of each program in the build.
PROGRAMS = {
    "rules_test": "tests/rules",
    "path_and_bytes_test": "tests/rules",
    "window_test": "tests/window",
    "model_test": "tests/model",
}
# What LLVM's linker does not know and a program that is only run does not need.
UNKNOWN_TO_LLD = re.compile(r"-plugin|--out-implib|--major-image-version|--minor-image-version")
COMPILE_LIMIT_S = 300
SYSTEM_HEADER = re.compile(r"^#include (<[\w./]+>)", re.MULTILINE)


class BuildFailed(Exception):
    pass


def run(command, limit=None, **options):
    done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=limit, check=False, **options)
    return done.returncode, done.stdout.decode("utf-8", "replace")


def must(command, **options):
    code, output = run(command, **options)
    if code != 0:
        raise BuildFailed(f"failed: {' '.join(map(str, command))}\n{output[-3000:]}")
    return output


def project_files(root):
    """All files of the project, also those that are not committed yet."""
    listed = subprocess.run(["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"], check=True,
                            capture_output=True).stdout.decode()
    return sorted({name for name in listed.split("\0") if name and (root / name).is_file()})


def copy_tree(root, names, target):
    """What is the same stays untouched, with what was built from it; what is left of a mutant, or no longer there, goes."""
    for name in names:
        content = (root / name).read_bytes()
        copy = target / name
        if not copy.is_file() or copy.read_bytes() != content:
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(root / name, copy)
    for copy in [path for path in target.rglob("*") if path.is_file()]:
        if str(copy.relative_to(target)) not in names:
            copy.unlink()


class Build:
    def __init__(self, source, folder, jobs):
        self.source = source
        self.folder = folder
        self.jobs = jobs
        self.compile_commands = {}  # by object
        self.objects = {}  # of each program
        self.dependents = {}  # objects that include each file
        self.links = {}
        self.precompiled = {}  # by object, the headers that can be taken instead of being read anew

    def make(self, *settings, targets=("desktop_holder",)):
        """All that the programs are linked from, but not the programs."""
        must(["cmake", "--preset", "mingw", "-S", self.source, "-B", self.folder, "-DTALVENOR_CHECK_PROGRAM=OFF", *settings],
             cwd=self.source)
        inputs = set()
        for program in PROGRAMS:
            inputs |= set(must(["ninja", "-C", self.folder, "-t", "inputs", program]).splitlines())
        made = sorted(name for name in inputs if name.endswith((".obj", ".a", ".res")) and not name.startswith("/"))
        must(["ninja", "-C", self.folder, f"-j{self.jobs}", *made, *targets])

    def learn(self):
        """How each object is compiled and each program is linked."""
        for program, place in PROGRAMS.items():
            commands = must(["ninja", "-C", self.folder, "-t", "commands", program]).splitlines()
            objects = set()
            for line in commands:
                words = shlex.split(line)
                if "-c" in words and "-o" in words and words[words.index("-o") + 1].endswith(".obj"):
                    made = words[words.index("-o") + 1]
                    self.compile_commands[made] = words
                    objects.add(made)
            self.objects[program] = objects
            link = next(line for line in reversed(commands) if f"-o {place}/{program}.exe" in line)
            self.links[program] = self.as_lld(link.removeprefix(": && ").removesuffix(" && :"))
        obj = None
        for line in must(["ninja", "-C", self.folder, "-t", "deps"]).splitlines():
            if line.startswith("    "):
                path = pathlib.Path(line.strip())
                if path.is_relative_to(self.source) and obj in self.compile_commands:
                    self.dependents.setdefault(str(path.relative_to(self.source)), set()).add(obj)
            elif ": #deps" in line:
                obj = line.split(": #deps")[0]

    def precompile(self, texts, folder):
        """The system's headers that several files of the product include, compiled once: most of a compilation is reading
        them. Only for objects that this does not change by a byte."""
        included = collections.Counter(header for text in texts for header in set(SYSTEM_HEADER.findall(text)))
        # This one first: others need it.
        headers = ["<windows.h>"] + [name for name, files in included.most_common() if files > 2 and name != "<windows.h>"]
        by_flags = collections.defaultdict(list)
        for made, words in self.compile_commands.items():
            if "-include" not in words and words[-1].startswith(f"{self.source}/") and words[-1].endswith(".cpp"):
                by_flags[tuple(self.without_outputs(words)[:-2])].append(made)
        folder.mkdir(parents=True, exist_ok=True)
        for number, objects in enumerate(by_flags.values()):
            header = folder / f"{number}.h"
            header.write_text("".join(f"#include {name}\n" for name in headers), encoding="utf-8")
            words = self.without_outputs(self.compile_commands[objects[0]])[:-2]
            if run([*words, "-x", "c++-header", "-o", f"{header}.gch", header], cwd=self.folder)[0] != 0:
                continue
            for made in objects:
                self.precompiled[made] = header
                tried = folder / "tried.obj"
                if self.compile(made, self.source, tried) is not None or \
                        tried.read_bytes() != (self.folder / made).read_bytes():
                    del self.precompiled[made]

    def as_lld(self, link):
        """The same link by LLVM's linker, with the places of what each mutant has of its own."""
        called = must(["bash", "-c", link + " -###"], cwd=self.folder)
        words = shlex.split(next(line for line in called.splitlines() if "collect2" in line))[1:]
        command, skip = ["ld.lld"], False
        for word in words:
            if skip:
                skip = False
            elif UNKNOWN_TO_LLD.match(word):
                skip = "=" not in word
            else:
                command.append(word)
        return command

    def includes(self):
        """The project's own files that each object is compiled from."""
        found = collections.defaultdict(set)
        for file, objects in self.dependents.items():
            for made in objects:
                found[made].add(file)
        return found

    def sources_of(self, program):
        """The project's own files that it is compiled from, by object."""
        own = str(self.source) + "/"
        return {made: self.compile_commands[made][-1].removeprefix(own) for made in self.objects[program]
                if self.compile_commands[made][-1].startswith(own)}

    def compile(self, made, source, target):
        """The object `made` from another copy of the sources. What the compiler says when it does not compile."""
        old, new = str(self.source), str(source)
        words = [word.replace(old + "/", new + "/") if old + "/" in word else re.sub(re.escape(old) + r"(?=$|=)", new, word)
                 for word in self.compile_commands[made]]
        words = self.without_outputs(words)
        if made in self.precompiled:
            words[1:1] = ["-include", str(self.precompiled[made])]
        target.parent.mkdir(parents=True, exist_ok=True)
        code, output = run([*words, "-w", "-o", target], limit=COMPILE_LIMIT_S, cwd=self.folder)
        return None if code == 0 else output

    @staticmethod
    def without_outputs(words):
        words = list(words)
        for option, values in (("-MD", 0), ("-MT", 1), ("-MF", 1), ("-o", 1)):
            if option in words:
                at = words.index(option)
                del words[at:at + 1 + values]
        return words

    def link(self, program, changed, target):
        """`changed`: files to take in place of these objects. The linker's words when it does not link."""
        words = list(self.links[program])
        words[words.index("-o") + 1] = str(target)
        own = []
        for made, replacement in changed.items():
            if made not in self.objects[program]:
                continue
            if made in words:
                words[words.index(made)] = str(replacement)
            else:
                own.append(str(replacement))  # what it defines, no library is asked for
        if own:
            library = next(at for at, word in enumerate(words) if word.endswith(".a") and word.startswith("lib"))
            words[library:library] = own
        code, output = run(words, cwd=self.folder)
        return None if code == 0 else output
