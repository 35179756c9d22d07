"""Ways to make a line of C++ wrong."""

import re
from dataclasses import dataclass


@dataclass(frozen=True)
class Mutant:
    line: int  # from 1
    before: str
    after: str


# The sources are laid out by clang-format: a binary operator has a space on either side, brackets of
# templates have none.
_REPLACEMENTS = [
    (r" == ", " != "), (r" != ", " == "),
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r" &&$", " ||"), (r" \|\|$", " &&"),
    (r" \+ ", " - "), (r" - ", " + "), (r" / ", " * "), (r" % ", " + "),
    (r"(?<![\w>:])!(?=[\w(])", ""),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
]
_BIT = re.compile(r"(?<![\w.'])[01](?![\w.'])")
_CONDITION = re.compile(r"^(\s*(?:\} else )?(?:if|while) \()(.*)(\)(?: \{)?)$")
# A call or an assignment that stands alone: what it assigns to has no type before it.
_STATEMENT = re.compile(r"^\s+(?:Q_EMIT |\(void\))?(?:\+\+|--)?[\w:.>()\[\]*-]+(?:\(.*\)| [-+|&]?= .*)?;$")
_NO_STATEMENT = re.compile(r"^\s+(?:return|break|continue|using|case|default|public|private)\b")
_COMMENT_OR_TEXT = re.compile(r'//.*|"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'')
_NO_CODE = re.compile(r"^\s*(?:#|\*|/\*|template\b|Q_|static_assert)")


def mutants(source):
    """Every way to make one line of a source wrong."""
    lines = source.split("\n")
    for number, line in enumerate(lines, 1):
        if _NO_CODE.match(line) and not line.lstrip().startswith("Q_EMIT"):
            continue
        seen = set()
        for after in _wrong(line, lines[number - 2] if number > 1 else ""):
            if after != line and after not in seen:
                seen.add(after)
                yield Mutant(number, line, after)


def _wrong(line, line_before):
    # As long as the line, but with nothing in comments and texts that an operator could match.
    code = _COMMENT_OR_TEXT.sub(lambda match: "\x00" * len(match.group()), line)
    for pattern, replacement in _REPLACEMENTS:
        for match in re.finditer(pattern, code):
            yield line[:match.start()] + replacement + line[match.end():]
    for match in _BIT.finditer(code):
        yield f"{line[:match.start()]}{1 - int(match.group())}{line[match.end():]}"
    # What has an operator has been turned already, a declaration cannot be.
    if (condition := _CONDITION.match(line)) and not re.search(r"[=<>!;]", condition[2]):
        yield f"{condition[1]}!({condition[2]}){condition[3]}"
    if _is_statement(code.rstrip(" \x00"), line_before):
        yield re.match(r"\s*", line).group() + ";"


def _is_statement(code, line_before):
    before = line_before.split("//")[0].strip()
    begins = (not before or before.endswith((";", "{", "}", ":", "else"))
              or re.match(r"(?:\} else )?(?:if|for|while) \(.*\)$", before))
    return begins and _STATEMENT.match(code) and not _NO_STATEMENT.match(code)
