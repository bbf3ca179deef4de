#!/usr/bin/env python3
"""Checks that nothing of a person's is shown as markup: names of files may look like it.

    plain_text.py SOURCE_FOLDER

Labels and tool tips of widgets are made plain by PlainTexts (src/app). What that cannot reach is looked for here: texts set
as markup, and tool tips of items and tabs that do not go through a function which escapes them or through a translation.
"""

import pathlib
import re
import sys

MARKUP = re.compile(r"\b(?:setHtml|insertHtml|appendHtml|QTextBrowser|Qt::RichText|Qt::MarkdownText|Qt::AutoText)\b")
# The text about the program, which holds nothing of anybody else's, and the place that makes labels plain.
MAY_HOLD_MARKUP = {"app/help/about.cpp", "app/window/plain_texts.cpp", "app/window/plain_texts.h"}
ITEM_TIP = re.compile(r"setToolTip\(\d+,|setTabToolTip\(|setItemData\([^;]*ToolTipRole|case Qt::ToolTipRole:|== Qt::ToolTipRole\)")
ESCAPED = re.compile(r"plainToolTip\(|toolTipText\(|toolTipOf\(|Velmora::tr\(")
LINES_THAT_MAY_ESCAPE = 3


def main():
    root = pathlib.Path(sys.argv[1])
    files = [file for file in sorted(root.rglob("*")) if file.suffix in (".h", ".cpp")]
    if not files:
        sys.exit("no sources")
    found = 0
    for file in files:
        lines = file.read_text(encoding="utf-8").splitlines()
        for number, line in enumerate(lines, 1):
            code = line.split("//")[0]
            tip = ITEM_TIP.search(code) and not ESCAPED.search("\n".join(lines[number - 1:number - 1 + LINES_THAT_MAY_ESCAPE]))
            markup = MARKUP.search(code) and file.relative_to(root).as_posix() not in MAY_HOLD_MARKUP
            if tip or markup:
                print(f"{file}:{number}: {'a tool tip that may be markup' if tip else 'markup'}: {line.strip()}")
                found += 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
