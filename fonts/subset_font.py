#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Cuts the interface's font out of a large CJK font.

What is kept: Latin and Greek letters, the symbols of the interface, the punctuation and the 3,755 common
characters of GB 2312, and every character of the files given with --text (the translation catalogues). With
--texts-only, for a cut in which no foreign text is shown, the common characters are left out.
The same inputs give the same bytes.
"""

import argparse
import sys
from pathlib import Path

from fontTools import subset
from fontTools.ttLib import TTCollection, TTFont

FAMILY = "Quorvel Sans"
VERSION_SUFFIX = "; subset for Quorvel"

SYMBOLS = "µΩ℃‐–—‘’“”†•…‰′″€™←↑→↓↔∆∑−√∞≈≠≤≥■□▲△▶▼▽◀◆◇○●★☆✓"

# Levels and rows of GB 2312, as the first byte of its EUC form.
GB2312_PUNCTUATION_ROWS = (0xA1, 0xA3)
GB2312_LEVEL_1_ROWS = range(0xB0, 0xD8)

# Everything else in the layout tables serves vertical or Japanese text.
LAYOUT_FEATURES = ["kern", "mark", "mkmk", "ccmp"]
DROPPED_TABLES = ["BASE", "VORG", "vhea", "vmtx", "DSIG"]


def gb2312_rows(rows):
    """The characters of the given rows of GB 2312; unassigned cells are left out."""
    for high in rows:
        for low in range(0xA1, 0xFF):
            try:
                yield bytes((high, low)).decode("gb2312")
            except UnicodeDecodeError:
                continue


def wanted_characters(text_files, texts_only):
    characters = {chr(code) for code in range(0x20, 0x7F)}
    characters |= {chr(code) for code in range(0xA0, 0x180)}
    characters |= {chr(code) for code in range(0x391, 0x3CA) if code != 0x3A2}
    characters |= set(SYMBOLS)
    characters |= set(gb2312_rows(GB2312_PUNCTUATION_ROWS))
    if not texts_only:
        characters |= set(gb2312_rows(GB2312_LEVEL_1_ROWS))
    for path in text_files:
        characters |= {c for c in path.read_text(encoding="utf-8") if c.isprintable()}
    return characters


def open_face(path, face):
    """The font of the given full name in a collection, or the only font of a plain file."""
    if path.suffix.lower() != ".ttc":
        return TTFont(path, recalcTimestamp=False)
    for font in TTCollection(path).fonts:
        if font["name"].getDebugName(4) == face:
            font.recalcTimestamp = False
            return font
    sys.exit(f"{path}: no face named {face}")


def rename(font, style):
    """Gives the subset a family name of its own, so that an installed original is never taken for it."""
    names = font["name"]
    full_name = FAMILY if style == "Regular" else f"{FAMILY} {style}"
    postscript_name = f"{FAMILY.replace(' ', '')}-{style}"
    version = names.getDebugName(5) + VERSION_SUFFIX
    names.names = [n for n in names.names if n.nameID in (0, 7, 8, 9, 10, 11, 12, 13, 14) and n.langID == 0x409]
    for name_id, text in ((1, FAMILY), (2, style), (3, f"{full_name}; {version}"), (4, full_name), (5, version),
                          (6, postscript_name)):
        names.setName(text, name_id, 3, 1, 0x409)
    if "CFF " in font:
        cff = font["CFF "].cff
        cff.fontNames = [postscript_name]
        top = cff.topDictIndex[0]
        top.FullName = full_name
        top.FamilyName = FAMILY


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("source", type=Path, help="the font, or a collection of fonts")
    parser.add_argument("output", type=Path)
    parser.add_argument("--face", default="Noto Sans CJK SC", help="full name of the face in a collection")
    parser.add_argument("--style", choices=("Regular", "Bold"), default="Regular", help="of the face")
    parser.add_argument("--texts-only", action="store_true", help="leave out the common Chinese characters")
    parser.add_argument("--text", type=Path, nargs="*", default=[], help="files whose characters are kept")
    arguments = parser.parse_args()

    options = subset.Options()
    options.layout_features = LAYOUT_FEATURES
    options.drop_tables += DROPPED_TABLES
    options.name_IDs = ["*"]
    options.name_legacy = True
    options.hinting = True
    options.desubroutinize = False
    options.notdef_outline = True
    options.recalc_timestamp = False

    font = open_face(arguments.source, arguments.face)
    subsetter = subset.Subsetter(options)
    subsetter.populate(unicodes=[ord(c) for c in wanted_characters(arguments.text, arguments.texts_only)])
    subsetter.subset(font)
    rename(font, arguments.style)
    font.save(arguments.output, reorderTables=True)


if __name__ == "__main__":
    main()
