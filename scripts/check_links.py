#!/usr/bin/env python3
"""Checks the links of a site on disk: scripts/check_links.py FOLDER

Every link and picture leads to a file that is there, every anchor to an element of its page, and every
page can be reached from index.html. Nothing may be loaded from elsewhere: pages make no requests, so
that they work without a network and tell nobody that they are read. The last line has the counts.
"""

import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

LOADED = {("script", "src"), ("img", "src"), ("link", "href"), ("iframe", "src"), ("source", "src"),
          ("object", "data"), ("image", "href"), ("form", "action")}  # fmt: skip


class Page(HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.anchors, self.links = set(), []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("id", "name") and value and (name == "id" or tag == "a"):
                self.anchors.add(value)
            if name in ("href", "src", "data", "action") and value:
                self.links.append((tag, name, value, self.getpos()[0]))


def main():
    folder = Path(sys.argv[1]).resolve()
    pages = {path: Page(path.read_text(encoding="utf-8")) for path in sorted(folder.rglob("*.html"))}
    faults, count, leads = [], 0, {path: set() for path in pages}
    for path, page in pages.items():
        for tag, name, value, line in page.links:
            where = f"{path.relative_to(folder)}:{line}"
            link = urlsplit(value)
            if link.scheme in ("data", "mailto") or value.startswith("javascript:"):
                continue
            if link.scheme or link.netloc:
                if (tag, name) in LOADED:
                    faults.append(f"{where}: <{tag}> is loaded from elsewhere: {value}")
                continue
            count += 1
            goal = (path.parent / unquote(link.path)).resolve() if link.path else path
            goal = goal / "index.html" if goal.is_dir() else goal
            if not goal.is_file() or not goal.is_relative_to(folder):
                faults.append(f"{where}: there is no {value}")
                continue
            if goal in pages:
                leads[path].add(goal)
                if link.fragment and unquote(link.fragment) not in pages[goal].anchors:
                    faults.append(f"{where}: no element of the page has this name: {value}")
    for sheet in sorted(folder.rglob("*.css")):
        for value in re.findall(r"url\(['\"]?([^)'\"]+)", sheet.read_text(encoding="utf-8")):
            if not value.startswith("data:") and not (sheet.parent / value).is_file():
                faults.append(f"{sheet.relative_to(folder)}: not a file of the site: {value}")
    for script in sorted(folder.rglob("*.js")):
        if re.search(r"^(import|export) ", script.read_text(encoding="utf-8"), re.M):
            faults.append(f"{script.relative_to(folder)}: a module, which pages on disk may not load")

    reached, next_ones = set(), [folder / "index.html"]
    while next_ones:
        path = next_ones.pop()
        if path not in reached:
            reached.add(path)
            next_ones += leads.get(path, ())
    for path in pages:
        if path not in reached:
            faults.append(f"{path.relative_to(folder)}: no link leads here")
    for fault in faults:
        print(fault)
    print(f"{len(pages)} pages, {count} links within the site, {len(faults)} faults")
    return 1 if faults or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
