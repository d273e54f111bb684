#!/usr/bin/env python3
"""The resources in the program: which there are, the dialogs control by control in tab order, icons, accelerators."""
import struct
import unittest
from collections import Counter, namedtuple

import packaged
import pe

# The system's numbers of styles.
POPUP, CHILD, VISIBLE, DISABLED = 0x80000000, 0x40000000, 0x10000000, 0x08000000
CAPTION, BORDER, SYSTEM_MENU = 0x00C00000, 0x00800000, 0x00080000
MINIMISE_BOX = GROUP = 0x00020000  # the one of windows, the other of controls
TAB_STOP = 0x00010000
MODAL_FRAME, SET_FONT = 0x80, 0x40
PUSH, DEFAULT_PUSH, AUTO_CHECK, GROUP_BOX, OF_AN_ICON, NOTIFY = 0, 1, 3, 7, 0x40, 0x4000
RIGHT, SCROLLS, DIGITS = 0x2, 0x80, 0x2000
CENTERED, RIGHT_ALIGNED, ICON, NO_PREFIX, CENTERED_IMAGE, ELLIPSIS = 1, 2, 3, 0x80, 0x200, 0x4000
REPORT, ONE_ROW, SELECTION_STAYS, LEFT_ALIGNED, TITLES_ARE_NO_BUTTONS = 0x1, 0x4, 0x8, 0x800, 0x8000
TRANSPARENT, ACCEPTS_FILES = 0x20, 0x10

BUTTON = CHILD | VISIBLE | TAB_STOP | PUSH
DEFAULT_BUTTON = CHILD | VISIBLE | TAB_STOP | DEFAULT_PUSH
CHECK_BOX = CHILD | VISIBLE | TAB_STOP | AUTO_CHECK
EDIT = CHILD | VISIBLE | TAB_STOP | BORDER | SCROLLS
FRAME = CHILD | VISIBLE | GROUP_BOX
LABEL = CHILD | VISIBLE | GROUP
PICTURE = CHILD | VISIBLE | ICON | CENTERED_IMAGE
# Names of files are shown as they are: "&" marks no letter in them.
STATUS_LINE = CHILD | VISIBLE | BORDER | ELLIPSIS | NO_PREFIX
LIST = CHILD | VISIBLE | TAB_STOP | BORDER | REPORT | ONE_ROW | SELECTION_STAYS | LEFT_ALIGNED | TITLES_ARE_NO_BUTTONS

SMALL_DIALOG = POPUP | CAPTION | SYSTEM_MENU | MODAL_FRAME | SET_FONT

Frame = namedtuple("Frame", "title width height style extended menu window_class points font")
Control = namedtuple("Control", "id kind text place style extended help extra", defaults=(0, 0, 0))

NO_NUMBER = -1

MAIN_WINDOW = [
    Control(1, "Button", "   Convertir ", (361, 149, 75, 28), DEFAULT_BUTTON | DISABLED),
    Control(2, "Button", "Quitter", (456, 163, 50, 14), BUTTON),
    Control(57664, "Button", "À propos...", (456, 4, 50, 14), BUTTON),
    Control(1003, "Button", "  Ajouter des PDF...", (69, 4, 92, 15), BUTTON),
    Control(1004, "Static", "", (7, 180, 499, 9), STATUS_LINE),
    Control(1005, "Button", "  Vider la liste", (217, 4, 75, 15), BUTTON),
    Control(1034, "Button", "Pages :", (357, 22, 39, 10), CHECK_BOX | NOTIFY),
    Control(1014, "Edit", "", (407, 21, 74, 12), EDIT | DISABLED, TRANSPARENT),
    Control(1033, "Button", "DPI (-d) : ", (357, 36, 46, 10), CHECK_BOX | NOTIFY),
    Control(1032, "Edit", "", (407, 35, 32, 12), EDIT | DIGITS | RIGHT | DISABLED),
    Control(NO_NUMBER, "Static", "(72 - 6000)", (448, 36, 37, 8), LABEL),
    Control(1017, "Button", "Pas de métadonnées (--no-metadata)", (357, 48, 141, 10), CHECK_BOX),
    Control(1036, "Button", "Pas de TdM (--no-outline)", (357, 59, 101, 10), CHECK_BOX),
    Control(1037, "Button", "Pas de liens hypertexte (--no-hyperlinks)", (357, 70, 149, 10), CHECK_BOX),
    Control(1015, "Button", "Ignorer la couche texte (--no-text)", (357, 81, 129, 10), CHECK_BOX),
    Control(1016, "Button", "Texte par lignes (--lines)", (357, 92, 96, 10), CHECK_BOX),
    Control(1030, "Button", "Monochrome", (357, 103, 61, 10), CHECK_BOX),
    Control(NO_NUMBER, "Button", "Options supplémentaires", (356, 115, 150, 28), FRAME),
    Control(1018, "Edit", "", (360, 126, 139, 12), EDIT),
    Control(1019, "Button", "Masquer la sortie", (7, 152, 73, 10), CHECK_BOX),
    Control(1022, "Button", "Ouvrir le dossier de destination", (229, 153, 120, 14), BUTTON | DISABLED),
    Control(1024, "Button", "Ouvrir le journal...", (147, 153, 73, 14), BUTTON & ~VISIBLE | DISABLED),
    Control(1027, "Edit", "", (144, 139, 179, 12), EDIT | DISABLED),
    Control(1028, "Button", "...", (328, 139, 21, 13), BUTTON | OF_AN_ICON | DISABLED),
    Control(1026, "Button", "Convertir les DjVu dans ce dossier :", (7, 140, 132, 10), CHECK_BOX),
    Control(1038, "Button", "Éteindre l'ordinateur", (7, 165, 84, 10), CHECK_BOX),
    Control(1040, "SysListView32", "", (7, 22, 341, 116), LIST, ACCEPTS_FILES),
]
COUNTDOWN = [
    Control(1, "Button", "Éteindre immédiatement", (7, 59, 93, 14), DEFAULT_BUTTON),
    Control(2, "Button", "Annuler", (136, 59, 50, 14), BUTTON),
    Control(NO_NUMBER, "Static", "L'ordinateur s'éteindra dans ", (7, 8, 97, 10), LABEL),
    Control(1039, "Static", "30", (105, 8, 12, 8), LABEL | RIGHT_ALIGNED),
    Control(NO_NUMBER, "Static", "secondes", (127, 8, 31, 8), LABEL),
    Control(NO_NUMBER, "Static", "(Des applications ouvertes avec des données non  sauvegardées peuvent empêcher "
            "l'extinction.)", (7, 22, 179, 25), LABEL),
]
ABOUT_BOX = [
    Control(1, "Button", "OK", (130, 81, 50, 14), DEFAULT_BUTTON),
    Control(NO_NUMBER, "Button", "", (7, 7, 115, 88), FRAME),
    Control(NO_NUMBER, "Static", "#128", (51, 17, 20, 20), PICTURE),
    Control(NO_NUMBER, "Static", "Talvenor ", (7, 44, 114, 10), LABEL | CENTERED),
    Control(1021, "Static", "Static", (7, 56, 113, 8), LABEL | CENTERED),
    Control(NO_NUMBER, "Static", "Une interface graphique pour pdf2djvu Win32\nUtilisation libre", (18, 68, 93, 26),
            LABEL | CENTERED),
]

# Predefined classes also go by numbers, and none by upper or lower case.
CLASSES = ["Button", "Edit", "Static", "ListBox", "ScrollBar", "ComboBox", "SysListView32"]
FIRST_CLASS = 0x80


class Reader:
    """Takes values one after another out of a resource."""

    def __init__(self, content):
        self.content, self.position = content, 0

    def take(self, form):
        values = struct.unpack_from("<" + form, self.content, self.position)
        self.position += struct.calcsize("<" + form)
        return values if len(values) > 1 else values[0]

    def text(self):
        units = []
        while unit := self.take("H"):
            units.append(unit)
        return struct.pack(f"<{len(units)}H", *units).decode("utf-16-le")

    def text_or_number(self):
        """A text, or "#" and a number."""
        if self.content[self.position:self.position + 2] != b"\xff\xff":
            return self.text()
        return "#%d" % self.take("2H")[1]

    def window_class(self):
        name = self.text_or_number()
        if name.startswith("#"):
            return CLASSES[int(name[1:]) - FIRST_CLASS]
        return {known.lower(): known for known in CLASSES}.get(name.lower(), name)

    def control(self):
        self.position = (self.position + 3) & ~3
        help_id, extended, style, *place, number = self.take("3I4hi")
        kind, text, extra = self.window_class(), self.text_or_number(), self.take("H")
        self.position += extra
        return Control(number, kind, text, tuple(place), style, extended, help_id, extra)

    def dialog(self):
        """A template of the extended kind: the window, and its controls in tab order."""
        version, signature, _, extended, style, count, _, _, width, height = self.take("2H3IH4h")
        assert (version, signature) == (1, 0xFFFF), "not an extended dialog template"
        menu, window_class, title = self.text_or_number(), self.text_or_number(), self.text_or_number()
        points, _, _, _ = self.take("2H2B")
        frame = Frame(title, width, height, style, extended, menu, window_class, points, self.text())
        return frame, [self.control() for _ in range(count)]


class ResourceTest(unittest.TestCase):
    def setUp(self):
        self.program = pe.Program(packaged.program_under_test)


class Numbers(ResourceTest):
    def test_are_fixed(self):
        numbers = {kind: sorted(self.program.resources(kind)) for kind in self.program.resource_kinds()}
        self.assertGreater(len(numbers.pop(pe.RT_ICON)), 0)
        self.assertEqual(numbers, {
            pe.RT_DIALOG: [100, 101, 102], pe.RT_GROUP_ICON: [128, 207, 208, 212, 213], pe.RT_STRING: [9, 10, 13, 3585],
            pe.RT_ACCELERATOR: [128], pe.RT_MANIFEST: [1], pe.RT_VERSION: [1]})

    def test_are_of_no_language(self):
        for kind in (pe.RT_DIALOG, pe.RT_GROUP_ICON, pe.RT_STRING):
            for number, languages in self.program.resource_languages(kind).items():
                self.assertEqual(languages, [0], (kind, number))


class Dialogs(ResourceTest):
    maxDiff = None

    def check(self, number, title, width, height, style, controls):
        frame, found = Reader(self.program.resources(pe.RT_DIALOG)[number]).dialog()
        self.assertEqual(frame, Frame(title, width, height, style, 0, "", "", 9, "Segoe UI"))
        self.assertEqual(found, controls)

    def test_main_window_is_an_overlapped_one_with_a_minimise_box(self):
        # Neither popup nor visible, and nothing that sizes or centres it.
        self.check(102, "Talvenor", 513, 189, CAPTION | SYSTEM_MENU | MINIMISE_BOX | SET_FONT, MAIN_WINDOW)

    def test_countdown_is_a_small_dialog(self):
        self.check(101, "Extinction de l'ordinateur", 193, 80, SMALL_DIALOG, COUNTDOWN)

    def test_about_box_is_a_small_dialog(self):
        self.check(100, "À propos...", 187, 102, SMALL_DIALOG, ABOUT_BOX)


class Icons(ResourceTest):
    @staticmethod
    def width(picture):
        """As the picture itself says it: a PNG file or a bitmap's header."""
        if picture[1:4] == b"PNG":
            return struct.unpack_from(">I", picture, 16)[0]
        return struct.unpack_from("<I", picture, 4)[0]

    def test_are_drawn_in_full_colour_in_every_size_that_is_shown(self):
        pictures = self.program.resources(pe.RT_ICON)
        for group, content in self.program.resources(pe.RT_GROUP_ICON).items():
            reader = Reader(content)
            _, _, count = reader.take("3H")
            sizes = []
            for _ in range(count):
                width, height, _, _, _, bits, _, number = reader.take("4B2HIH")
                size = width or 256  # one byte holds no 256
                self.assertEqual((height or 256, bits), (size, 32), (group, size))
                self.assertEqual(self.width(pictures[number]), size, group)
                sizes.append(size)
            self.assertEqual(sorted(sizes), [16, 20, 24, 32, 40, 48, 64, 256], group)


class Accelerators(ResourceTest):
    def test_are_seven_keys_for_the_four_edit_commands(self):
        last, by_virtual_key = 0x80, 0x1
        entries = list(struct.iter_unpack("<4H", self.program.resources(pe.RT_ACCELERATOR)[128]))
        self.assertEqual([bool(flags & last) for flags, *_ in entries], 6 * [False] + [True])
        self.assertTrue(all(flags & by_virtual_key for flags, *_ in entries))
        # Copy, cut and paste by two keys each, undo by one.
        self.assertEqual(Counter(command for _, _, command, _ in entries), {57634: 2, 57635: 2, 57637: 2, 57643: 1})


if __name__ == "__main__":
    packaged.main()
