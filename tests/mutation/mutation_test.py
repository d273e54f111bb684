#!/usr/bin/env python3
"""The mutation tool's own test: which mutants a source gives, and what a ledger answers."""
import pathlib
import struct
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import cpp_text  # pylint: disable=wrong-import-position
import ledger  # pylint: disable=wrong-import-position
import lines  # pylint: disable=wrong-import-position
import mutants  # pylint: disable=wrong-import-position
import run  # pylint: disable=wrong-import-position


def mutants_of(code, **others):
    texts = {"a.cpp": code} | {name + ".h": text for name, text in others.items()}
    return [mutant for mutant in mutants.all_mutants(texts) if mutant.file == "a.cpp"]


def changed_lines(code, **others):
    """The lines that the mutants of a body of one function have instead, each mutant's joined."""
    begin, end = "void F() {\n", "\n}\n"
    found = []
    for mutant in mutants_of(begin + code + end, **others):
        text = mutant.applied(begin + code + end)
        found.append(text.removeprefix(begin).removesuffix(end))
    return found


class Generator(unittest.TestCase):
    def test_operators(self):
        self.assertEqual(set(changed_lines("return a == b && c < d + 2;")), {
            "return a != b && c < d + 2;", "return a == b || c < d + 2;", "return a == b && c <= d + 2;",
            "return a == b && c < d - 2;", "return a == b && c < d + 3;", "return a == b && c < d + 1;"})

    def test_types_are_no_operators(self):
        self.assertEqual(changed_lines("const CWindow& window = Item<A>(*this);"), [])
        self.assertEqual(changed_lines("auto&& x = Get();"), [])

    def test_numbers_go_one_up_and_one_down_but_not_below_zero(self):
        self.assertEqual(changed_lines("return 0x10u;"), ["return 0x11u;", "return 0xfu;"])
        self.assertEqual(changed_lines("return 0;"), ["return 1;"])

    def test_ids_keep_their_number(self):
        self.assertEqual(mutants_of("constexpr UINT kTimerId = 2;\n"), [])
        self.assertEqual([mutant.change for mutant in mutants_of("constexpr UINT kPeriodMs = 2;\n")], ["2 -> 3", "2 -> 1"])
        self.assertEqual(mutants_of("enum class Way { In = 1, Out = 2 };\n"), [])

    def test_texts_and_characters(self):
        self.assertEqual(changed_lines('return L"a, b";'), ['return L"a, bx";'])
        self.assertEqual(changed_lines("return L'0';"), ["return L'1';"])
        self.assertEqual(changed_lines("return L'\\0';"), ["return L'x';"])

    def test_comments_includes_and_assertions_stay(self):
        self.assertEqual(mutants_of('// a == b\n#include "x.h"\n/* 1 */\nstatic_assert(1 == 1, "x");\n'), [])

    def test_conditions(self):
        self.assertIn("if (!(IsLate())) return;", changed_lines("if (IsLate()) return;"))
        # The same as the change of the sign.
        self.assertEqual(changed_lines("if (a == b) return;"), ["if (a != b) return;", "if (a == b) ;"])
        self.assertEqual(changed_lines("if (!a) return;"), ["if (a) return;", "if (!a) ;"])
        self.assertIn("if (!(!a && b)) return;", changed_lines("if (!a && b) return;"))
        self.assertIn("if (int row = Row(); !(Good(row))) return;", changed_lines("if (int row = Row(); Good(row)) return;"))
        self.assertEqual(changed_lines("if (auto* x = Get()) return;"), ["if (auto* x = Get()) ;"])

    def test_statements_are_left_out(self):
        self.assertIn(";", changed_lines("Foo(a,\n    b);"))
        self.assertIn(";", changed_lines("m_a.b = c;"))
        self.assertIn(";", changed_lines("++a;"))
        self.assertEqual(changed_lines("CWindow a(b);"), [])
        self.assertEqual(changed_lines("return a;"), [])

    def test_else(self):
        self.assertEqual(set(changed_lines("if (a) {\n} else {\n}")), {
            "if (!(a)) {\n} else {\n}", "if (a) {\n} ", "if (a) {\n}  {\n}"})

    def test_arguments_are_swapped(self):
        self.assertIn("return F(b, a, a);", changed_lines("return F(a, b, a);"))
        self.assertIn("return F(a, a, b);", changed_lines("return F(a, b, a);"))
        self.assertEqual(changed_lines("return F(a, a);"), [])
        self.assertIn("return F(c, G(a, b));", changed_lines("return F(G(a, b), c);"))
        self.assertNotIn("return [](B b, A a) {};", changed_lines("return [](A a, B b) {};"))
        self.assertEqual(mutants_of("void G(int a, int b);\n"), [])

    def test_the_larger_of_two_values_is_the_same_in_either_order(self):
        self.assertEqual(changed_lines("return std::max<int>(a, std::min(b, c));"), [])

    def test_neighbours_are_swapped_where_it_can_matter(self):
        self.assertIn("Bar();\nFoo();", changed_lines("Foo();\nBar();"))
        self.assertIn("Use(a);\na.b = c;", changed_lines("a.b = c;\nUse(a);"))
        self.assertNotIn("a.c = d;\na.b = c;", changed_lines("a.b = c;\na.c = d;"))
        self.assertNotIn("Foo();\na.b = c;", changed_lines("a.b = c;\nFoo();"))
        self.assertNotIn("a.c = Foo();\na.b = c;", changed_lines("a.b = c;\na.c = Foo();"))
        self.assertIn("Foo();\nm_b = c;", changed_lines("m_b = c;\nFoo();"))
        self.assertNotIn("return;\nFoo();", changed_lines("Foo();\nreturn;"))

    def test_choice(self):
        self.assertIn("return a ? c : b;", changed_lines("return a ? b : c;"))

    def test_another_member_of_the_same_type(self):
        declared = "class A {\n    int m_one = 0;\n    int m_two = 0;\n    bool m_three{false};\n    void F() {}\n};\n"
        self.assertIn("return m_two;", changed_lines("return m_one;", a=declared))
        self.assertIn("return m_one;", changed_lines("return m_two;", a=declared))
        self.assertEqual(changed_lines("return m_three;", a=declared), [])

    def test_a_local_name_is_no_member(self):
        declared = "struct A {\n    int one = 0;\n    int two = 0;\n};\n"
        self.assertEqual(changed_lines("return one;", a=declared), [])
        self.assertEqual(changed_lines("return a.one;", a=declared), ["return a.two;"])

    def test_another_constant(self):
        self.assertIn("return Way::Out;", changed_lines("return Way::In;", a="enum class Way { In, Out };\n"))
        first_lines = [text.split("\n")[0] for text in changed_lines("Show(SW_HIDE);\nShow(SW_SHOW);")]
        self.assertIn("Show(SW_SHOW);", first_lines)
        self.assertIn("Show(0);", changed_lines("Show(SW_SHOW);"))

    def test_no_two_are_the_same(self):
        code = "void F() {\n    if (!a) return;\n    Foo(1, 2);\n    Foo(1, 2);\n}\n"
        texts = [mutant.applied(code) for mutant in mutants_of(code)]
        self.assertEqual(len(texts), len(set(texts)))
        self.assertNotIn(code, texts)

    def test_names_tell_equal_lines_apart(self):
        code = "void F() {\n    Foo();\n    x = G();\n    Foo();\n}\n"
        names = [mutant.key() for mutant in mutants_of(code)]
        self.assertEqual(len(names), len(set(names)))
        self.assertIn(("a.cpp", "Foo();", "left out: Foo(); (no. 2)"), names)

    def test_a_removed_else_is_noticed_by_the_branch_above(self):
        code = "void F() {\n    if (a)\n        Foo();\n    else\n        Bar();\n}\n"
        lines = {mutant.change: (mutant.reached_from, mutant.line) for mutant in mutants_of(code)}
        self.assertEqual(lines["else left out before its branch"], (2, 4))
        self.assertEqual(lines["left out: Bar();"], (5, 5))

    def test_sample_does_not_depend_on_other_files(self):
        code = "int F() { return 1 + 2 + 3 + 4; }\n"
        alone = mutants.order_of_sample(mutants_of(code))
        beside = mutants.order_of_sample(mutants_of("// moved by a line\n" + code, b="int G() { return 5; }\n"))
        self.assertEqual([mutant.key() for mutant in alone], [mutant.key() for mutant in beside])


class Text(unittest.TestCase):
    def test_braces(self):
        source = cpp_text.Source("namespace n {\nclass A final : public B {\n    A() : m_a(1), m_b{2} {}\n"
                                 "    int m_c{3};\n};\nenum class E { X };\nint F() { return [&] { return A{4}; }(); }\n}\n")
        self.assertEqual(list(source.kind_of_brace.values()),
                         ["namespace", "class", "values", "block", "values", "enum", "block", "block", "values"])


class Ledger(unittest.TestCase):
    def setUp(self):
        self.mutants = mutants_of("int F() {\n    return 1 + 2;\n}\n")
        self.first = self.mutants[0]

    def read(self, text):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "ledger.toml"
            path.write_text(text, encoding="utf-8")
            return ledger.read(path)

    def test_entry_is_read_as_it_is_offered(self):
        text = ledger.entry(self.first).replace('""', '"a reason"')
        self.assertEqual(self.read(text), {self.first.key(): "a reason"})

    def test_quotes_in_a_line(self):
        mutant = mutants_of("int F() {\n    return L'1' + \"2\";\n}\n")[0]
        self.assertEqual(list(self.read(ledger.entry(mutant).replace('= ""', '= "why"'))), [mutant.key()])

    def test_entry_without_reason_or_twice_is_refused(self):
        entry = ledger.entry(self.first)
        with self.assertRaises(ValueError):
            self.read(entry)
        entry = entry.replace('""', '"why"')
        with self.assertRaises(ValueError):
            self.read(entry + entry)

    def test_survivor_without_entry_fails(self):
        self.assertEqual(len(ledger.problems({}, self.mutants, {self.first: "survived"})), 1)

    def test_survivor_with_entry_is_answered(self):
        self.assertEqual(ledger.problems({self.first.key(): "why"}, self.mutants, {self.first: "survived"}), [])

    def test_entry_that_is_killed_fails(self):
        for verdict in ("killed", "same code", "does not compile"):
            self.assertEqual(len(ledger.problems({self.first.key(): "why"}, self.mutants, {self.first: verdict})), 1)

    def test_entry_that_is_not_tried_is_left_alone(self):
        self.assertEqual(ledger.problems({self.first.key(): "why"}, self.mutants, {}), [])

    def test_entry_without_mutant_fails(self):
        self.assertEqual(len(ledger.problems({("a.cpp", "return 2;", "2 -> 3"): "why"}, self.mutants, {})), 1)


class Lines(unittest.TestCase):
    def test_record(self):
        names = b"A.B\nC.D\n"
        content = struct.pack("<II", 2, len(names)) + names
        content = content.ljust(lines.BLOCKS_AT, b"\0") + struct.pack("<IIII", 1, 0x1000, 2, 0x1010) + b"\0" * 64
        pairs, read = lines.read_record(content)
        self.assertEqual((list(pairs), read), ([(1, 0x1000), (2, 0x1010)], ["A.B", "C.D"]))

    def test_blocks_end_where_the_next_begins(self):
        table = ("a.cpp:\nFile name   Line number\na.cpp  1  0x100  x\na.cpp  2  0x108  x\n./b.h:\nb.h  7  0x120  x\n"
                 "b.h  -  0x130\n")
        runs, units, _ = lines.read_line_table(table, {"a.cpp": "x/a.cpp"})
        blocks = lines.lines_of_blocks(runs, [0x105 + 2, 0x125])
        self.assertEqual(blocks, {0x107: {("x/a.cpp", 1), ("x/a.cpp", 2)}, 0x125: {("b.h", 7)}})
        self.assertEqual(units["b.h", 7], {"x/a.cpp"})

    def test_of_an_inline_function_one_unit_is_in_the_program(self):
        unit = "{0}.cpp:\nFile name   Line number\n{0}.cpp  1  0x140001000  x\n./b.h:\nb.h  7  {1}  x\nb.h  -  {2}\n"
        table = unit.format("a", "0x140001020", "0x140001030") + unit.format("c", "0x20", "0x30")
        _, units, kept = lines.read_line_table(table, {"a.cpp": "a.cpp", "c.cpp": "c.cpp"})
        self.assertEqual(units["b.h", 7], {"a.cpp", "c.cpp"})
        self.assertEqual(kept["b.h", 7], {"a.cpp"})


class Equipment(unittest.TestCase):
    def test_a_header_brings_the_code_of_its_name_and_what_that_includes(self):
        included = {"a_test.cpp": {"a_test.cpp", "x.h"}, "b_test.cpp": {"b_test.cpp"}, "x.cpp": {"x.cpp", "x.h", "y.h"},
                    "y.cpp": {"y.cpp", "y.h", "x.h", "z.h"}, "main.cpp": {"main.cpp", "w.h"}}
        found = run.equipment_of(["a_test.cpp", "b_test.cpp"], included)
        self.assertEqual(found["a_test.cpp"], ["main.cpp", "w.h", "x.cpp", "x.h", "y.cpp", "y.h", "z.h"])
        self.assertEqual(found["b_test.cpp"], ["main.cpp", "w.h"])


if __name__ == "__main__":
    unittest.main()
