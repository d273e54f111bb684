#!/usr/bin/env python3
"""The program in the package: what it lets the system protect, what it loads, what it says of itself."""
import re
import subprocess
import xml.etree.ElementTree as ElementTree

import packaged
import pe

HIGH_ENTROPY_ADDRESSES, MOVABLE, DATA_DOES_NOT_RUN, TERMINAL_SERVER_AWARE = 0x20, 0x40, 0x100, 0x8000
FLAGS = HIGH_ENTROPY_ADDRESSES | MOVABLE | DATA_DOES_NOT_RUN | TERMINAL_SERVER_AWARE

ASSEMBLY = "{urn:schemas-microsoft-com:asm.v1}"
TRUST = "{urn:schemas-microsoft-com:asm.v3}"
COMPATIBILITY = "{urn:schemas-microsoft-com:compatibility.v1}"
SETTINGS_2005 = "{http://schemas.microsoft.com/SMI/2005/WindowsSettings}"
WINDOWS_7, WINDOWS_8, WINDOWS_8_1, WINDOWS_10_AND_11 = (
    "{35138b9a-5d96-4fbd-8e2d-a2440225f93a}", "{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}",
    "{1f676c76-80e1-4239-95bb-83d0f6d0da78}", "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}")


class ProgramTest(packaged.PackageTest):
    def setUp(self):
        super().setUp()
        self.path = self.unpack(self.package()) / "Talvenor.exe"
        self.program = pe.Program(self.path)


class Header(ProgramTest):
    """Beside what the check of every link looks at, see below."""

    def test_is_a_64_bit_program_for_windows_7_and_later(self):
        self.assertEqual(self.program.machine, 0x8664)
        self.assertTrue(self.program.characteristics & pe.IS_PROGRAM)
        self.assertFalse(self.program.characteristics & pe.IS_LIBRARY)
        # A higher number would keep it from loading there.
        self.assertLessEqual(self.program.system_version, (6, 1))
        self.assertLessEqual(self.program.subsystem_version, (6, 1))

    def test_can_be_moved(self):
        self.assertNotEqual(self.program.directory_size(pe.RELOCATIONS), 0)
        self.assertFalse(self.program.characteristics & pe.RELOCATIONS_STRIPPED)

    def test_only_one_section_runs(self):
        self.assertEqual([s.name for s in self.program.sections if s.flags & pe.SECTION_RUNS], [".text"])

    def test_carries_no_build_time_no_symbols_and_no_exports(self):
        self.assertEqual(self.program.time, 0)
        self.assertEqual(self.program.symbols, 0)
        self.assertEqual(self.program.directory_size(pe.DEBUG), 0)
        self.assertEqual(self.program.directory_size(pe.EXPORTS), 0)


class BuildCheck(ProgramTest):
    """The check that every link runs accepts the program, and none that is worse."""

    def check(self, content):
        changed = self.folder / "changed.exe"
        changed.write_bytes(content)
        icons = ";".join(str(icon) for icon in sorted((packaged.REPOSITORY / "res").glob("*.ico")))
        return subprocess.run(
            ["cmake", f"-DPROGRAM={changed}", "-DOBJDUMP=x86_64-w64-mingw32-objdump", f"-DICONS={icons}",
             "-P", str(packaged.REPOSITORY / "cmake" / "check_exe.cmake")], text=True, capture_output=True)

    def assert_refused(self, content, reason):
        result = self.check(bytes(content))
        self.assertNotEqual(result.returncode, 0, "accepted")
        self.assertRegex(re.sub(r"\s+", " ", result.stderr), reason)

    def changed(self, offset, value):
        content = bytearray(self.program.bytes)
        content[offset:offset + len(value)] = value
        return content

    def test_accepts_the_program(self):
        result = self.check(self.program.bytes)
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_refuses_it_without_any_one_flag(self):
        for flag in (HIGH_ENTROPY_ADDRESSES, MOVABLE, DATA_DOES_NOT_RUN, TERMINAL_SERVER_AWARE):
            with self.subTest(flag=hex(flag)):
                flags = (FLAGS & ~flag).to_bytes(2, "little")
                self.assert_refused(self.changed(self.program.flags_offset, flags), "DllCharacteristics is")

    def test_refuses_a_console_program(self):
        console = (3).to_bytes(2, "little")
        self.assert_refused(self.changed(self.program.optional_header + 68, console), "Subsystem is 00000003")

    def test_refuses_code_that_can_be_written(self):
        (code,) = (s for s in self.program.sections if s.name == ".text")
        flags = (code.flags | pe.SECTION_IS_WRITTEN).to_bytes(4, "little")
        self.assert_refused(self.changed(code.header + 36, flags), r"both written and run: .*\.text")

    def test_refuses_data_that_can_be_run(self):
        (data,) = (s for s in self.program.sections if s.name == ".data")
        flags = (data.flags | pe.SECTION_RUNS).to_bytes(4, "little")
        self.assert_refused(self.changed(data.header + 36, flags), r"both written and run: .*\.data")

    def test_refuses_another_library(self):
        name = b"ole32.dll\0"
        self.assertEqual(self.program.bytes.count(name), 1)
        self.assert_refused(self.program.bytes.replace(name, b"winmm.dll\0"), "loads .*winmm.dll.* instead of")

    def test_refuses_libraries_that_load_later(self):
        delayed = self.program.optional_header + 112 + 8 * 13
        self.assert_refused(self.changed(delayed, b"\x01\0\0\0\x01\0\0\0"), "libraries that load later")

    def test_refuses_more_bytes_than_it_may_have(self):
        room = 220 * 1024 - len(self.program.bytes)
        self.assert_refused(self.program.bytes + bytes(room + 1), "bytes, more than 225280")

    def test_refuses_more_bytes_than_it_may_have_without_icons(self):
        icons = sum(icon.stat().st_size for icon in (packaged.REPOSITORY / "res").glob("*.ico"))
        room = 64 * 1024 - (len(self.program.bytes) - icons)
        self.assertGreaterEqual(room, 0)
        self.assertEqual(self.check(self.program.bytes + bytes(room)).returncode, 0)
        self.assert_refused(self.program.bytes + bytes(room + 1), "without its icons, more than 65536")


class Manifest(ProgramTest):
    def setUp(self):
        super().setUp()
        manifests = self.program.resources(pe.RT_MANIFEST)
        self.assertEqual(list(manifests), [1])
        self.root = ElementTree.fromstring(manifests[1])

    def settings(self):
        (windows_settings,) = self.root.iter(TRUST + "windowsSettings")
        return {setting.tag: setting.text for setting in windows_settings}

    def test_knows_the_systems_dpi_and_asks_for_nothing_else(self):
        # No longPathAware, and above all no activeCodePage: the log is written in the system's own code page.
        self.assertEqual(self.settings(), {SETTINGS_2005 + "dpiAware": "true"})

    def test_runs_as_whoever_starts_it(self):
        (level,) = self.root.iter(TRUST + "requestedExecutionLevel")
        self.assertEqual(level.attrib, {"level": "asInvoker", "uiAccess": "false"})

    def test_asks_for_common_controls_6_alone(self):
        (dependent,) = self.root.iter(ASSEMBLY + "dependentAssembly")
        (identity,) = dependent
        self.assertEqual(identity.attrib["name"], "Microsoft.Windows.Common-Controls")
        self.assertEqual(identity.attrib["version"], "6.0.0.0")
        self.assertEqual(identity.attrib["publicKeyToken"], "6595b64144ccf1df")

    def test_knows_windows_7_to_11(self):
        systems = [system.attrib["Id"].lower() for system in self.root.iter(COMPATIBILITY + "supportedOS")]
        self.assertEqual(systems, [WINDOWS_7, WINDOWS_8, WINDOWS_8_1, WINDOWS_10_AND_11])

    def test_is_of_the_programs_version(self):
        (identity,) = self.root.findall(ASSEMBLY + "assemblyIdentity")
        self.assertEqual(identity.attrib, {"type": "win32", "name": "Talvenor", "processorArchitecture": "amd64",
                                           "version": packaged.project_version()})

    def test_has_no_part_that_is_not_looked_at_here(self):
        self.assertEqual([part.tag for part in self.root], [
            ASSEMBLY + "assemblyIdentity", ASSEMBLY + "description", ASSEMBLY + "dependency", TRUST + "trustInfo",
            COMPATIBILITY + "compatibility", TRUST + "application"])


class Version(ProgramTest):
    def test_is_that_of_a_release_in_french(self):
        versions = self.program.resources(pe.RT_VERSION)
        release, program, french, utf_16 = 0, 1, 0x040C, 1200
        self.assertEqual(pe.fixed_version(versions[1]), pe.FixedVersion(
            packaged.shipped("kVersion"), packaged.shipped("kVersion"), release, program, (french, utf_16)))
        self.assertEqual(self.program.resource_languages(pe.RT_VERSION), {1: [french]})

    def test_properties_are_complete_and_french(self):
        tables = pe.version_strings(self.program.resources(pe.RT_VERSION)[1])
        self.assertEqual(list(tables), ["040C04B0"], "French, UTF-16")
        version = packaged.project_version()
        strings = tables["040C04B0"]
        self.assertEqual(strings, {
            "CompanyName": "Les auteurs de Talvenor",
            "FileDescription": "Talvenor - conversion de fichiers PDF en DjVu",
            "FileVersion": version,
            "InternalName": "Talvenor",
            "LegalCopyright": "© 2026 Les auteurs de Talvenor. Licence MIT.",
            "OriginalFilename": "Talvenor.exe",
            "ProductName": "Talvenor",
            "ProductVersion": version,
        })


if __name__ == "__main__":
    packaged.main()
