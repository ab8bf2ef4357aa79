# SPDX-License-Identifier: MIT
"""The mutators on sources of a line or two, the sample and the list of equivalents."""

import unittest

from equivalents import Entry, Equivalents, ListError, parse
from mutators import mutants_of
from sampling import LEAST_PER_SUBSYSTEM, in_order, quotas


def changes(text):
    """What the mutants make of a source, each as its whole changed text."""
    return sorted(mutant.applied_to(text) for mutant in mutants_of("src/part/file.cpp", text))


class Mutators(unittest.TestCase):
    def assert_changes(self, text, *expected):
        self.assertEqual(changes(text), sorted(expected))

    def test_binary_operators(self):
        self.assert_changes("x = a + b;", "x = a - b;")
        self.assert_changes("x = a << b;", "x = a >> b;")
        self.assert_changes("x = a && b;", "x = a || b;")
        self.assert_changes("x %= a;", "x *= a;")

    def test_comparisons_are_moved_and_negated(self):
        self.assert_changes("x = a < b;", "x = a <= b;", "x = a >= b;")
        self.assert_changes("x = a == b;", "x = a != b;")

    def test_operators_at_the_end_of_a_line(self):
        self.assert_changes("x = a\n    && b;", "x = a\n    || b;")

    def test_signs_are_removed(self):
        self.assert_changes("x = -a;", "x = a;")
        self.assert_changes("x = !a;", "x = a;")
        self.assert_changes("{ f(-a, !b, ~c); }", "{ ; }",
                            "{ f(a, !b, ~c); }", "{ f(-a, b, ~c); }", "{ f(-a, !b, c); }")

    def test_steps(self):
        self.assert_changes("{ ++x; }", "{ --x; }")

    def test_integers(self):
        self.assert_changes("x = 7;", "x = 8;", "x = 0;")
        self.assert_changes("x = 0;", "x = 1;")
        self.assert_changes("x = 0xFFU;", "x = 0x100U;", "x = 0U;")
        self.assert_changes("x = 010;", "x = 9;", "x = 0;")
        self.assert_changes("x = 1'000;", "x = 1001;", "x = 0;")

    def test_floating_constants(self):
        self.assert_changes("x = 1.5;", "x = (1.5 + 1);", "x = 0.0;")
        self.assert_changes("x = 0.0F;", "x = (0.0F + 1);")
        self.assert_changes("x = 1e-3;", "x = (1e-3 + 1);", "x = 0.0;")

    def test_truth_values(self):
        self.assert_changes("x = true;", "x = false;")

    def test_literals(self):
        self.assert_changes('x = "a";', 'x = "";')
        self.assert_changes('x = u"a\\"b";', 'x = u"";')
        self.assert_changes('x = "";')
        self.assert_changes("x = u'a';", "x = u'\\1';")
        self.assert_changes('x = QT_TRANSLATE_NOOP("Context", "a");', 'x = QT_TRANSLATE_NOOP("Context", "");')

    def test_return_values(self):
        self.assert_changes("return a;", "return {};")
        self.assert_changes("return a < b;", "return {};", "return a <= b;", "return a >= b;")
        self.assert_changes("return [&] { return a; }();", "return {};", "return [&] { return {}; }();")
        self.assert_changes("return {};")
        self.assert_changes("return;")
        self.assert_changes("return QString();")

    def test_conditions(self):
        self.assert_changes("if (a)\n    b = c;", "if (!(a))\n    b = c;", "if (false && (a))\n    b = c;")
        self.assert_changes("while (!a)\n    b = c;",
                            "while (a)\n    b = c;", "while (false && (!a))\n    b = c;")
        self.assert_changes("if (const auto a = b)\n    c = d;")

    def test_calls_are_removed(self):
        self.assert_changes("{ f(a); }", "{ ; }")
        self.assert_changes("{ a.b()->c<d>(e); }", "{ ; }")
        self.assert_changes("{ std::f(a); }", "{ ; }")
        self.assert_changes("else f(a);", "else ;")
        self.assert_changes("for (;;) f(a);", "for (;;) ;")

    def test_declarations_are_no_calls(self):
        self.assert_changes("{ QString a(b); }")
        self.assert_changes("{ Q_UNUSED(a); }")
        self.assert_changes("{ x = f(a); }")

    def test_ternaries_are_swapped(self):
        self.assert_changes("x = a ? b : c;", "x = a ? (c) : (b);")
        self.assert_changes("f(y = a ? b : c ? d : e);",
                            "f(y = a ? (c ? d : e) : (b));", "f(y = a ? b : c ? (e) : (d));")

    def test_what_is_no_code_stays(self):
        self.assert_changes("// a + 1")
        self.assert_changes("/* a + 1\n * b */ x = y;")
        self.assert_changes("#define A (1 + 2) \\\n    + 3\n#if A > 1\n#endif\n")
        self.assert_changes('x = R"(a + 1)" + y;', 'x = R"(a + 1)" - y;')
        self.assert_changes('static_assert(sizeof(a) == 4 && b, "text");')

    def test_declarators_and_templates_are_no_operators(self):
        self.assert_changes("const T &a = b;")
        self.assert_changes("T *const a = *b;")
        self.assert_changes("T &&a = b;")
        self.assert_changes("std::array<T, 3> a;")
        self.assert_changes("QMap<A, QList<B>> a;")
        self.assert_changes("bool operator<(const T &a, const T &b);")
        self.assert_changes("template<int n = 1> void f();")
        self.assert_changes("x = f<2>(a) - b;", "x = f<2>(a) + b;")

    def test_line_and_single_blanks(self):
        mutant = mutants_of("src/part/file.cpp", "x =\n    a   *  b;\n")[0]
        self.assertEqual((mutant.line, mutant.original, mutant.changed), (2, "a * b;", "a / b;"))
        self.assertEqual(mutant.subsystem, "part")

    def test_identity_knows_no_line_number(self):
        first = mutants_of("src/part/file.cpp", "x = a * b;\n")
        moved = mutants_of("src/part/file.cpp", "// new\n\nx = a * b;\n")
        self.assertEqual([m.identity for m in first], [m.identity for m in moved])

    def test_identity_tells_equal_lines_apart(self):
        mutants = mutants_of("src/part/file.cpp", "x = a * b;\nx = a * b;\n")
        self.assertEqual(len({mutant.identity for mutant in mutants}), 2)


class Sample(unittest.TestCase):
    def setUp(self):
        self.text = "".join(f"x{i} = a{i} < b{i};\n" for i in range(50))

    def mutants(self, text):
        return mutants_of("src/part/file.cpp", text)

    def test_order_depends_on_the_seed_alone(self):
        mutants = self.mutants(self.text)
        self.assertEqual(in_order(mutants, "1"), in_order(list(reversed(mutants)), "1"))
        self.assertNotEqual(in_order(mutants, "1"), in_order(mutants, "2"))

    def test_every_line_is_tried_once_before_any_is_twice(self):
        first = in_order(self.mutants(self.text), "1")[:50]
        self.assertEqual(len({mutant.line for mutant in first}), 50)

    def test_an_edit_elsewhere_keeps_the_order(self):
        before = [m.identity for m in in_order(self.mutants(self.text), "1")]
        after = [m.identity for m in in_order(self.mutants("y = c + d;\n" + self.text), "1")]
        self.assertEqual(before, [identity for identity in after if "y = " not in identity])

    def test_quotas(self):
        self.assertEqual(quotas({"a": 1000, "b": 1000}, 600), {"a": 300, "b": 300})
        wanted = quotas({"big": 5000, "middle": 500, "small": 60, "tiny": 3}, 600)
        self.assertEqual(sum(wanted.values()), 600)
        self.assertGreaterEqual(wanted["small"], LEAST_PER_SUBSYSTEM)
        self.assertEqual(wanted["tiny"], 3)
        self.assertGreater(wanted["big"], wanted["middle"])
        self.assertEqual(quotas({"a": 4, "b": 5}, 600), {"a": 4, "b": 5})


class EquivalentList(unittest.TestCase):
    TEXT = "# comment\n\nsrc/part/file.cpp\n- x = a * b;\n+ x = a / b;\n  Since b is one,\n  it is.\n"

    def test_parse(self):
        entry = Entry("src/part/file.cpp", "x = a * b;", "x = a / b;", "Since b is one, it is.")
        self.assertEqual(parse(self.TEXT), [entry])
        self.assertEqual(parse("# nothing\n"), [])

    def test_incomplete_and_repeated_entries_are_refused(self):
        for text in ("src/part/file.cpp\n- a\n+ b\n", "a\nb\nc\nd\n", self.TEXT + "\n" + self.TEXT):
            with self.assertRaises(ListError):
                parse(text)

    def test_entries_match_wherever_the_line_stands(self):
        equivalents = Equivalents(parse(self.TEXT))
        mutants = mutants_of("src/part/file.cpp", "\n\n  x = a * b;\n")
        self.assertEqual([equivalents.reason(mutant) for mutant in mutants], ["Since b is one, it is."])
        self.assertEqual(equivalents.stale(mutants), [])

    def test_entries_of_other_files_and_lines_do_not_match(self):
        equivalents = Equivalents(parse(self.TEXT))
        mutants = mutants_of("src/part/other.cpp", "x = a * b;")
        mutants += mutants_of("src/part/file.cpp", "x = a * c;")
        self.assertEqual([equivalents.reason(mutant) for mutant in mutants], [None, None])
        self.assertEqual(len(equivalents.stale(mutants)), 1)


if __name__ == "__main__":
    unittest.main()
