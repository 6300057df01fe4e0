"""The small changes that scripts/mutate makes: C++ text in, changes out. Knows the layout of this project (clang-format:
blanks around comparisons, none around the brackets of templates), which spares a parser."""

import re
from collections import namedtuple

# From `start` to `end` (offsets in the text) stands `after` instead; `kind` names the operator.
Change = namedtuple("Change", "start end after kind")

NOT_A_CALL = {"if", "for", "while", "switch", "return", "catch", "sizeof", "decltype", "static_assert", "defined",
              "alignas", "noexcept", "operator", "connect"}
NOT_A_STATEMENT = ("return", "break", "continue", "throw", "using", "static_assert", "case", "default", "delete",
                   "else", "goto", "co_")


def blanked(text):
    return re.sub(r"[^\n]", " ", text)


def compiled_here(text):
    """The text with what only Windows compiles blanked: nothing here can notice a change of it."""
    def here(match):
        first, other = match.group("first"), match.group("other") or ""
        return blanked(first) + other if match.group("system") == "WIN" else first + blanked(other)

    return re.sub(r"^#ifdef Q_OS_(?P<system>WIN|UNIX)(?P<first>.*?)(?P<other>^#else.*?)?(?=^#endif)",
                  lambda match: match.group()[:match.start("first") - match.start()] + here(match), text,
                  flags=re.DOTALL | re.MULTILINE)


def masked(text):
    """The text with comments, literals, preprocessor lines and what is for another system blanked, offsets and line
    breaks kept."""
    text = compiled_here(text)
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|R"([^(\n]*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#(?:\\\n|[^\n])*',
        re.DOTALL | re.MULTILINE)

    def blank(match):
        whole = match.group()
        if len(whole) > 1 and whole[0] == "'" and match.start() and text[match.start() - 1].isdigit():
            return whole # 32'767
        return re.sub(r"[^\n]", lambda _: "\x01" if whole[0] in "\"'R" else " ", whole)

    return pattern.sub(blank, text)


def closing(text, opening):
    """The offset of the bracket that closes the one at `opening`, or -1."""
    depth = 0
    for at in range(opening, len(text)):
        if text[at] in "([{":
            depth += 1
        elif text[at] in ")]}":
            depth -= 1
            if depth == 0:
                return at
    return -1


def split_arguments(text, start, end):
    """The ranges of the arguments between two brackets, without the blanks around them."""
    pieces, depth, begin = [], 0, start
    for at in range(start, end):
        if text[at] in "([{":
            depth += 1
        elif text[at] in ")]}":
            depth -= 1
        elif text[at] == "," and depth == 0:
            pieces.append((begin, at))
            begin = at + 1
    pieces.append((begin, end))
    stripped = []
    for first, last in pieces:
        piece = text[first:last]
        stripped.append((first + len(piece) - len(piece.lstrip()), last - (len(piece) - len(piece.rstrip()))))
    return stripped


def bodies(code):
    """The ranges of the function bodies: what stands in braces below no other braces but those of namespaces,
    classes and the like."""
    outer, waiting = [], []
    for at, sign in enumerate(code):
        if sign == "{":
            head = code[max(code.rfind(mark, 0, at) for mark in ";{}") + 1:at]
            is_body = not waiting or not waiting[-1][1]
            is_body = is_body and bool(re.search(r"\)[^;{}=]*$", head)) and not re.search(r"\b(namespace|enum)\b", head)
            inside = bool(waiting and waiting[-1][1])
            waiting.append((at, is_body or inside, is_body and not inside))
        elif sign == "}" and waiting:
            opening, _, outermost = waiting.pop()
            if outermost:
                outer.append((opening, at))
    return outer


def negated_conditions(text, code):
    for match in re.finditer(r"\b(?:if|while) \(", code):
        opening = match.end() - 1
        end = closing(code, opening)
        start = max(code.rfind("; ", opening, end) + 2, opening + 1)
        if end > 0:
            yield Change(start, end, f"!({text[start:end]})", "negated condition")


def dropped_negations(_, code):
    for match in re.finditer(r"(?<=[ (])!(?=[\w(:])", code):
        yield Change(match.start(), match.end(), "", "dropped negation")


def dropped_statements(_, code):
    """Calls and assignments; a declaration has to stay."""
    start = r"(?:(?<=[;{})])|(?<=else))\s*\n?\s*"
    name = r"(?:\(\*\w+\)|\*?[A-Za-z_][\w:]*)(?:<[\w:]+>)?(?:\(\)|\[\w+\]|\.\w+|->\w+|::\w+)*"
    for match in re.finditer(start + rf"((?:\+\+|--)?{name})(?= [-+|&]?= |\(|\+\+;|--;|;)", code):
        begin = match.start(1)
        if code.startswith(NOT_A_STATEMENT, begin) or match.group(1) in NOT_A_CALL:
            continue
        end, depth = begin, 0
        while end < len(code) and (code[end] != ";" or depth):
            depth += (code[end] in "([{") - (code[end] in ")]}")
            if depth < 0:
                break
            end += 1
        if end < len(code) and code[end] == ";" and end > begin:
            yield Change(begin, end, "", "dropped statement")


RELATIONS = {" == ": [" != "], " != ": [" == "], " < ": [" <= ", " >= "], " <= ": [" < ", " > "],
             " > ": [" >= ", " <= "], " >= ": [" > ", " < "], " && ": [" || "], " || ": [" && "]}


def changed_relations(_, code):
    for match in re.finditer(r" (?:==|!=|<=|>=|<|>|&&|\|\|) ", code):
        for other in RELATIONS[match.group()]:
            yield Change(match.start(), match.end(), other, "changed relation")


def off_by_one(_, code):
    for match in re.finditer(r" [-+] 1\b(?![.'\w])", code):
        yield Change(match.start(), match.end(), "", "off by one")
    for match in re.finditer(r"(?<=[\w)\]]) ([-+]) (?=[\w(])", code):
        yield Change(match.start(1), match.end(1), "-" if match.group(1) == "+" else "+", "changed sign")


def changed_constants(_, code):
    for match in re.finditer(r"(?<![\w.'])\d+(?![\w.'])", code):
        yield Change(match.start(), match.end(), str(int(match.group()) + 1), "changed constant")
    for match in re.finditer(r"\b(true|false)\b", code):
        yield Change(match.start(), match.end(), "false" if match.group() == "true" else "true", "changed constant")


def changed_texts(text, code):
    for match in re.finditer("\x01+", code):
        if text[match.start()] == '"' and match.end() - match.start() > 2:
            end = match.end() - 1
            yield Change(end, end, "~", "changed text")


def swapped_arguments(text, code):
    for match in re.finditer(r"([A-Za-z_]\w*)\((?!\))", code):
        end = closing(code, match.end() - 1)
        if match.group(1) in NOT_A_CALL or end < 0:
            continue
        arguments = split_arguments(code, match.end(), end)
        for (first, first_end), (second, second_end) in zip(arguments, arguments[1:]):
            one, two = text[first:first_end], text[second:second_end]
            if one != two and len(one) < 80 and len(two) < 80:
                yield Change(first, second_end, two + text[first_end:second] + one, "swapped arguments")


OPERATORS = [negated_conditions, dropped_negations, dropped_statements, changed_relations, off_by_one,
             changed_constants, changed_texts, swapped_arguments]


def changes_of(text):
    """All changes of a source file, in the order of the text: only in the bodies of functions."""
    code = masked(text)
    inside = bodies(code)
    found = {change for operator in OPERATORS for change in operator(text, code)
             if any(start < change.start and change.end <= end for start, end in inside)}
    return sorted(found)


def applied(text, change):
    return text[:change.start] + change.after + text[change.end:]


def line_of(text, change):
    return text.count("\n", 0, change.start) + 1


def shown(text, change):
    """The lines that a change touches, before and after it, each as one line."""
    start = text.rfind("\n", 0, change.start) + 1
    end = text.find("\n", change.end)
    end = len(text) if end < 0 else end
    after = text[start:change.start] + change.after + text[change.end:end]
    return " ".join(text[start:end].split()), " ".join(after.split())
