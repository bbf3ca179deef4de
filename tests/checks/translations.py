#!/usr/bin/env python3
"""Checks that every text of the program has a finished Chinese translation of the same shape.

    translations.py LUPDATE SOURCE_FOLDER TRANSLATION.ts
"""

import collections
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

PLACEHOLDER = re.compile(r"%(?:L?\d+|n)")
MNEMONIC = re.compile(r"(?<!&)&([^\s&;])(?!\w+;)")


def messages(path):
    """(context, source, comment) -> list of translations, None where there is none or it is unfinished."""
    result = {}
    for context in xml.etree.ElementTree.parse(path).getroot().iter("context"):
        name = context.findtext("name")
        for message in context.iter("message"):
            translation = message.find("translation")
            forms = [form.text or "" for form in translation.iter("numerusform")] or [translation.text or ""]
            done = translation.get("type") is None and all(forms)
            result[name, message.findtext("source"), message.findtext("comment") or ""] = forms if done else None
    return result


def mnemonic(text):
    match = MNEMONIC.search(text)
    return match[1].upper() if match else None


def differences(source, translation):
    expected = collections.Counter(PLACEHOLDER.findall(source))
    actual = collections.Counter(PLACEHOLDER.findall(translation))
    if expected != actual:
        yield f"placeholders {sorted(expected.elements())} became {sorted(actual.elements())}"
    if mnemonic(source) != mnemonic(translation):
        yield f"the mnemonic {mnemonic(source)} became {mnemonic(translation)}"
    if source.endswith(("...", "…")) != translation.endswith(("...", "…")):
        yield "only one of the two ends in an ellipsis"
    if source.endswith(":") != translation.endswith((":", "：")):
        yield "only one of the two ends in a colon"
    # A full-width mark brings its own space.
    if (source != source.strip()) != (translation != translation.strip() or translation in ("，", "、", "；")):
        yield "only one of the two begins or ends with a space"
    if source.count("<") != translation.count("<"):
        yield "the tags differ"


def main():
    lupdate, source, translation = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        extracted = pathlib.Path(folder) / "extracted.ts"
        run = subprocess.run([lupdate, "-silent", source, "-locations", "none", "-ts", extracted],
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=True)
        wanted = messages(extracted)
    translated = messages(translation)
    if not wanted:
        sys.exit("no texts were found in the sources")

    # lupdate only warns about texts that it cannot assign, and they would stay English.
    found = [line for line in run.stdout.splitlines() if "Qualifying" in line or "Discarding" in line]
    for (context, text, comment), _ in wanted.items():
        if context != "Velmora":
            found.append(f"{text!r} is in the context {context}; write Velmora::tr")
            continue
        forms = translated.get((context, text, comment))
        if forms is None:
            found.append(f"{text!r} has no finished translation")
            continue
        for form in forms:
            found.extend(f"{text!r} -> {form!r}: {difference}" for difference in differences(text, form))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
