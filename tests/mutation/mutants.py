"""Mutation sites of the library's sources: where one small fault can be planted.

A site is one change to one line: a comparison turned round, && swapped with
||, + 1 with - 1, ++ with --, a returned true with false, or a whole simple
statement deleted. Sites are found only in code, never inside comments,
string or character literals, or preprocessor lines.
"""

import re
from dataclasses import dataclass
from pathlib import Path

# Operators are matched with the spaces the house style puts round binary
# operators, so that template brackets, includes and shifts are left alone.
_SWAPS = {
    " == ": " != ", " != ": " == ",
    " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
    " && ": " || ", " || ": " && ",
}
_BINARY = re.compile(r" (==|!=|<=|>=|&&|\|\||<|>) ")
_PLUS_MINUS_ONE = re.compile(r" ([+-]) 1(?![\w.'])")
_INCREMENT = re.compile(r"(\+\+|--)")
_RETURN_BOOL = re.compile(r"\breturn (true|false|TRUE|FALSE);")
# A statement worth deleting: a call, an assignment, an increment, a break or
# a continue, whole on one line. Declarations are left alone: deleting them
# only fails to compile.
_STATEMENT = re.compile(
    r"^(?:[\w.\->\[\]*()]+\s*(?:=|\+=|-=|\*=|/=|\|=|&=|<<=|>>=)\s*[^=].*"
    r"|[\w:.\->\[\]*]+\(.*\)"
    r"|(?:\+\+|--)[\w.\->\[\]]+|[\w.\->\[\]]+(?:\+\+|--)"
    r"|break|continue);$")


@dataclass(frozen=True)
class Site:
    path: str      # relative to the tree's root
    line: int      # 1-based
    column: int    # 1-based; 0 for a deleted statement
    before: str
    after: str

    @property
    def key(self):
        # No spaces, so that equivalent.txt can put its reason after the first one.
        if self.column == 0:
            return f"{self.path}:{self.line}:delete"
        change = f"{self.before.strip()}->{self.after.strip()}".replace(" ", "")
        return f"{self.path}:{self.line}:{self.column}:{change}"

    def apply(self, text_lines):
        """The file's lines with this site's fault planted."""
        lines = list(text_lines)
        original = lines[self.line - 1]
        if self.column == 0:
            indent = original[:len(original) - len(original.lstrip())]
            lines[self.line - 1] = indent + ";\n"
        else:
            start = self.column - 1
            assert original[start:start + len(self.before)] == self.before
            lines[self.line - 1] = original[:start] + self.after + original[start + len(self.before):]
        return lines


def code_mask(lines):
    """For each line, the line with comments and literals blanked to spaces."""
    masked, in_block = [], False
    for line in lines:
        out, i, quote = [], 0, None
        while i < len(line):
            c, pair = line[i], line[i:i + 2]
            if in_block:
                if pair == "*/":
                    in_block, i = False, i + 2
                    out.append("  ")
                    continue
                out.append(" " if c != "\n" else c)
            elif quote:
                if c == "\\":
                    out.append("  ")
                    i += 2
                    continue
                if c == quote:
                    quote = None
                out.append(" " if c != "\n" else c)
            elif pair == "//":
                out.append(" " * (len(line) - i - 1) + "\n")
                break
            elif pair == "/*":
                in_block, i = True, i + 2
                out.append("  ")
                continue
            elif c in "\"'" and not (c == "'" and i > 0 and line[i - 1].isalnum()):
                quote = c
                out.append(" ")
            else:
                out.append(c)
            i += 1
        masked.append("".join(out))
    return masked


def _balanced(text):
    return text.count("(") == text.count(")") and text.count("[") == text.count("]")


def sites_in_line(path, number, code):
    """Every site on one masked line of code."""
    stripped = code.strip()
    if not stripped or stripped.startswith("#") or "static_assert" in code or "template" in code:
        return []
    found = []
    for m in _BINARY.finditer(code):
        before = m.group(0)
        found.append(Site(path, number, m.start() + 1, before, _SWAPS[before]))
    for m in _PLUS_MINUS_ONE.finditer(code):
        flipped = " - 1" if m.group(1) == "+" else " + 1"
        found.append(Site(path, number, m.start() + 1, m.group(0), flipped))
    for m in _INCREMENT.finditer(code):
        other = "--" if m.group(1) == "++" else "++"
        found.append(Site(path, number, m.start() + 1, m.group(1), other))
    for m in _RETURN_BOOL.finditer(code):
        other = {"true": "false", "false": "true", "TRUE": "FALSE", "FALSE": "TRUE"}[m.group(1)]
        found.append(Site(path, number, m.start(1) + 1, m.group(1), other))
    if _STATEMENT.match(stripped) and _balanced(stripped) and not stripped.startswith("return"):
        found.append(Site(path, number, 0, stripped, ";"))
    return found


def list_sites(root, patterns):
    """All sites in the library's .cpp files whose path matches a pattern."""
    root = Path(root)
    sites = []
    for file in sorted(root.glob("src/**/*.cpp")):
        rel = file.relative_to(root).as_posix()
        if patterns and not any(rel.startswith(p) or Path(rel).match(p) for p in patterns):
            continue
        lines = file.read_text(encoding="utf-8", errors="surrogateescape").splitlines(keepends=True)
        for number, code in enumerate(code_mask(lines), start=1):
            sites.extend(sites_in_line(rel, number, code))
    return sites
