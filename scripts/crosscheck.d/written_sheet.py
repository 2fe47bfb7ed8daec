"""A new workbook of ours, made of operations, and what other programs see of it."""
import argparse
import gzip
import json
import os
import subprocess
import tempfile

import libreoffice

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SECONDS = 180


def seen_by_openpyxl(reader, path):
    """What the program `reader`, which prints an object, answers."""
    done = subprocess.run(["/usr/bin/python3", "-c", reader, path], capture_output=True, text=True, timeout=SECONDS)
    if done.returncode:
        return {"error": done.stderr.strip().splitlines()[-1:]}
    return json.loads(done.stdout)


def differences(who, seen, expected, keys):
    return ["%s: %s is %s, not %s" % (who, key, seen.get(key, seen.get("error")), expected[key])
            for key in sorted(keys) if seen.get(key) != expected[key]]


def gnumeric_differences(path, folder, wanted):
    out = os.path.join(folder, "g.gnumeric")
    done = subprocess.run(["ssconvert", "-T", "Gnumeric_XmlIO:sax:0", path, out], capture_output=True, timeout=SECONDS)
    if done.returncode or not os.path.exists(out):
        return ["ssconvert: does not read it"]
    with open(out, "rb") as f:
        data = f.read()
    text = (gzip.decompress(data) if data[:2] == b"\x1f\x8b" else data).decode("utf-8")
    return ["ssconvert: no %s" % one for one in wanted if one not in text]


def check(what, operations, reader, expected, libreoffice_keys, gnumeric):
    """Runs the operations through build/DIR/tools/apply_operations, saves, and compares what openpyxl, ssconvert (its own
    XML) and on request LibreOffice (converted to .xlsx) tell. Answers the exit status."""
    options = argparse.ArgumentParser(description=what)
    options.add_argument("--build", default=os.path.join(ROOT, "build/release"))
    options.add_argument("--libreoffice", action="store_true")
    args = options.parse_args()
    with tempfile.TemporaryDirectory(prefix="written-") as folder:
        path = os.path.join(folder, "written.xlsx")
        lines = "".join(json.dumps({"op": op, "args": rest}) + "\n" for op, *rest in operations)
        done = subprocess.run([os.path.join(args.build, "tools/apply_operations"), "--save", path], input=lines,
                              capture_output=True, text=True, timeout=SECONDS)
        faults = [line for line in done.stdout.splitlines() if json.loads(line)["error"] != "ok"]
        faults += [done.stderr.strip()] if done.returncode else []
        faults += differences("openpyxl", seen_by_openpyxl(reader, path), expected, expected)
        faults += gnumeric_differences(path, folder, gnumeric)
        if args.libreoffice:
            out = os.path.join(folder, "out")
            libreoffice.convert(out, "xlsx", [path])
            seen = seen_by_openpyxl(reader, os.path.join(out, "written.xlsx"))
            faults += differences("LibreOffice", seen, expected, libreoffice_keys)
    for fault in faults:
        print(fault)
    print("%s: %d differences" % (what, len(faults)))
    return 1 if faults else 0
