#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Tells of every text that is in the sources and not in the catalogues, or the other way round.

The texts of the sources are what lupdate finds in them: qsTr, qsTranslate, tr and the QT_TR*_NOOP macros.
"""

import argparse
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path
from typing import NamedTuple

SOURCE_FOLDERS = ["app", "settings", "qmlsupport", "hid", "system", "upgrade", "platform", "qml"]

# lupdate's word on a class of which it has seen no declaration; it matters only where such a class calls tr.
HARMLESS = "Ignoring definition of undeclared qualified class"

# Entries that stay in the catalogue for pages that can be shown but are not in the page column.
UNUSED_ENTRIES = {("ToolsManager", "DataBase Show")}


class Message(NamedTuple):
    context: str
    source: str
    comment: str

    def __str__(self):
        comment = f" with the disambiguation {self.comment!r}" if self.comment else ""
        return f"{self.context}: {self.source!r}{comment}"


def read_catalogue(path):
    """The messages of a .ts file and their translations; a message that is there twice is an error."""
    messages = {}
    for context in ElementTree.parse(path).getroot().findall("context"):
        for node in context.findall("message"):
            message = Message(context.findtext("name"), node.findtext("source"), node.findtext("comment") or "")
            if message in messages:
                sys.exit(f"{path.name}: twice: {message}")
            messages[message] = node.findtext("translation") or ""
    return messages


def texts_of_sources(root, lupdate):
    with tempfile.TemporaryDirectory() as folder:
        catalogue = Path(folder) / "sources.ts"
        command = [lupdate, *(str(root / name) for name in SOURCE_FOLDERS), "-extensions", "cpp,h,qml,js",
                   "-locations", "none", "-target-language", "en", "-silent", "-ts", str(catalogue)]
        result = subprocess.run(command, stderr=subprocess.PIPE, text=True, check=True)
        complaints = [line for line in result.stderr.splitlines() if line.strip() and HARMLESS not in line]
        return set(read_catalogue(catalogue)), complaints


def missing_entries(wanted, catalogue):
    """Texts for which a look-up finds nothing, neither with their disambiguation nor without."""
    return sorted(m for m in wanted if m not in catalogue and m._replace(comment="") not in catalogue)


def unused_entries(wanted, catalogue):
    """Entries that no look-up of the sources ends at."""
    reached = {m if m in catalogue else m._replace(comment="") for m in wanted}
    return sorted(m for m in catalogue if m not in reached and m[:2] not in UNUSED_ENTRIES)


def differing_placeholders(catalogue):
    def placeholders(text):
        return sorted(re.findall(r"%\d", text))

    return sorted(m for m, text in catalogue.items() if text and placeholders(m.source) != placeholders(text))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("root", type=Path, help="the source tree")
    parser.add_argument("--lupdate", default="lupdate")
    arguments = parser.parse_args()

    wanted, complaints = texts_of_sources(arguments.root, arguments.lupdate)
    chinese = read_catalogue(arguments.root / "localization" / "gen_cn.ts")
    accessibility = read_catalogue(arguments.root / "localization" / "accessibility_cn.ts")
    english = read_catalogue(arguments.root / "localization" / "gen_en.ts")

    findings = [f"lupdate: {line}" for line in complaints]
    both = {**chinese, **accessibility}
    findings += [f"in the sources and in no Chinese catalogue: {m}" for m in missing_entries(wanted, both)]
    findings += [f"in both Chinese catalogues: {m}" for m in sorted(set(chinese) & set(accessibility))]
    findings += [f"without translation in accessibility_cn.ts: {m}" for m, text in accessibility.items() if not text]
    findings += [f"in accessibility_cn.ts and not in the sources: {m}" for m in unused_entries(wanted, accessibility)]
    findings += [f"in gen_cn.ts and not in the sources: {m}" for m in unused_entries(wanted, chinese)]
    findings += [f"in gen_en.ts and not in gen_cn.ts: {m}" for m in sorted(set(english) - set(chinese))]
    findings += [f"placeholders differ: {m}" for m in differing_placeholders(both)]

    print(f"{len(wanted)} texts in the sources; entries: {len(chinese)} in gen_cn.ts, {len(english)} in gen_en.ts, "
          f"{len(accessibility)} in accessibility_cn.ts")
    for finding in findings:
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
