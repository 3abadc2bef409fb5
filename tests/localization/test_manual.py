# SPDX-License-Identifier: GPL-3.0-or-later
"""What scripts/check-manual finds, on a manual of one page with one fault each."""

import importlib.machinery
import importlib.util
import pathlib
import shutil
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


def load_script(name):
    loader = importlib.machinery.SourceFileLoader(name.replace("-", "_"), str(ROOT / "scripts" / name))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    loader.exec_module(module)
    return module


check = load_script("check-manual")
CATALOGUE = """<TS><context><name>SysSettings</name>
<message><source>Ready</source><translation>已就绪</translation></message>
<message><source>Saved in %1.</source><translation>已保存到 %1。</translation></message>
</context></TS>"""
ENGLISH = "# Messages\n\n| **Ready** | go |\n\n**Saved in ….**\n\n![A page](images/a.png) [next](messages.md)\n"
CHINESE = "# 提示\n\n| **已就绪** | 开始 |\n\n**已保存到 …。**\n\n![页面](images/a.png) [下一页](messages.md)\n"


class SourceFaults(unittest.TestCase):
    def setUp(self):
        self.root = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.root)
        for name, text in {"localization/gen_cn.ts": CATALOGUE, "docs/manual/en/messages.md": ENGLISH,
                           "docs/manual/zh/messages.md": CHINESE, "docs/manual/en/images/a.png": "",
                           "docs/manual/zh/images/a.png": "",
                           "docs/man/quorvel-cli.1": "\\fBlist\\fR [\\fB\\-\\-json\\fR]\n"}.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")

    def findings_after(self, name, old, new):
        path = self.root / "docs/manual" / name
        text = path.read_text(encoding="utf-8")
        self.assertIn(old, text)
        path.write_text(text.replace(old, new), encoding="utf-8")
        findings = " ".join(check.check_sources(self.root))
        path.write_text(text, encoding="utf-8")
        return findings

    def test_faults(self):
        self.assertEqual(check.check_sources(self.root), [])
        for name, old, new, finding in (
                ("zh/messages.md", "# 提示", "## 提示", "heading"),
                ("zh/messages.md", "| 开始 |", "| 开始 | 更多 |", "table row"),
                ("zh/messages.md", "[下一页](messages.md)", "", "link to different pages"),
                ("zh/messages.md", "**已就绪**", "**就绪**", "no text '就绪'"),
                ("zh/messages.md", "**已就绪**", "已就绪", "translation of 'Ready' is missing"),
                ("zh/messages.md", "**已就绪**", "**已就绪** **已就绪**", "'已就绪' translates is missing"),
                ("en/messages.md", "**Saved in ….**", "**Saved.**", "no text 'Saved.'"),
                ("en/messages.md", "**Saved in ….**", "", "does not explain 'Saved in ….'"),
                ("en/messages.md", "images/a.png", "images/b.png", "en/images/b.png does not exist"),
                ("en/messages.md", "![A page](images/a.png)", "", "en/images/a.png is on no page"),
                ("en/messages.md", "| go |", "| `quorvel-cli list --yaml` |", "has no --yaml"),
                ("en/messages.md", "| go |", "| `quorvel-cli lists --json` |", "has no lists"),
                ("en/messages.md", "![A page]", "![]", "no description")):
            with self.subTest(new=new, finding=finding):
                self.assertIn(finding, self.findings_after(name, old, new))
        (self.root / "docs/manual/en/extra.md").write_text("# Extra\n", encoding="utf-8")
        self.assertIn("extra.md is in one language only", check.check_sources(self.root))


class SiteFaults(unittest.TestCase):
    def test_links(self):
        folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, folder)
        (folder / "en").mkdir()
        (folder / "en/index.html").write_text('<p id="there">', encoding="utf-8")
        for html, finding in (
                ('<a href="en/#there">', None), ('<a href="en/index.html?x=1#there">', None), ('<a href="#top" id="top">', None),
                ('<a href="no.html">', "leads nowhere"), ('<img src="no.png">', "leads nowhere"),
                ('<a href="en/#gone">', "leads to no heading"), ('<a href="/en/">', "works on a server only"),
                ('<script src="https://example.org/a.js">', "needs a network"),
                ('<script src="//example.org/a.js">', "needs a network"), ("<p>**bold**", "two asterisks")):
            with self.subTest(html=html):
                (folder / "index.html").write_text(html, encoding="utf-8")
                findings = check.check_site(folder)
                self.assertIn(finding, " ".join(findings)) if finding else self.assertEqual(findings, [])
        (folder / "index.html").write_text("", encoding="utf-8")
        for css in "@import url(/a.css);", "p { background: url('a.png') }", '@import "a.css";':
            (folder / "a.b.css").write_text(css, encoding="utf-8")
            self.assertEqual(len(check.check_site(folder)), 1, css)
        self.assertEqual(len(check.check_site(folder / "none")), 1)


if __name__ == "__main__":
    unittest.main()
