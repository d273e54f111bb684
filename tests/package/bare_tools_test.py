#!/usr/bin/env python3
"""The program builds as the README says for MSYS2: without our toolchain files, with tools under their plain
names, and with nothing else to be found. The result is the same program, byte for byte."""
import os
import shutil
import subprocess

import packaged

CROSS = "x86_64-w64-mingw32-"
TOOLS = {"gcc": "gcc-posix", "g++": "g++-posix",
         **{name: name for name in ("ar", "as", "dlltool", "ld", "nm", "objcopy", "objdump", "ranlib", "strip", "windres")}}
NATIVE = ("cmake", "ninja")


class BareTools(packaged.PackageTest):
    def test_build_is_the_same_program(self):
        tools = self.folder / "bin"
        tools.mkdir()
        for name, tool in TOOLS.items():
            os.symlink(shutil.which(CROSS + tool), tools / name)
        for name in NATIVE:
            os.symlink(shutil.which(name), tools / name)
        environment = {"PATH": str(tools), "HOME": str(self.folder)}
        build = self.folder / "build"
        # The system's name, because this machine has another; on Windows CMake knows it.
        self.run_tool(["cmake", "-S", packaged.REPOSITORY, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                       "-DTALVENOR_TESTS=OFF", "-DCMAKE_SYSTEM_NAME=Windows"], environment)
        self.run_tool(["cmake", "--build", build], environment)
        self.assertEqual((build / "Talvenor.exe").read_bytes(), packaged.program_under_test.read_bytes())

    def run_tool(self, command, environment):
        result = subprocess.run([str(word) for word in command], env=environment, text=True, capture_output=True)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)


if __name__ == "__main__":
    packaged.main()
