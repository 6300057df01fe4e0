"""What scripts/mutate changes, and what it leaves alone."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from mutation import operators  # noqa: E402


def body(lines):
    return "void f() {\n" + lines + "\n}\n"


class Operators(unittest.TestCase):
    def after(self, lines, kind):
        """What one kind of change makes of the lines of a function."""
        text = body(lines)
        return [operators.applied(text, change)[len("void f() {\n"):-len("\n}\n")]
                for change in operators.changes_of(text) if change.kind == kind]

    def test_negates_the_whole_condition(self):
        self.assertEqual(self.after("if (a(b) && c)\n    d();", "negated condition"), ["if (!(a(b) && c))\n    d();"])

    def test_negates_only_the_condition_behind_an_initialiser(self):
        self.assertEqual(self.after("if (auto a = b(); a)\n    c();", "negated condition"),
                         ["if (auto a = b(); !(a))\n    c();"])

    def test_leaves_what_the_compiler_decides(self):
        self.assertEqual(self.after("if constexpr (a)\n    b();", "negated condition"), [])

    def test_drops_a_negation_but_no_inequality(self):
        self.assertEqual(self.after("return !a && b != c;", "dropped negation"), ["return a && b != c;"])

    def test_drops_calls_assignments_and_steps(self):
        for statement in ("a(1, 2)", "a->b.c(\n    [&] { d(); })", "a = b", "a += b", "++a", "a.b()->c(d)", "a::b(c)",
                          "a_[i] = 1"):
            self.assertIn(";", self.after(statement + ";", "dropped statement"), statement)

    def test_drops_the_statement_of_a_condition_and_of_else(self):
        self.assertEqual(self.after("if (a)\n    b();\nelse\n    c();", "dropped statement"),
                         ["if (a)\n    ;\nelse\n    c();", "if (a)\n    b();\nelse\n    ;"])

    def test_keeps_declarations_and_returns(self):
        for statement in ("int a = 1;", "const auto a = b();", "return a();", "QString a(b);", "std::vector<int> a;",
                          "using A = B;"):
            self.assertEqual(self.after(statement, "dropped statement"), [], statement)

    def test_moves_borders_and_turns_comparisons(self):
        self.assertEqual(self.after("return a < b;", "changed relation"), ["return a <= b;", "return a >= b;"])
        self.assertEqual(self.after("return a == b;", "changed relation"), ["return a != b;"])
        self.assertEqual(self.after("return a && b;", "changed relation"), ["return a || b;"])

    def test_takes_no_template_for_a_comparison(self):
        self.assertEqual(self.after("std::vector<int> a;", "changed relation"), [])

    def test_leaves_out_a_step_of_one(self):
        self.assertEqual(self.after("return a - 1;", "off by one"), ["return a;"])
        self.assertEqual(self.after("return a - 10;", "off by one"), [])
        self.assertEqual(self.after("return a - b;", "changed sign"), ["return a + b;"])

    def test_changes_constants(self):
        self.assertEqual(self.after("return 9;", "changed constant"), ["return 10;"])
        self.assertEqual(self.after("return true;", "changed constant"), ["return false;"])
        self.assertEqual(self.after("return a1 + 0x1F + 1.5 + 32'767;", "changed constant"), [])

    def test_changes_texts_but_not_what_stands_in_them(self):
        line = 'a = u"if (b < 1) \\" c();"_s;'
        self.assertEqual(self.after(line, "changed text"), ['a = u"if (b < 1) \\" c();~"_s;'])
        self.assertEqual(self.after(line, "negated condition"), [])
        self.assertEqual(self.after(line, "changed relation"), [])

    def test_swaps_neighbouring_arguments(self):
        self.assertEqual(self.after("return a(b, c(d), e);", "swapped arguments"),
                         ["return a(c(d), b, e);", "return a(b, e, c(d));"])
        self.assertEqual(self.after("return a(b, b);", "swapped arguments"), [])

    def test_leaves_comments_alone(self):
        text = body("// if (a < 1) b();\n/* c(d, e);\n   f = 1; */")
        self.assertEqual(operators.changes_of(text), [])

    def test_leaves_what_only_another_system_compiles(self):
        shown = [operators.shown(text, change)[0] for text in (
            body("#ifdef Q_OS_WIN\na();\n#else\nb();\n#endif\nc();"),
            "#ifdef Q_OS_UNIX\n" + body("d();") + "#else\n" + body("e();") + "#endif\n" + body("f();"),
            body("#ifdef EDQUOT\ng();\n#endif")) for change in operators.changes_of(text)]
        self.assertEqual(shown, ["b();", "c();", "d();", "f();", "g();"])

    def test_changes_nothing_outside_functions(self):
        text = ("#include <a.h>\nnamespace a {\nconstexpr int b = 1;\nenum class C { D = 1 };\n"
                "struct E {\n    int f = 1;\n};\nint g(int h, int i);\n}\n")
        self.assertEqual(operators.changes_of(text), [])

    def test_finds_the_bodies_in_namespaces_and_behind_initialisers(self):
        text = "namespace a {\nnamespace {\nB::B(int c) : d_(c) {\n    e();\n}\n}\n}\n"
        self.assertEqual([operators.shown(text, change)[0] for change in operators.changes_of(text)], ["e();"])

    def test_shows_the_line_before_and_after(self):
        text = body("a();\nif (b)\n    c();")
        change = next(change for change in operators.changes_of(text) if change.kind == "negated condition")
        self.assertEqual(operators.line_of(text, change), 3)
        self.assertEqual(operators.shown(text, change), ("if (b)", "if (!(b))"))


if __name__ == "__main__":
    unittest.main()
