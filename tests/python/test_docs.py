"""The examples of docs/python.md run, one after the other, and do what they say; so do those of the docstrings."""
import doctest
import importlib
import os
import pathlib
import pkgutil
import re

import pytest

import quillet

PAGE = pathlib.Path(__file__).parents[2] / "docs" / "python.md"


def examples():
    """Indented blocks of the page that are Python: those before which no shell prompt or path stands."""
    blocks = re.findall(r"(?:^    .*\n|^\n(?=    ))+", PAGE.read_text(), re.M)
    return [re.sub(r"^    ", "", block, flags=re.M) for block in blocks if "    $ " not in block]


def test_the_page(tmp_path, monkeypatch):
    pytest.importorskip("pandas")
    monkeypatch.chdir(tmp_path)
    names = {"__name__": "docs"}
    blocks = examples()
    assert len(blocks) >= 2
    for block in blocks:
        exec(compile(block, str(PAGE), "exec"), names)


def test_the_docstrings():
    tried = 0
    for found in pkgutil.iter_modules(quillet.__path__):
        if not found.name.startswith("_quillet"):
            result = doctest.testmod(importlib.import_module(f"quillet.{found.name}"))
            assert result.failed == 0
            tried += result.attempted
    assert tried >= 2


def test_everything_public_says_what_it_is():
    for name in quillet.__all__:
        thing = getattr(quillet, name)
        assert thing.__doc__, name
        for member, value in vars(thing).items():
            if isinstance(thing, type) and callable(value) and not member.startswith("_"):
                assert value.__doc__ or getattr(getattr(thing.__mro__[1], member, None), "__doc__", None), (name, member)
    assert os.path.exists(os.path.join(quillet.__path__[0], "py.typed"))
