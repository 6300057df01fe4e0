#!/usr/bin/env python3
"""Checks the documents of the operator: every link, anchor and picture resolves, every page is well formed, in the
project of the help compiler, in its contents, and reachable from the first page.

  check_help.py FOLDER --project            the sources in docs/
  check_help.py FOLDER --built              what was built beside the program
  check_help.py DOCS --compiled FILE CHMLS  the compiled file holds every page of the sources
  check_help.py --self-test                 the checker itself, on pages with planted faults
"""

import html.parser
import pathlib
import re
import subprocess
import sys
import tempfile
import urllib.parse

VOID = {"meta", "link", "img", "br", "hr", "input", "path", "rect", "stop"}


class Page(html.parser.HTMLParser):
    """The links, anchors and faults of one page."""

    def __init__(self, text):
        super().__init__()
        self.links, self.anchors, self.faults, self.open = [], set(), [], []
        self.has = set()
        self.feed(text)
        self.close()
        self.faults += [f"<{tag}> is never closed" for tag in self.open]
        self.faults += [f"no <{tag}>" for tag in ("title", "h1", "html", "body") if tag not in self.has]

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.has.add(tag)
        if tag not in VOID:
            self.open.append(tag)
        if "id" in values:
            if values["id"] in self.anchors:
                self.faults.append(f"anchor {values['id']} stands twice")
            self.anchors.add(values["id"])
        for name in ("href", "src"):
            if name in values:
                self.links.append(values[name])
        if tag == "img" and not values.get("alt"):
            self.faults.append("a picture without words")

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            self.faults.append(f"</{tag}> closes <{self.open[-1] if self.open else 'nothing'}>")
        if tag in self.open:
            while self.open.pop() != tag:
                pass


def read_pages(folder):
    files = sorted(folder.glob("help/*.html")) + [folder / "Read Me.html"]
    return {file: Page(file.read_text(encoding="utf-8")) for file in files}


def is_outside(link):
    return urllib.parse.urlsplit(link).scheme != "" or link.startswith("@")


def link_faults(file, page, pages):
    for link in page.links:
        if is_outside(link):
            if not re.match(r"(https?://|mailto:)[^ ]+\.[^ ]+|mailto:@SUPPORT@|@WEBSITE@", link):
                yield f"strange address {link}"
            continue
        path, _, anchor = link.partition("#")
        target = (file.parent / urllib.parse.unquote(path)).resolve() if path else file.resolve()
        if not target.is_file():
            yield f"dead link {link}"
        elif anchor:
            there = next((p for f, p in pages.items() if f.resolve() == target), None)
            if there is None or anchor not in there.anchors:
                yield f"no anchor {link}"


def page_faults(folder):
    pages = read_pages(folder)
    for file, page in pages.items():
        for fault in page.faults + list(link_faults(file, page, pages)):
            yield f"{file.name}: {fault}"
    reached, waiting = set(), [folder / "help/index.html"]
    while waiting:
        file = waiting.pop().resolve()
        page = next((p for f, p in pages.items() if f.resolve() == file), None)
        if page is None or file in reached:
            continue
        reached.add(file)
        waiting += [file.parent / link.partition("#")[0] for link in page.links
                    if not is_outside(link) and link.partition("#")[0].endswith(".html")]
    for file in pages:
        if file.name != "Read Me.html" and file.resolve() not in reached:
            yield f"{file.name}: cannot be reached from index.html"


def project_faults(folder):
    """What the compiler's project, contents and index say, against the pages that are there."""
    pages = {file.name: page for file, page in read_pages(folder).items() if file.parent.name == "help"}
    listed = (folder / "help/help.hhp").read_text().split("[FILES]")[1].split()
    for name in sorted(set(pages) | {"style.css"}):
        if listed.count(name) != 1:
            yield f"help.hhp: {name} is listed {listed.count(name)} times"
    for name in listed:
        if not (folder / "help" / name).is_file():
            yield f"help.hhp: {name} does not exist"
    for file in ("toc.hhc", "index.hhk"):
        targets = re.findall(r'name="Local" value="([^"]+)"', (folder / "help" / file).read_text())
        for target in targets:
            name, _, anchor = target.partition("#")
            if name not in pages or (anchor and anchor not in pages[name].anchors):
                yield f"{file}: dead entry {target}"
        if file == "toc.hhc":
            for name in sorted(set(pages) - {target.partition("#")[0] for target in targets}):
                yield f"toc.hhc: {name} is missing"


def built_faults(folder):
    for file in read_pages(folder):
        text = file.read_text(encoding="utf-8")
        if "<!-- picture:" in text or re.search(r"@[A-Z]+@", text):
            yield f"{file.name}: a marker was left"


def compiled_faults(docs, compiled, chmls):
    inside = subprocess.run([chmls, "list", compiled], capture_output=True, text=True, check=True).stdout.split()
    for file in sorted((docs / "help").glob("*.html")) + [docs / "help/style.css"]:
        if "/" + file.name not in inside:
            yield f"{pathlib.Path(compiled).name}: {file.name} is missing"


GOOD = "<html><head><title>t</title></head><body><h1 id='a'>t</h1>{}</body></html>"
PLANTED = {  # what a page holds: the fault that must be found, or None
    "<a href='other.html#b'>x</a> <a href='#a'>x</a> <a href='../Read%20Me.html'>x</a>": None,
    "<a href='nowhere.html'>x</a>": "dead link nowhere.html",
    "<a href='other.html#c'>x</a>": "no anchor other.html#c",
    "<a href='#c'>x</a>": "no anchor #c",
    "<img src='style.css' alt='w'><img src='x.png' alt='w'>": "dead link x.png",
    "<img src='style.css'>": "a picture without words",
    "<p id='a'>x</p>": "anchor a stands twice",
    "<p><b>x</p>": "</p> closes <b>",
    "<a href='javascript:x'>x</a>": "strange address javascript:x",
}


def self_test():
    for planted, fault in PLANTED.items():
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "help").mkdir()
            (folder / "Read Me.html").write_text(GOOD.format(""))
            (folder / "help/style.css").write_text("")
            (folder / "help/other.html").write_text(GOOD.format("<p id='b'>x</p>"))
            (folder / "help/lost.html").write_text(GOOD.format(""))
            (folder / "help/index.html").write_text(GOOD.format(planted + "<a href='other.html'>x</a>"))
            wanted = ["lost.html: cannot be reached from index.html"]
            wanted += [f"index.html: {fault}"] if fault else []
            found = list(page_faults(folder))
            if sorted(found) != sorted(wanted):
                yield f"planted {planted!r}: found {found}, wanted {wanted}"


def main(arguments):
    if arguments == ["--self-test"]:
        faults = list(self_test())
    elif len(arguments) == 4 and arguments[1] == "--compiled":
        faults = list(compiled_faults(pathlib.Path(arguments[0]), arguments[2], arguments[3]))
    elif len(arguments) == 2 and arguments[1] in ("--project", "--built"):
        folder = pathlib.Path(arguments[0])
        more = project_faults if arguments[1] == "--project" else built_faults
        faults = list(page_faults(folder)) + list(more(folder))
    else:
        print(__doc__)
        return 2
    print("\n".join(faults) if faults else "no fault found")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
