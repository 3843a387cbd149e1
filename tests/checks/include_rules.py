#!/usr/bin/env python3
"""Holds the tree to its layers: include_rules.py ROOT prints each breach and fails if there is one.

    include/    what hosts see: includes only itself and the standard library
    src/        own headers and <qkui/...> (by the table below), <platform/...>, the standard library
    platform/   knows nothing of src/ and no QK name; include/platform is its public API
    backends    (window/headless, window/x11, html/webkit) are included by nobody but themselves
    libraries   (cairo, xcb, glib, ...) are included by platform/ alone
"""

import pathlib
import re
import sys

# Which folders of src/, and of include/qkui/, the files of a folder of either may include from. Files at the
# top may include all.
MAY_INCLUDE = {
    "items": {"items"},
    "list": {"list", "items"},
    "dialog": {"dialog", "items", "list"},
    "shell": {"shell", "dialog"},
    "web": {"web", "dialog"},
}
# The dialog's member functions that live beside the items and the list need the dialog in their sources.
SOURCES_MAY_INCLUDE = {"items": {"dialog"}, "list": {"dialog"}}

BACKENDS = ("platform/window/headless/", "platform/window/x11/", "platform/html/webkit/")
PLATFORM_API = "include/platform/"
PUBLIC = "include/"

# What may speak to a library itself: tests that play an X peer, or look into the module over that library, the
# measurement beside that library, and the gallery's maker of pictures; and a host that reads folders, which is
# no business of platform/.
LIBRARY_USERS = ("tests/x11/", "tests/graphics/", "bench/web_bench", "examples/gallery/skin", "examples/desktop/")
LIBRARIES = re.compile(
    r"(cairo|pango|glib|gio|gdk|gtk|webkit|JavaScriptCore|curl|xcb|X11|xkbcommon|fontconfig|freetype|harfbuzz"
    r"|gif_lib|jpeglib|jerror|png|zlib)\b"
)

FOLDERS = ("include", "src", "platform", "examples", "tests", "bench", "fuzz")
SUFFIXES = {".h", ".cpp"}
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)
QK_NAME = re.compile(r"\bC?QK\w*")
STANDARD = re.compile(r"[a-z_0-9]+$")  # <vector>, <cstdint>: no dot, no slash


class Checker:
    def __init__(self, root):
        self.root = root
        self.breaches = []

    def report(self, path, line, text):
        self.breaches.append(f"{path}:{line}: {text}")

    def run(self):
        for folder in FOLDERS:
            for file in sorted((self.root / folder).rglob("*")):
                if file.suffix in SUFFIXES and file.is_file():
                    self.check(file)
        return self.breaches

    def check(self, file):
        path = file.relative_to(self.root).as_posix()
        text = file.read_text(encoding="utf-8", errors="replace")
        if path.startswith(("platform/", PLATFORM_API)):
            for match in QK_NAME.finditer(text):
                self.report(path, line_of(text, match), f"platform/ must not know the name {match[0]}")
        for match in INCLUDE.finditer(text):
            self.check_include(file, path, line_of(text, match), match[1] == "<", match[2])

    def check_include(self, file, path, line, angled, name):
        target = self.resolve(file, path, angled, name)
        for backend in BACKENDS:
            if target.startswith(backend) and not path.startswith((backend, "tests/")):
                self.report(path, line, f"{name} belongs to a backend, which nobody else may include")
        outside = path.startswith(("src/", "examples/", PUBLIC))
        if outside and name.startswith("platform/") and angled and not target.startswith(PLATFORM_API):
            self.report(path, line, f"<{name}> is no public header of platform/")
        if path.startswith("src/"):
            self.check_source(path, line, angled, name, target)
            self.check_layer(path, line, name, target)
        elif path.startswith(PLATFORM_API):
            if not (angled and (STANDARD.match(name) or name.startswith("platform/"))):
                self.report(path, line, f"public headers of platform/ may include only <platform/...> and the"
                                        f" standard library, not {name}")
        elif path.startswith(PUBLIC):
            if not (target.startswith(PUBLIC) or (angled and STANDARD.match(name))):
                self.report(path, line, f"hosts see include/ and the standard library only, not {name}")
            self.check_layer(path, line, name, target)
        elif path.startswith("platform/"):
            if target.startswith(("src/", "include/qkui/", "include/QKUILib.h")):
                self.report(path, line, f"platform/ may not include {name} of the product")
        if LIBRARIES.match(name) and not path.startswith(("platform/",) + LIBRARY_USERS):
            self.report(path, line, f"only platform/ speaks to the library of {name}")

    def check_source(self, path, line, angled, name, target):
        if angled:
            if not (STANDARD.match(name) or target.startswith(PUBLIC)):
                self.report(path, line, f"src/ may include only its own headers, <platform/...> and the"
                                        f" standard library, not <{name}>")
            return
        if not target.startswith("src/"):
            self.report(path, line, f'"{name}" is no header of src/ (name it relative to src/)')

    def check_layer(self, path, line, name, target):
        folder, other = layer(path), layer(target)
        if folder is None or other is None:
            return
        allowed = set(MAY_INCLUDE.get(folder, {folder}))
        if path.endswith(".cpp"):
            allowed |= SOURCES_MAY_INCLUDE.get(folder, set())
        if other not in allowed:
            self.report(path, line, f"{folder}/ may not include {name}")

    def resolve(self, file, path, angled, name):
        """The file that an include means, relative to the root; the empty string when it is none of ours."""
        places = [] if angled else [file.parent]
        places += [self.root / "include", self.root / "include/customary", self.root / "src", self.root]
        if path.startswith("src/"):
            places.pop()  # one way to name what is in src/: from there
        for place in places:
            candidate = place / name
            if candidate.is_file():
                inside = candidate.resolve()
                if self.root in inside.parents:
                    return inside.relative_to(self.root).as_posix()
        return ""


def line_of(text, match):
    return text.count("\n", 0, match.start()) + 1


def layer(path):
    """The folder under src/ or include/qkui/ that a file lies in; None for one at the top or elsewhere."""
    match = re.match(r"(?:src|include/qkui)/([^/]+)/", path)
    return match and match[1]


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    breaches = Checker(root).run()
    for breach in breaches:
        print(breach)
    if not breaches and not any((root / folder).is_dir() for folder in ("src", "platform")):
        print(f"{root} holds neither src/ nor platform/: nothing was checked")
        return 1
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
