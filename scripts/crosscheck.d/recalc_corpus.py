#!/usr/bin/env python3
"""recalc_corpus.py QUILLET CORPUS [--sample N [--seed S]] [--alone]: real workbooks with formulas get the results that LibreOffice
calculates, and nothing else changes in them.

Starting LibreOffice takes longer than most files do, so one process calculates many copies, and what `quillet recalc`
starts hands these out; with --alone it starts the real program for each file.

A file that `quillet recalc` changed is compared with one that was only loaded and saved: streams and parts byte by byte,
but for the results of formulas. Its results are compared with those that LibreOffice shows in a flat OpenDocument file of
the same workbook, which neither our reader nor the way over .xlsx has touched. Results of functions of time and chance,
and what depends on them, are what differs between two such files. Exit status 1 with what was found."""
import argparse
import json
import math
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tools"))
import flat_sheets  # noqa: E402
import xlsfile  # noqa: E402

SECONDS = 120  # a file; most take two
ERRORS = {"#NULL!", "#DIV/0!", "#VALUE!", "#REF!", "#NAME?", "#NUM!", "#N/A"}
SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry"><item oor:path="/org.openoffice.Office.Calc/Formula/Load">
<prop oor:name="OOXMLRecalcMode" oor:op="fuse"><value>0</value></prop></item></oor:items>
"""
VOLATILE = re.compile(r"\b(NOW|TODAY|RAND|RANDBETWEEN|INFO|CELL)\(")
CELL = re.compile(rb"<(?:\w+:)?c(?: [^>]*[^/>])?>.*?</(?:\w+:)?c>", re.S)
FORMULA = re.compile(rb"<(?:\w+:)?f[ />]")
RESULT = re.compile(rb"<(?:\w+:)?v(?:/>|(?: [^>]*)?>[^<]*</(?:\w+:)?v>)| t=\"\w+\"(?=[^<]*<(?:\w+:)?f)")


def dump(quillet, path):
    out = subprocess.run([quillet, "dump", path], capture_output=True, text=True, errors="replace", timeout=300)
    if out.returncode != 0:
        return None
    cells, sheet = {}, None
    for line in map(json.loads, filter(None, out.stdout.split("\n"))):
        if "sheet" in line:
            sheet = line["sheet"]["name"]
        elif line.get("f"):
            cells[sheet, line["r"], line["c"]] = (line["k"], line.get("v"))
    return cells


HAND_OUT = """#!/bin/sh
mkdir -p "$6" && cp "$CALCULATED" "$6/book.xlsx"
"""


def convert(paths, folder, target, profile):
    """One process for all; one each for those that a file which ended it left out. {path: what was made of it}"""
    made = lambda path: folder / (path.stem + "." + target)  # noqa: E731
    for batch in [paths] + [[path] for path in paths]:
        wanted = [str(path) for path in batch if not made(path).exists()]
        if not wanted:
            continue
        try:
            subprocess.run(["soffice", "--headless", f"-env:UserInstallation=file://{profile}", "--convert-to", target,
                            "--outdir", folder, *wanted], capture_output=True, timeout=SECONDS + 5 * len(wanted))
        except subprocess.TimeoutExpired:
            pass
    return {path: made(path) for path in paths if made(path).exists()}


def parts(path):
    """{name: bytes} without results of formulas."""
    if zipfile.is_zipfile(path):
        package = zipfile.ZipFile(path)
        cell = lambda m: RESULT.sub(b"", m[0]) if FORMULA.search(m[0]) else m[0]  # noqa: E731
        return {name: CELL.sub(cell, package.read(name)) for name in package.namelist()}
    file = xlsfile.CompoundFile(path.read_bytes())
    out = {entry.path: file.stream(entry) for entry in file.entries if entry.type == 2 and entry is not file.main()}
    book = bytearray()
    flat, _ = xlsfile.records(file.stream(file.main()))
    for record in flat:
        body = bytearray(record.body)
        if record.id == 519:  # a text, which follows its formula
            continue
        if record.id == 6:
            body[6:14] = bytes(8)
            body[14] &= 0xFE  # whether to calculate it whatever its result is
        if record.id == 133:  # where the sheet lies
            body[:4] = bytes(4)
        if record.id != 523:
            book += record.id.to_bytes(2, "little") + body
    out["records"] = bytes(book)
    return out


def lines(text):
    """Without what the flat file cannot hold: control characters, which packages have as _x0007_."""
    text = re.sub("_x([0-9A-Fa-f]{4})_", lambda m: chr(int(m[1], 16)), text)
    return re.sub("[\0-\x08\x0b\x0c\x0e-\x1f]", "", text.replace("\r\n", "\n"))


def same(ours, theirs):
    (kind, found), (their_kind, wanted) = ours, theirs
    if their_kind == "e":
        return kind == "e" and (found == wanted or wanted not in ERRORS)
    if their_kind == "d":
        return kind in "nd" and (wanted is None or kind == "d" or abs(found - wanted) < 1e-6 + 1e-12 * abs(wanted))
    if their_kind == "n" or their_kind == "b":
        return kind in "nb" and math.isclose(float(found or 0), float(wanted), rel_tol=1e-14, abs_tol=1e-300)
    wanted = "\u00a0" if wanted == " " and kind == "s" else wanted  # as every text of one blank that is written
    return lines(found or "") == lines(wanted) if kind in "sz" else (kind == "n" and found is None and not wanted)


class Check:
    def __init__(self, quillet, folder, alone):
        self.quillet, self.folder, self.alone, self.faults = quillet, folder, alone, []
        (folder / "bin").mkdir()
        (folder / "bin" / "soffice").write_text(HAND_OUT)
        (folder / "bin" / "soffice").chmod(0o755)
        self.counts = dict.fromkeys(("files", "changed files", "not calculated files", "formulas", "changed results",
                                     "not calculated", "compared", "of time or chance", "not shown"), 0)

    def fault(self, path, text):
        self.faults.append(f"{path.name}: {text}")

    def recalc(self, path, calculated):
        """The recalculated copy and the cells that kept their result; None where there is nothing to compare."""
        self.counts["files"] += 1
        copy = self.folder / ("fresh" + path.suffix)
        shutil.copyfile(path, copy)
        env = dict(os.environ)
        if not self.alone:
            env["PATH"] = f"{self.folder / 'bin'}:{env['PATH']}"
            env["CALCULATED"] = str(calculated)
        done = subprocess.run([self.quillet, "recalc", "--time-limit", str(SECONDS), copy], capture_output=True, text=True,
                              errors="replace", env=env, timeout=5 * SECONDS)
        if done.returncode != 0:
            self.counts["not calculated files"] += 1
            if copy.read_bytes() != path.read_bytes() or "LibreOffice" not in done.stderr:
                self.fault(path, done.stderr)
            print(f"  {path.name}: {done.stderr.strip().partition(': ')[2]}")
            return None
        told = re.search(r"(\d+) formulas, (\d+) results changed\n", done.stdout)
        self.counts["formulas"] += int(told[1])
        self.counts["changed results"] += int(told[2])
        kept = set(re.findall(r"^not calculated: (.*)$", done.stdout, re.M))
        self.counts["not calculated"] += len(kept)
        if int(told[2]) > 0:
            self.counts["changed files"] += 1
            self.unchanged(path, copy)
        elif copy.read_bytes() != path.read_bytes():
            self.fault(path, "changed without a result that changed")
        return copy, kept

    def unchanged(self, path, copy):
        plain = self.folder / ("plain" + path.suffix)
        subprocess.run([self.quillet, "resave", path, plain], check=True, capture_output=True)
        old, new = parts(plain), parts(copy)
        for name in sorted(set(old) | set(new)):
            if old.get(name) != new.get(name):
                self.fault(path, f"{name} is not as a plain save leaves it")

    def results(self, path, copy, kept, shown, again):
        before = dump(self.quillet, path)
        for cell, ours in dump(self.quillet, copy).items():
            name = f"{cell[0]}!{letters(cell[2])}{cell[1] + 1}"
            if name in kept:
                if ours != before[cell]:
                    self.fault(path, f"{name} was not calculated, and {before[cell]} became {ours}")
            elif cell not in shown:
                self.counts["not shown"] += 1
                self.fault(path, f"{name}: LibreOffice shows no formula, we have {ours}")
            elif shown[cell] != again.get(cell):
                self.counts["of time or chance"] += 1
            else:
                self.counts["compared"] += 1
                if not same(ours, shown[cell]):
                    self.fault(path, f"{name}: we have {ours}, LibreOffice shows {shown[cell]}")


def letters(column):
    out = ""
    column += 1
    while column:
        column, left = divmod(column - 1, 26)
        out = chr(65 + left) + out
    return out


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("quillet")
    parser.add_argument("corpus", type=pathlib.Path)
    parser.add_argument("--sample", type=int, help="so many files only")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--alone", action="store_true")
    options = parser.parse_args()
    if not shutil.which("soffice"):
        print("recalc_corpus: no soffice")
        return 0
    files = sorted(p for kind in ("xls", "xlsx") for p in (options.corpus / kind).iterdir() if p.is_file())
    random.Random(options.seed).shuffle(files)
    files = (path for path in files if dump(options.quillet, path))
    with tempfile.TemporaryDirectory(prefix="recalc-") as name:
        folder = pathlib.Path(name)
        user = folder / "profile" / "user"
        user.mkdir(parents=True)
        (user / "registrymodifications.xcu").write_text(SETTINGS)
        check = Check(options.quillet, folder, options.alone)
        batch = []
        left = options.sample or sys.maxsize
        for path in files:
            batch.append(path)
            left -= 1
            if len(batch) == 40 or left == 0:
                run(check, batch, folder)
                batch = []
            if left == 0:
                break
        run(check, batch, folder)
    for fault in check.faults:
        print(fault)
    print("recalc_corpus: " + ", ".join(f"{count} {what}" for what, count in check.counts.items()) + f"; {len(check.faults)} faults")
    return 1 if check.faults or not check.counts["compared"] else 0


def run(check, batch, folder):
    if not batch:
        return
    copies = {}
    for number, path in enumerate(batch):
        copies[path] = folder / f"book{number}{path.suffix}"
        shutil.copyfile(path, copies[path])
    wanted = list(copies.values())
    (folder / "calculated").mkdir()
    calculated = {} if check.alone else convert(wanted, folder / "calculated", "xlsx", folder / "profile")
    shown = {}
    for turn in ("shown", "again"):
        (folder / turn).mkdir()
        shown[turn] = convert(wanted, folder / turn, "fods", folder / "profile")
        wanted = [copy for copy, flat in shown[turn].items() if VOLATILE.search(flat.read_text())]
    for path in batch:
        print(f"{path.name}: {check.counts['files']} files, {len(check.faults)} faults", file=sys.stderr)
        copy = copies[path]
        done = check.recalc(path, calculated.get(copy))
        if done and copy in shown["shown"]:
            first = flat_sheets.formulas(shown["shown"][copy])
            check.results(path, *done, first, flat_sheets.formulas(shown["again"][copy]) if copy in shown["again"] else first)
        elif done:
            check.fault(path, "LibreOffice shows nothing of it")
    for turn in ("shown", "again", "calculated"):
        shutil.rmtree(folder / turn)


if __name__ == "__main__":
    sys.exit(main())
