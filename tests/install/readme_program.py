#!/usr/bin/env python3
"""readme_program.py README FOLDER: writes each fenced block whose fence names a file (```cpp hello.cpp) there."""

import pathlib
import re
import sys

FENCE = re.compile(r"^```\w+ ([\w.]+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def main():
    text = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    blocks = FENCE.findall(text)
    for name, body in blocks:
        (folder / name).write_text(body, encoding="utf-8")
    return 0 if blocks else 1


if __name__ == "__main__":
    sys.exit(main())
