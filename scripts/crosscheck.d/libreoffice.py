"""LibreOffice without a window, for the checks beside this file. Starting it takes longer than most files do, so it
converts many at once, under a profile of its own."""
import os
import shutil
import subprocess
import tempfile

SECONDS = 600
EVERY_SHEET = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,false,false,-1"


def convert(folder, target, paths):
    """Converts files into the folder; those that it does not take, or that end it, are missing there."""
    with tempfile.TemporaryDirectory(prefix="profile-") as profile:
        subprocess.run(["soffice", "-env:UserInstallation=file://" + profile, "--headless", "--convert-to", target,
                        "--outdir", folder, *paths], capture_output=True, timeout=SECONDS)


def sheets_as_csv(paths):
    """{path: lines of all its sheets}; a path is missing when the file is not taken."""
    lines = {}
    with tempfile.TemporaryDirectory(prefix="crosscheck-") as folder:
        copies = {}
        for number, path in enumerate(paths):
            # A name apart for each: the sheets go to NAME-SHEET.csv, all into one folder.
            copies[path] = os.path.join(folder, "book%04d%s" % (number, os.path.splitext(path)[1]))
            shutil.copy(path, copies[path])
        out = os.path.join(folder, "out")
        wanted = list(copies.values())
        while wanted:
            try:
                convert(out, EVERY_SHEET, wanted)
            except subprocess.TimeoutExpired:
                pass
            made = {name[:8] for name in os.listdir(out)} if os.path.isdir(out) else set()
            left = [c for c in wanted if os.path.basename(c)[:8] not in made]
            # A file that ended the program stands first among those left.
            wanted = left[1:] if len(left) < len(wanted) else []
        for path, copy in copies.items():
            prefix = os.path.basename(copy)[:8]
            for name in sorted(os.listdir(out) if os.path.isdir(out) else []):
                if name.startswith(prefix):
                    with open(os.path.join(out, name), "rb") as f:
                        lines.setdefault(path, []).append(b"sheet " + name[8:].encode())
                        lines[path] += f.read().replace(b"\xc2\xa0", b" ").splitlines()
    return lines
