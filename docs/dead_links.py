#!/usr/bin/env python3
"""Lists the links of a folder's HTML pages and style sheets that lead nowhere: to no file, to no place in a page, or to a place
that only a web server has. What is linked from elsewhere on a Debian system counts as there. Fails if there are any, or no pages.
Usage: dead_links.py FOLDER"""
import html.parser
import os.path
import pathlib
import re
import sys
import urllib.parse

SYSTEM = "/usr/share/javascript/"


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.places, self.links = set(), set()
        self.feed(path.read_text())

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("id", "name"):
                self.places.add(value)
            elif name in ("href", "src"):
                self.links.add(value)


def exists(path):
    return path.exists() or path.is_symlink() and SYSTEM in os.path.normpath(path.parent / path.readlink())


def dead_links(folder):
    pages = {path.resolve(): Page(path) for path in folder.rglob("*.html")}
    if not pages:
        yield f"{folder} has no page"
    links = [(path, link) for path, page in pages.items() for link in page.links]
    links += [(path.resolve(), link) for path in folder.rglob("*.css")
              for link in re.findall(r"""url\(["']?([^"')]*)""", path.read_text())]
    for path, link in sorted(links):
        url = urllib.parse.urlsplit(link)
        if url.scheme or url.netloc:
            continue
        target = path.parent / urllib.parse.unquote(url.path) if url.path else path
        place = urllib.parse.unquote(url.fragment)
        target = pathlib.Path(target.parent.resolve(), target.name)
        if url.path.startswith("/") or not exists(target):
            yield f"{path}: {link} leads to no file"
        elif place and target in pages and place not in pages[target].places:
            yield f"{path}: {link} leads to no place in that page"


found = list(dead_links(pathlib.Path(sys.argv[1])))
for line in found:
    print(line, file=sys.stderr)
sys.exit(bool(found))
