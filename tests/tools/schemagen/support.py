"""Small schemas for the tests of the schema compiler."""

import os
import sys
import tempfile
import textwrap

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "..", "tools", "schemagen"))

from families import compile_family  # noqa: E402

HEAD = """<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema" xmlns="urn:main" xmlns:o="urn:other"
  targetNamespace="urn:main" elementFormDefault="qualified">"""


def family(body, others=(), **options):
    """Compiles a family from the body of one schema, with the root element "root".

    `others` are further files, (name, whole text). Options: `raw`, `narrow`, `amend`, `simple`, `text_class`.
    """
    with tempfile.TemporaryDirectory() as folder:
        for name, text in (("main.xsd", f"{HEAD}{textwrap.dedent(body)}</xsd:schema>"), *others):
            with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                file.write(text)
        rules = {"raw": options.get("raw", [])}
        rules["narrow"] = options.get("narrow", [])
        if "text_class" in options:
            rules["text_class"] = options["text_class"]
        if "by_hand" in options:
            rules["by_hand"] = options["by_hand"]
        entry = {
            "namespace": "unit",
            "schema": "main.xsd",
            "roots": options.get("roots", ["root"]),
            "units": options.get("units", ["unit"]),
            "prefixes": ["=urn:main", "o=urn:other"],
            "rules": "own",
            "dialect": "one",
        }
        config = {"rules": {"own": rules}, "simple": options.get("simple", {}), "amend": options.get("amend", [])}
        compiled, _ = compile_family(entry, config, folder)
        return compiled


def type_(name, content, attributes=""):
    return f'<xsd:complexType name="{name}">{content}{attributes}</xsd:complexType>'


def root(content, attributes="", rest=""):
    """A schema with the root element "root" of a type CT_Root."""
    return f'<xsd:element name="root" type="CT_Root"/>{type_("CT_Root", content, attributes)}{rest}'


def members(compiled, path="c_CT_Root"):
    """(kind, name, min, max) of the children of a class."""
    return [(m.kind, m.name, m.min, m.max) for m in find(compiled, path).children]


def find(compiled, path):
    def walk(classes):
        for c in classes:
            yield c
            yield from walk(c.inner)

    for c in walk(compiled.classes):
        if c.path == path:
            return c
    raise AssertionError(f"no class {path} among {[c.path for c in walk(compiled.classes)]}")
