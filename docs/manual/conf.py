# SPDX-License-Identifier: GPL-3.0-or-later
"""How Sphinx builds the manual. Both languages use this file; cmake/QuorvelManual.cmake passes language and release.

The Chinese manual lies at the top of the web site and the English one in its folder "en", where the links of the
application lead.
"""

import pathlib
import re

from docutils import nodes
from sphinx.transforms import SphinxTransform

FULL_WIDTH = ("\u2e80", "\uffef")
OTHER_LANGUAGE = {"zh_CN": ("en", "en/", "English"), "en": ("zh-CN", "../", "中文")}
DEBIAN_IMPORT = re.compile(r"@import url\((/javascript/[^)]*)\);")
TITLES = {"zh_CN": "Quorvel 使用手册", "en": "Quorvel Manual"}

project = "Quorvel"
author = "Quorvel contributors"
copyright = "2026, Quorvel contributors"  # pylint: disable=redefined-builtin
extensions = ["myst_parser"]
myst_heading_anchors = 3
source_suffix = {".md": "markdown"}
root_doc = "index"
templates_path = ["templates"]

html_theme = "furo"
html_static_path = ["static"]
html_css_files = ["manual.css"]
html_copy_source = False
html_show_sourcelink = False
html_show_sphinx = False
html_use_index = False
html_sidebars = {"**": ["sidebar/brand.html", "sidebar/language.html", "sidebar/search.html",
                        "sidebar/scroll-start.html", "sidebar/navigation.html", "sidebar/scroll-end.html"]}
# Empty: the same sources give the same pages on any day.
html_last_updated_fmt = None


def is_full_width(character):
    return FULL_WIDTH[0] <= character <= FULL_WIDTH[1]


class ChineseBlanks(SphinxTransform):
    """Removes the blanks that Markdown needs and Chinese does not have: line breaks inside a paragraph, and blanks
    between full-width characters and bold text."""

    default_priority = 500

    def apply(self, **_options):
        if self.config.language != "zh_CN":
            return
        for text in list(self.document.findall(nodes.Text)):
            siblings = text.parent.children
            place = next(index for index, sibling in enumerate(siblings) if sibling is text)
            before = siblings[place - 1] if place > 0 else None
            after = siblings[place + 1] if place + 1 < len(siblings) else None
            if text.astext() == "\n":
                if before and after and (is_full_width(before.astext()[-1:]) or is_full_width(after.astext()[:1])):
                    text.parent.remove(text)
                continue
            kept = text.astext()
            if isinstance(before, nodes.strong) and is_full_width(kept.lstrip(" ")[:1]):
                kept = kept.lstrip(" ")
            if isinstance(after, nodes.strong) and is_full_width(kept.rstrip(" ")[-1:]):
                kept = kept.rstrip(" ")
            if kept != text.astext():
                text.parent.replace(text, nodes.Text(kept))


def add_other_language(app, pagename, _templatename, context, _doctree):
    """Gives each page the address of its translation. All pages lie in one folder, so file names suffice."""
    code, folder, name = OTHER_LANGUAGE[app.config.language]
    translated = pagename if pagename in app.env.found_docs else "index"
    context["other_language"] = {"code": code, "name": name, "address": f"{folder}{translated}.html"}


def include_imports(app, exception):
    """Puts the style sheet that Debian's theme imports from the server's /javascript into the theme's own."""
    styles = pathlib.Path(app.outdir) / "_static/styles/furo.css"
    if exception or not styles.exists():
        return
    text = styles.read_text(encoding="utf-8")
    styles.write_text(DEBIAN_IMPORT.sub(
        lambda match: pathlib.Path(f"/usr/share{match.group(1)}").read_text(encoding="utf-8"), text), encoding="utf-8")


def set_titles(_app, config):
    config.html_title = TITLES[config.language]
    config.html_short_title = config.html_title


def setup(app):
    app.add_transform(ChineseBlanks)
    app.connect("config-inited", set_titles, priority=1)
    app.connect("html-page-context", add_other_language)
    app.connect("build-finished", include_imports)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
