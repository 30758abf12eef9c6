#!/usr/bin/env python3
"""Which texts are found in sources, and what stops the search."""
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests/support"), str(ROOT / "translation/texts")]
import named_cases
from cpp_source import Mistake, Source
from source_texts import Search

LOOKUP = """
const WideString& TranslationCatalogue::Translate(const WideString& text) { return Find(text); }
bool ReadsArgumentsOf(const WCHAR* original, const WCHAR* format) { return original == format; }
int Show(HWND owner, const WideString& text) { return Box(owner, catalogue.Translate(text)); }
int ShowFormat(HWND owner, const WCHAR* format, ...) {
    const WideString& shown = catalogue.Translate(format);
    return ReadsArgumentsOf(format, shown.c_str()) ? 1 : 0;
}
"""


def search(code, handing_on=(), **others):
    """`others`: the text of the file b.cpp as b, of b.h as b_h."""
    files = {"lookup.cpp": LOOKUP, "a.cpp": code,
             **{f"{name[0]}.{'h' if name.endswith('_h') else 'cpp'}": text for name, text in others.items()}}
    return Search([Source(path, text) for path, text in files.items()], set(handing_on)).run()


def texts(code, **others):
    return [found.text for found in search(code, **others)]


def body(statements):
    return f"void f(HWND owner, bool is, const WCHAR* given) {{\n{statements}\n}}\n"


class Literals(unittest.TestCase):
    def test_every_kind_of_wide_literal_is_a_text(self):
        self.assertEqual(["a", "b", "c"], texts(body('Show(0, L"a"); Show(0, TEXT("b")); Show(0, u"c");')))

    def test_pieces_are_joined(self):
        self.assertEqual(["one two three"], texts(body('Show(0, TEXT("one " "two ")\n TEXT("three"));')))

    def test_escapes_stand_for_their_characters(self):
        self.assertEqual(['"\\\n\t\u00eb\u20acA'], texts(body(r'Show(0, L"\"\\\n\t\x00EB\u20AC\101");')))

    def test_comments_and_other_literals_are_none(self):
        self.assertEqual(["// ) ("], texts(body('// Show(0, L"x")\n/* Show(0, L"y") */\n'
                                                "char c = '\"'; Show(1'000, L\"// ) (\");")))

    def test_the_place_is_that_of_the_literal(self):
        found = search(body('Show(owner,\n     TEXT("a")\n     TEXT("b"));'))
        self.assertEqual([("a.cpp", 3)], [(each.file, each.line) for each in found])


class Expressions(unittest.TestCase):
    def test_constants_of_the_file_the_function_and_headers_are_followed(self):
        self.assertEqual(["a", "b", "c", "d", "e"], texts(
            'namespace {\nconstexpr const WCHAR* one = TEXT("a");\nconst WideString two{TEXT("b")};\n}\n'
            + body('const WCHAR three[] = TEXT("c"); Show(0, one); Show(0, two); Show(0, three);\n'
                   "Show(0, names::four); Show(0, Sample::five);"),
            b_h='inline constexpr const WCHAR* four = TEXT("d");\n'
                'class Sample { static constexpr WCHAR five[] = TEXT("e"); };'))

    def test_a_constant_of_the_function_hides_that_of_the_file(self):
        self.assertEqual(["inner"], texts('const WCHAR x[] = L"outer";\n'
                                          + body('const WCHAR x[] = L"inner"; Show(0, x);')))

    def test_both_sides_of_choices_are_followed(self):
        self.assertEqual(["a", "b", "c"], texts(body('Show(0, is ? L"a" : (owner ? L"b" : L"c"));')))

    def test_conversions_are_no_matter(self):
        self.assertEqual(["a", "b", "c"], texts(body(
            'Show(0, WideString(L"a")); Show(0, WideString{TEXT("b")}.c_str()); Show(0, (L"c"));')))


class Functions(unittest.TestCase):
    def test_functions_that_pass_a_text_on_are_followed(self):
        self.assertEqual(["a", "b"], texts(
            "bool Refuse(HWND owner, const WCHAR* text) { Show(owner, text); return false; }\n"
            "void Sample::Tell(const WCHAR* text) const { Refuse(window, is ? text : TEXT(\"a\")); }\n"
            + body('object.Tell(L"b");')))

    def test_what_is_not_passed_on_is_no_text(self):
        self.assertEqual(["b"], texts("void Tell(const WCHAR* name, const WCHAR* text) {\n"
                                      "    Log(name);\n    Show(0, text);\n}\n"
                                      + body('Tell(L"a", L"b"); Log(L"c");')))

    def test_functions_of_one_file_are_told_apart(self):
        shows = "void Tell(const WCHAR* text) { Show(0, text); }"
        logs = "void Tell(const WCHAR* text) { Log(text); }"
        for local in ("namespace {{\n{}\n}}\n", "static {}\n"):
            self.assertEqual(["a"], texts(local.format(shows) + body('Tell(L"a");'),
                                          b=local.format(logs) + body('Tell(L"b");')))

    def test_functions_of_one_name_are_told_apart_by_their_parameters(self):
        self.assertEqual(["b"], texts("void Tell(const WCHAR* text) { Log(text); }\n"
                                      "void Tell(int flags, const WCHAR* text) { Show(0, text); }\n"
                                      + body('Tell(L"a"); Tell(1, L"b");')))

    def test_declarations_classes_and_initialisers_are_no_calls(self):
        self.assertEqual(["a", "b"], texts(
            "int Show(HWND owner, const WideString& text);\nstruct Sample final : Base<int> {\npublic:\n"
            "    Sample(int x) : Base(x), value{x} { Show(0, TEXT(\"a\")); }\n"
            "    void Show(const WCHAR* text);\n    int value = {1};\n};\n"
            "enum class Kind : int { One, Two };\nconst int table[] = {1, 2};\n"
            "template <class T> bool operator==(const T& a, const T& b) { return Show(0, L\"b\") == 1; }\n"))

    def test_calls_in_initialisers_of_variables_are_found(self):
        self.assertEqual(["a", "b"], texts('int shown = Show(nullptr, L"a");\n'
                                           'Sample object(Show(0, L"b"));\n'))

    def test_calls_in_braces_outside_of_functions_are_found(self):
        self.assertEqual(["a", "b", "c"], texts(
            'const WideString one{catalogue.Translate(L"a")};\n'
            'class Sample { WideString two{catalogue.Translate(L"b")}; };\n'
            'const bool three = [] { Show(0, L"c"); return true; }();\n'))

    def test_a_call_may_leave_defaults_out(self):
        self.assertEqual(["a"], texts(
            "void Tell(const WCHAR* text, int flags) { Show(0, text); }\nvoid Tell(int) {}\n"
            + body('Tell(L"a");'), b_h="void Tell(const WCHAR* text, int flags = 0);"))

    def test_a_function_of_the_file_hides_no_method(self):
        self.assertEqual(["a"], texts("static void Tell(int x) { Log(x); }\n" + body('x.Tell(L"a");'),
                                      b_h="class B { void Tell(const WCHAR* text) { Show(0, text); } };"))

    def test_functions_that_hand_on_other_texts_may_have_texts_of_their_own(self):
        found = search(body('Show(0, buffer); Show(0, L"a");'), handing_on=["f"])
        self.assertEqual(["a"], [each.text for each in found])

    def test_lambdas_belong_to_the_function_around_them(self):
        self.assertEqual(["a"], texts("void Tell(const WCHAR* text) { Run([&] { Show(0, text); }); }\n"
                                      + body('Run([] { Tell(L"a"); });')))


class Kinds(unittest.TestCase):
    def test_formats_are_those_that_are_compared_with_their_translation(self):
        found = search("void Tell(const WCHAR* text, int n) { ShowFormat(0, text, n); }\n"
                       + body('Tell(L"%d", 1); Show(0, L"100 %"); ShowFormat(0, L"%s", 2);'))
        self.assertEqual([("%d", True), ("100 %", False), ("%s", True)],
                         [(each.text, each.is_format) for each in found])

    def test_the_title_is_what_is_set_as_such(self):
        found = search(body('SetMessageBoxCaption(catalogue.Translate(L"a"));\n'
                            'Log(catalogue.Translate(L"b"));'))
        self.assertEqual([("a", True), ("b", False)], [(each.text, each.is_title) for each in found])


class Mistakes(unittest.TestCase):
    def refusal(self, code, **others):
        with self.assertRaises(Mistake) as raised:
            search(code, **others)
        return str(raised.exception)

    def cannot_follow(self, words, line=2):
        return (f"a.cpp:{line}: error: the text that is shown cannot be followed from '{words}' to a "
                "literal; write a literal, a constant or a choice of them")

    def test_what_is_computed_cannot_be_followed(self):
        self.assertEqual(self.cannot_follow("Make(1)"), self.refusal(body("Show(0, Make(1));")))
        self.assertEqual(self.cannot_follow('L"a"+name'), self.refusal(body('Show(0, L"a" + name);')))

    def test_variables_that_may_change_cannot_be_followed(self):
        self.assertEqual(self.cannot_follow("text"),
                         self.refusal(body('const WCHAR* text = L"a"; Show(0, text);')))
        self.assertEqual(self.cannot_follow("entry.text"), self.refusal(body("Show(0, entry.text);")))

    def test_one_side_of_a_choice_that_cannot_be_followed_is_enough(self):
        self.assertEqual(self.cannot_follow("x"), self.refusal(body('Show(0, is ? L"a" : x);')))

    def test_a_parameter_that_is_given_another_value_is_not_followed(self):
        self.assertEqual("a.cpp:3: error: 'given', which is shown, is given another value at line 2",
                         self.refusal(body('if (is) given = L"a";\nShow(0, given);')))

    def test_a_parameter_may_be_compared(self):
        self.assertEqual([], texts(body("if (given == 0 || given != owner) return; Show(0, given);")))

    def test_a_parameter_that_is_changed_is_not_followed(self):
        for change in ('given.append(L"a");', "++given;", "given++;", 'given += L"a";'):
            with self.subTest(change):
                self.assertEqual("a.cpp:3: error: 'given', which is shown, is given another value at line 2",
                                 self.refusal(body(change + "\nShow(0, given);")))

    def test_a_parameter_whose_name_a_variable_has_is_not_followed(self):
        self.assertEqual("a.cpp:2: error: 'given', which is shown, may be the variable at line 2; give it a "
                         "name of its own",
                         self.refusal(body("for (const auto& given : list) Show(0, given);")))

    def test_a_name_that_two_things_have_is_not_followed(self):
        constant = 'const WCHAR text[] = L"a";'
        for name, code, header in (
                ("blocks", body(f"if (is) {{ {constant} }} else {{ {constant} Show(0, text); }}"), ""),
                ("a variable", constant + body("WideString text = Make(); Show(0, text);"), ""),
                ("a parameter", constant + body("Run([](const WideString& text) { Show(0, text); });"), ""),
                ("a range", constant + body("for (const auto& text : list) Show(0, text);"), ""),
                ("a binding", constant + body("const auto& [number, text] = pair; Show(0, text);"), ""),
                ("a member", constant + body("Show(0, text);"), "class B { const WCHAR* text; };"),
                ("a header", constant + body("Show(0, text);"),
                 'class B { static constexpr WCHAR text[] = L"b"; };')):
            with self.subTest(name):
                self.assertIn("cannot be followed from 'text'", self.refusal(code, b_h=header))

    def test_a_member_that_a_constructor_may_set_is_not_followed(self):
        self.assertEqual(self.cannot_follow("text", 1), self.refusal(
            'class A { A() : text(L"b") {} const WideString text = L"a"; void f() { Show(0, text); } };'))

    def test_a_lambda_with_a_parameter_of_that_name_is_not_followed(self):
        self.assertEqual("a.cpp:2: error: 'given', which is shown, may be the parameter of the lambda at "
                         "line 2; give it a name of its own",
                         self.refusal(body('Run([](const WCHAR* given) { Show(0, given); }, L"a");')))

    def test_a_macro_hides_no_call(self):
        self.assertEqual("a.cpp:1: error: a macro hides a call of Show, which shows a text",
                         self.refusal('#define SAY(x) \\\n    Show(0, x)\n'))

    def test_a_constructor_shows_nothing(self):
        self.assertIn("a constructor, Sample, shows its argument",
                      self.refusal("class Sample { Sample(const WCHAR* text) { Show(0, text); } };\n"))

    def test_a_pack_of_arguments_hides_all_but_the_first(self):
        self.assertEqual("a.cpp:1: error: ShowAll shows a pack of arguments; let it have one text",
                         self.refusal("template <class... T> void ShowAll(int n, T... texts) "
                                      "{ (Show(n, texts), ...); }\n"))

    def test_an_operator_shows_nothing(self):
        self.assertEqual("a.cpp:1: error: an operator shows its argument; let a function that has a name",
                         self.refusal("void operator<<(Out&, const WCHAR* text) { Show(0, text); }\n"))

    def test_a_function_that_shows_is_in_no_table(self):
        self.assertEqual("a.cpp:1: error: Show, which shows a text, is not called but handed on",
                         self.refusal('constexpr Command commands[] = {{L"a", Show}};'))

    def test_a_function_that_shows_is_called_and_not_handed_on(self):
        self.assertEqual("a.cpp:2: error: Show, which shows a text, is not called but handed on",
                         self.refusal(body("auto show = &Show;")))

    def test_a_text_that_is_left_to_a_default_is_not_found(self):
        self.assertEqual("a.cpp:2: error: Show is called without the text that it shows",
                         self.refusal(body("Show(0);")))

    def test_raw_strings_are_not_read(self):
        self.assertEqual("a.cpp:1: error: a raw string cannot be read here",
                         self.refusal('auto x = LR"(a)";'))

    def test_functions_that_hand_on_other_texts_are_named(self):
        self.assertEqual([], search(body("Show(0, buffer);"), handing_on=["f"]))
        self.assertIn("no source defines g any more", self.refusal("", handing_on=["g"]))

    def test_the_search_has_to_begin_somewhere(self):
        with self.assertRaises(Mistake) as raised:
            Search([Source("a.cpp", "")], set()).run()
        self.assertIn("no source defines TranslationCatalogue::Translate", str(raised.exception))


if __name__ == "__main__":
    named_cases.main()
