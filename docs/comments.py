#!/usr/bin/env python3
"""comments.py HEADER: prints a header with its plain comments turned into Doxygen's.

A comment before a declaration belongs to it, and to its overloads and other accessors where they follow
without a blank line or another comment between; one behind a declaration belongs to that; the first of a file
is the file's. Comments inside function bodies stay as they are. For Markdown pages, the file name behind a code fence goes.
"""

import os
import pathlib
import re
import sys

SCOPE = re.compile(r"\b(namespace|class|struct|union|enum|extern)\b(?!.*\))")
ENUM = re.compile(r"\benum\b")
LITERAL = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'')
# Markup to Doxygen, plain characters to us.
SPECIAL = re.compile(r"(`[^`]*`)|([\\@<>#&%])")
FENCE = re.compile(r"^(```\w+) [\w.]+$", re.MULTILINE)


def escaped(text):
    return SPECIAL.sub(lambda match: match[1] or "\\" + match[2], text)


def split(line):
    """Code and comment of a line; the comment is None without one."""
    masked = LITERAL.sub(lambda match: "_" * len(match[0]), line)
    at = masked.find("//")
    return (masked, line, None) if at < 0 else (masked[:at], line[:at], line[at + 2 :])


def subject(declaration):
    """What a function's name is about: without the verb of an accessor. Empty for what is no function."""
    name = re.match(r"[^(=]*?(\w+)\s*\(", declaration)
    return re.sub(r"^(Set|Get|Is)(?=[A-Z])", "", name[1]) if name else ""


def related(first, second):
    """Overloads, pairs of accessors, and accessors of things whose names begin alike."""
    return bool(first) and (first == second or len(os.path.commonprefix([first, second])) >= 6)


class Header:
    def __init__(self, text):
        self.lines = [split(line) for line in text.splitlines()]
        self.scopes = self.find_scopes()

    def find_scopes(self):
        """For each line, what encloses its start: a list of "scope", "enum" and "code"."""
        found, stack, head = [], [], ""
        for masked, _, _ in self.lines:
            found.append(list(stack))
            if masked.lstrip().startswith("#"):
                continue
            for character in masked + " ":
                if character == "{":
                    kind = "enum" if ENUM.search(head) else "scope" if SCOPE.search(head) else "code"
                    stack.append("code" if "code" in stack else kind)
                elif character == "}" and stack:
                    stack.pop()
                head = "" if character in "{};" else head + character
        return found

    def is_comment(self, i):
        masked, _, comment = self.lines[i]
        return comment is not None and not masked.strip()

    def declarations(self, i):
        """The end of the declarations from a line on that one comment is for, and how many they are."""
        depth, count, head, first, start = len(self.scopes[i]), 0, "", "", i
        if self.scopes[i][-1:] == ["enum"] or SCOPE.search(self.lines[i][0]):
            return i, 0
        while i < len(self.lines):
            masked, _, comment = self.lines[i]
            if len(self.scopes[i]) == depth and (not masked.strip() or masked.lstrip()[:1] in "#}"
                                                 or masked.rstrip().endswith(":")):
                break
            head += masked
            i += 1
            after = len(self.scopes[i]) if i < len(self.lines) else 0
            if after == depth and masked.rstrip()[-1:] in (";", "}"):
                name = subject(head)
                if count and not related(first, name):
                    break
                first, count, head, start = first or name, count + 1, "", i
        return start, count

    def convert(self):
        result, close, i = [], -1, 0
        while i < len(self.lines):
            if i == close:
                result.append("///@}")
            if self.is_comment(i):
                end = i
                while end < len(self.lines) and self.is_comment(end):
                    end += 1
                result += self.block(i, end)
                if end < len(self.lines) and result[-1].lstrip().startswith("///"):
                    after, count = self.declarations(end)
                    if count > 1 and i > 0:
                        result.insert(len(result) - (end - i), "///@{")
                        close = after
                i = end
                continue
            masked, code, comment = self.lines[i]
            if comment is not None and masked.rstrip()[-1:] in (";", ",", "}") and "code" not in self.scopes[i]:
                result.append(code + "///<" + escaped(comment))
            elif comment is not None:
                result.append(code + "//" + comment)
            else:
                result.append(code)
            i += 1
        if close == i:
            result.append("///@}")
        return "\n".join(result) + "\n"

    def block(self, start, end):
        indent = self.lines[start][1]
        comments = [self.lines[i][2] for i in range(start, end)]
        following = self.lines[end][0].strip() if end < len(self.lines) else ""
        if start == 0:
            return ["/// @file"] + ["///" + escaped(comment) for comment in comments]
        belongs = following and not following.startswith("}") and not following.endswith(":")
        if not belongs or "code" in self.scopes[start]:
            return [indent + "//" + comment for comment in comments]
        return [indent + "///" + escaped(comment) for comment in comments]


def main():
    path = pathlib.Path(sys.argv[1])
    text = path.read_text(encoding="utf-8")
    sys.stdout.write(FENCE.sub(r"\1", text) if path.suffix == ".md" else Header(text).convert())


if __name__ == "__main__":
    main()
