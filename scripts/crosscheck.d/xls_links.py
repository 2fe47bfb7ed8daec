#!/usr/bin/env python3
"""xls_links.py [--corpus DIR] [--quillet COMMAND]: the links of binary workbooks as xlrd sees them.

In every file of the corpus that has links each sheet has as many links as xlrd finds, over the same cells and with the same targets. What
xlrd calls by other words is told in `target`.
"""
import argparse
import json
import os
import subprocess
import sys

sys.dont_write_bytecode = True
from corpus_files import loadable  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SECONDS = 120
LEAST_SHEETS = 12

XLRD = """
import json, sys, xlrd
for sheet in xlrd.open_workbook(sys.argv[1], formatting_info=True, logfile=sys.stderr).sheets():
    text = lambda x: x.decode("latin-1") if isinstance(x, bytes) else x
    print(json.dumps([sheet.name, [[[h.frowx, h.fcolx, h.lrowx, h.lcolx], h.type, text(h.url_or_path), h.textmark]
                                   for h in sheet.hyperlink_list]]))
"""


def target(kind, path, mark):
    """Its path of a file goes without the steps up in front, which it has from another field."""
    parts = [part.rstrip("\0") for part in (path, mark) if part]
    return "#".join(parts) if kind != "workbook" else "#" + parts[-1] if parts else ""


def bare(text):
    return text.lstrip("#")


def check(path, quillet):
    """(sheets with links, links, faults); None when the other reader refuses the file."""
    done = subprocess.run(["/usr/bin/python3", "-c", XLRD, path], capture_output=True, timeout=SECONDS)
    if b"No module named 'xlrd'" in done.stderr:
        raise SystemExit("crosscheck: python3-xlrd is not installed")
    if done.returncode:
        return None
    theirs = [json.loads(line) for line in done.stdout.splitlines()]
    theirs = {name: links for name, links in theirs if links}
    ours, name = {}, None
    for line in subprocess.run([quillet, "dump", "--no-cells", "--features", path], capture_output=True, check=True,
                               timeout=SECONDS).stdout.splitlines():
        read = json.loads(line)
        if "sheet" in read:
            name = read["sheet"]["name"]
        elif read.get("features", {}).get("links"):
            ours[name] = read["features"]["links"]
    faults = ["only one of both has links on %s" % sheet for sheet in sorted(set(theirs) ^ set(ours))]
    for sheet in set(theirs) & set(ours):
        a = sorted((link["area"], bare(link["target"])) for link in ours[sheet])
        b = sorted((area, bare(target(*rest))) for area, *rest in theirs[sheet])
        faults += ["%s: %s, xlrd has %s" % (sheet, one, other) for one, other in zip(a, b) if one != other][:3]
        if len(a) != len(b):
            faults.append("%s: %d links, xlrd has %d" % (sheet, len(a), len(b)))
    return len(theirs), sum(map(len, theirs.values())), faults


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--corpus", default=os.path.join(ROOT, "..", "shared", "corpus"))
    options.add_argument("--quillet", default=os.path.join(ROOT, "build", "release", "cli", "quillet"))
    args = options.parse_args()
    names = [r["file"] for r in loadable(args.corpus, "biff8") if "hyperlinks" in r["features"].split(",")]
    sheets = links = failed = 0
    for name in names:
        found = check(os.path.join(args.corpus, "xls", name), args.quillet)
        if found is None:
            continue
        sheets, links, failed = sheets + found[0], links + found[1], failed + bool(found[2])
        for fault in found[2]:
            print("%s: %s" % (name, fault))
    print("crosscheck xls_links: %d links on %d sheets, %d files with differences" % (links, sheets, failed))
    return 1 if failed or sheets < LEAST_SHEETS else 0


if __name__ == "__main__":
    sys.exit(main())
