"""The scripts of the statement tests, which are C++ programs, run through the package: equal values, counts and messages.

The programs write down each script with its files and what `--json` printed, see tests/support/script_runner.cpp.
"""
import itertools
import json
import os
import pathlib
import re
import shutil
import subprocess

import pytest

from script_host import NotTranslated, ScriptHost, same

BUILD = pathlib.Path(os.environ.get("QUILLET_BUILD", "."))
PROGRAMS = ["tests/statements/layouts/statements_test", "tests/statements/workbook/statements_workbook_test"]
#: Of the scripts that were written down, how many must at least be run here.
LEAST = 200


def recorded(folder):
    for program in PROGRAMS:
        path = BUILD / program
        if not path.exists():
            pytest.skip(f"{program} is not built")
        subprocess.run([path, "--gtest_brief=1"], check=True, env={**os.environ, "LD_PRELOAD": "",
                       "QUILLET_RECORD_SCRIPTS": str(folder)}, stdout=subprocess.DEVNULL)
    return sorted(folder.iterdir())


def differences(case, folder):
    script = (case / "script").read_text(errors="surrogateescape").replace((case / "folder").read_text(), str(folder))
    expected = [json.loads(line) for line in (case / "lines").read_text().splitlines()]
    shutil.copytree(case / "before", folder)
    end = {"op": "end"}
    for wanted, line in itertools.zip_longest(expected, ScriptHost(folder).run(script), fillvalue=end):
        if wanted is end or line is end:
            return f"{wanted} instead of {line}"
        for key in wanted:
            if key == "value":
                equal = same(wanted[key], line[key])
            elif key == "messages":
                equal = [text.rstrip("\n") for text in wanted[key]] == line[key]
            else:
                equal = wanted[key] == line[key]
            if not equal and not (wanted["op"] == "close" and wanted["status"] == -1):
                return f"{key} of {wanted}: {line[key]!r}"
    for wanted in (case / "after").iterdir():
        if wanted.suffix == ".csv" and wanted.read_bytes() != (folder / wanted.name).read_bytes():
            return f"{wanted.name}: {(folder / wanted.name).read_bytes()!r}"
    return None


def test_scripts(tmp_path):
    (tmp_path / "cases").mkdir()
    wrong, run, passed_over = [], 0, []
    for case in recorded(tmp_path / "cases"):
        script = (case / "script").read_text(errors="surrogateescape")
        try:
            difference = differences(case, tmp_path / "work")
        except NotTranslated as reason:
            passed_over.append(f"{reason}: {script}")
            difference = None
        except Exception as error:
            difference = f"{type(error).__name__}: {error}"
        else:
            run += 1
        shutil.rmtree(tmp_path / "work", ignore_errors=True)
        if difference:
            wrong.append(re.sub(r"\n\s*", "\n  ", script) + "\n-> " + difference)
    print(f"{run} scripts, {len(passed_over)} passed over")
    assert not wrong, f"{len(wrong)} of {run}\n" + "\n\n".join(wrong[:40])
    assert run >= LEAST, f"{run} scripts"
    assert len(passed_over) <= run // 50, passed_over
