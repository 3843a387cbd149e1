#!/usr/bin/env python3
"""Feeds the include rules a small sound tree, and one breach of each rule at a time."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).with_name("include_rules.py")

SOUND = {
    "include/QKUILib.h": "#include <platform/types.h>\n#include <qkui/dialog/base.h>\n",
    "include/qkui/dialog/base.h": "#include <platform/types.h>\n#include <qkui/items/base.h>\n",
    "include/qkui/items/base.h": "#include <vector>\n",
    "src/dialog/dialog.h": '#include <platform/types.h>\n#include <vector>\n#include "items/item.h"\n'
                           "class CQKDialog {};\n",
    "src/dialog/dialog.cpp": '#include "dialog/dialog.h"\n#include <qkui/items/base.h>\n#include "list/list.h"\n',
    "src/items/item.h": "#include <cstdint>\n",
    "src/items/item.cpp": '#include "items/item.h"\n#include "dialog/dialog.h"\n',
    "src/list/list.h": '#include "items/item.h"\n',
    "src/list/list.cpp": '#include "list/list.h"\n#include "dialog/dialog.h"\n',
    "src/shell/shell.h": '#include "dialog/dialog.h"\n',
    "src/web/web.h": '#include "dialog/dialog.h"\n',
    "include/platform/types.h": "#include <cstdint>\n",
    "include/platform/window.h": "#include <platform/types.h>\n",
    "platform/base/table.h": "#include <platform/types.h>\n",
    "platform/graphics/surface.cpp": '#include "platform/base/table.h"\n#include <cairo.h>\n',
    "platform/window/x11/system.h": "#include <xcb/xcb.h>\n",
    "platform/window/x11/system.cpp": '#include "platform/window/x11/system.h"\n',
    "platform/window/headless/screen.h": "\n",
    "tests/x11/peer.cpp": "#include <xcb/xcb.h>\n",
    "tests/dialog/test.cpp": '#include "src/dialog/dialog.h"\n#include <gtest/gtest.h>\n',
    "examples/gallery/skin_maker.cpp": "#include <cairo.h>\n",
    "examples/gallery/main.cpp": "#include <QKUILib.h>\n",
}

# file, a line put into it, what the report says of it
BREACHES = [
    ("src/items/item.h", '#include "dialog/dialog.h"', "items/ may not include"),
    ("src/items/item.h", '#include "list/list.h"', "items/ may not include"),
    ("src/items/item.cpp", '#include "list/list.h"', "items/ may not include"),
    ("src/list/list.h", '#include "dialog/dialog.h"', "list/ may not include"),
    ("src/list/list.h", '#include "../dialog/dialog.h"', "list/ may not include"),
    ("src/dialog/dialog.cpp", '#include "shell/shell.h"', "dialog/ may not include"),
    ("src/shell/shell.h", '#include "web/web.h"', "shell/ may not include"),
    ("src/shell/shell.h", '#include "items/item.h"', "shell/ may not include"),
    ("src/web/web.h", '#include "list/list.h"', "web/ may not include"),
    ("src/dialog/dialog.cpp", "#include <cairo.h>", "src/ may include only its own headers"),
    ("src/dialog/dialog.cpp", "#  include <unistd.h>", "src/ may include only its own headers"),
    ("src/dialog/dialog.cpp", "#include <sys/stat.h>", "src/ may include only its own headers"),
    ("src/dialog/dialog.cpp", '#include "platform/base/table.h"', "is no header of src/"),
    ("src/dialog/dialog.cpp", '#include "../platform/base/table.h"', "is no header of src/"),
    ("src/dialog/dialog.cpp", '#include "src/items/item.h"', "is no header of src/"),
    ("src/dialog/dialog.cpp", "#include <platform/base/table.h>", "is no public header of platform/"),
    ("examples/gallery/main.cpp", "#include <platform/base/table.h>", "is no public header of platform/"),
    ("src/items/item.cpp", "#include <qkui/list/list.h>", "src/ may include only its own headers"),
    ("include/QKUILib.h", "#include <glib.h>", "hosts see include/ and the standard library only"),
    ("include/qkui/dialog/base.h", '#include "dialog/dialog.h"', "hosts see include/ and the standard library only"),
    ("include/qkui/items/base.h", "#include <qkui/dialog/base.h>", "items/ may not include"),
    ("include/platform/types.h", "class CQKDialog;", "must not know the name CQKDialog"),
    ("platform/base/table.h", '#include "dialog/dialog.h"', "may not include dialog/dialog.h of the product"),
    ("platform/base/table.h", "#include <QKUILib.h>", "may not include QKUILib.h of the product"),
    ("platform/base/table.h", "class CQKDialog;", "must not know the name CQKDialog"),
    ("platform/base/table.h", "enum QK_STATUS : int;", "must not know the name QK_STATUS"),
    ("include/platform/window.h", "#include <cairo.h>", "public headers of platform/ may include only"),
    ("include/platform/window.h", '#include "platform/base/table.h"', "public headers of platform/ may include only"),
    ("platform/base/table.h", '#include "platform/window/x11/system.h"', "belongs to a backend"),
    ("platform/window/headless/screen.h", '#include "platform/window/x11/system.h"', "belongs to a backend"),
    ("platform/window/x11/system.cpp", '#include "../headless/screen.h"', "belongs to a backend"),
    ("examples/gallery/main.cpp", '#include "platform/window/headless/screen.h"', "belongs to a backend"),
    ("examples/gallery/main.cpp", "#include <cairo.h>", "only platform/ speaks to the library"),
    ("tests/dialog/test.cpp", "#include <pango/pangocairo.h>", "only platform/ speaks to the library"),
]


class IncludeRules(unittest.TestCase):
    def check(self, tree):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in tree.items():
                file = pathlib.Path(folder, name)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text, encoding="utf-8")
            return subprocess.run([sys.executable, CHECK, folder], capture_output=True, text=True, check=False)

    def test_sound_tree_passes(self):
        outcome = self.check(SOUND)
        self.assertEqual((outcome.returncode, outcome.stdout), (0, ""), outcome.stderr)

    def test_nothing_to_check_fails(self):
        self.assertEqual(self.check({"readme": ""}).returncode, 1)

    def test_each_breach_is_found_where_it_stands(self):
        for file, line, report in BREACHES:
            with self.subTest(file=file, line=line):
                outcome = self.check(SOUND | {file: SOUND[file] + line + "\n"})
                self.assertEqual(outcome.returncode, 1)
                found = outcome.stdout.splitlines()
                self.assertTrue(found and all(text.startswith(f"{file}:") for text in found), outcome.stdout)
                self.assertIn(report, outcome.stdout)
                self.assertIn(f"{file}:{SOUND[file].count(chr(10)) + 1}:", outcome.stdout)


if __name__ == "__main__":
    unittest.main()
