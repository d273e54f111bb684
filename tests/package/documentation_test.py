#!/usr/bin/env python3
"""What the documentation says of the repository is so: their links and pictures lead somewhere, their commands exist, and the
texts that they quote are the program's own."""
import re
import subprocess
import unittest

import packaged

DOCUMENTS = sorted(path for path in packaged.REPOSITORY.glob("**/*.md")
                if not {"build", "dist"} & set(path.relative_to(packaged.REPOSITORY).parts))
LINK = re.compile(r"\]\((?!https?:)([^)#]+)(?:#([^)]*))?\)")
SCRIPT = re.compile(r"\bscripts/([a-z]+)(?![a-z.])((?: --[a-z-]+)*)")  # not what scripts share, NAME.sh
# What is in code: between fences, or between single marks in a line.
FENCED = re.compile(r"^```.*?^```", re.S | re.M)
QUOTED = re.compile(r"`([^`\n]+)`")


def each_document():
    for document in DOCUMENTS:
        yield document, document.read_text(encoding="utf-8")


class Documents(unittest.TestCase):
    def test_are_found(self):
        self.assertGreaterEqual({document.name for document in DOCUMENTS},
                                {"README.md", "LISEZMOI.md", "CONTRIBUTING.md", "CHANGELOG.md", "architecture.md",
                                 "testing.md", "performance.md"})

    def test_links_lead_somewhere(self):
        count = 0
        for document, text in each_document():
            for target, _ in LINK.findall(QUOTED.sub("", FENCED.sub("", text))):
                count += 1
                self.assertTrue((document.parent / target).exists(), f"{document.name}: {target}")
        self.assertGreater(count, 15)

    def test_scripts_exist_and_take_the_options(self):
        named = set()
        for _, text in each_document():
            for name, options in SCRIPT.findall(text):
                script = packaged.REPOSITORY / "scripts" / name
                self.assertTrue(script.is_file() and script.stat().st_mode & 0o111, name)
                content = script.read_text()
                if name == "mutate":
                    content += (packaged.REPOSITORY / "tests/mutation/run.py").read_text()
                for option in options.split():
                    self.assertTrue(option in content, f"{name} {option}")
                named.add(name)
        self.assertGreaterEqual(named, {"demo", "test"})

    def test_every_script_is_in_the_documents(self):
        documents = "".join(document.read_text(encoding="utf-8") for document in DOCUMENTS)
        for script in (packaged.REPOSITORY / "scripts").iterdir():
            if "." not in script.name:
                self.assertTrue(f"scripts/{script.name}" in documents, script.name)

    def test_files_and_folders_exist(self):
        count = 0
        for _, text in each_document():
            for quoted in QUOTED.findall(FENCED.sub("", text)):
                if re.fullmatch(r"(tests|engine|log|ui|res|docs|benchmarks|cmake)/[\w./]*|scripts/\w+\.sh", quoted):
                    count += 1
                    self.assertTrue((packaged.REPOSITORY / quoted).exists(), quoted)
        self.assertGreater(count, 10)

    def test_presets_exist(self):
        listed = subprocess.run(["cmake", "--list-presets"], cwd=packaged.REPOSITORY, check=True, text=True,
                                capture_output=True).stdout
        for _, text in each_document():
            for preset in re.findall(r"--preset ([\w-]+)", text):
                self.assertIn(f'"{preset}"', listed)


class Readme(unittest.TestCase):
    def test_begins_with_the_demo_and_the_tests(self):
        text = (packaged.REPOSITORY / "README.md").read_text(encoding="utf-8")
        self.assertEqual([name for name, _ in SCRIPT.findall(FENCED.search(text)[0])], ["demo", "test"])


class Guide(unittest.TestCase):
    def test_messages_are_the_programs_own(self):
        guide = (packaged.REPOSITORY / "LISEZMOI.md").read_text(encoding="utf-8")
        table = guide[guide.index("## Les messages"):guide.index("## À propos")]
        resources = (packaged.REPOSITORY / "res/talvenor.rc").read_text(encoding="utf-8").replace("\\r\\n", " ")
        messages = re.findall(r"^\| « (.+?) »", table, re.M)
        self.assertGreaterEqual(len(messages), 6)
        for message in messages:
            self.assertTrue(message.removesuffix("…") in resources, message)


if __name__ == "__main__":
    packaged.main()
