"""Reads the configuration and compiles a family: from the schemas to the classes to be emitted."""

import os
import tomllib
from dataclasses import dataclass, field

from classes import ClassBuilder
from content import ContentCompiler
from simple import SimpleCompiler
from xsd import QName, SchemaError, SchemaSet

HERE = os.path.dirname(os.path.abspath(__file__))


class Cut:
    """Which elements are kept as raw nodes: a list of "Type/element", with "*" for any type."""

    def __init__(self, entries=()):
        self._entries = {tuple(e.split("/")): False for e in entries}

    def is_raw(self, owner, name):
        for key in ((owner, name), ("*", name)):
            if key in self._entries:
                self._entries[key] = True
                return True
        return False

    def unused(self):
        return ["/".join(key) for key, used in self._entries.items() if not used]


@dataclass
class Family:
    """One namespace of generated classes."""

    namespace: str
    schema: str  # relative to the folder of schemas
    units: list
    prefixes: list  # (prefix, URI) in the order in which the writer declares them on the root
    main: str  # target namespace of the schema
    classes: list = field(default_factory=list)
    roots: list = field(default_factory=list)
    missing: dict = field(default_factory=dict)  # by root: what the writer adds to it when it is not there
    root_prefixes: dict = field(default_factory=dict)  # by root: prefixes declared there; others declare all
    optional: frozenset = frozenset()  # required attributes that are written only when set, "Type/attribute"


def load_config(path=os.path.join(HERE, "families.toml")):
    with open(path, "rb") as file:
        return tomllib.load(file)


def compile_family(entry, config, folder):
    """Compiles one [[family]] of the configuration against the schemas in `folder`."""
    path = os.path.join(folder, entry["schema"])
    schemas = SchemaSet([path])
    rules = config["rules"][entry["rules"]]
    if "extra" in rules:
        schemas.add(os.path.join(HERE, rules["extra"]), path)
    cut = Cut(rules.get("raw", ()))
    amendments = [a for a in config.get("amend", ()) if a["dialect"] == entry.get("dialect")]
    simple = SimpleCompiler(schemas, **config.get("simple", {}))
    content = ContentCompiler(schemas, simple, cut, amendments, rules.get("narrow", ()))
    main = next(iter(root_elements(schemas, path))).ns
    text_class = QName(main, rules["text_class"]) if "text_class" in rules else None
    by_hand = {h["type"]: h["header"] for h in rules.get("by_hand", ())}
    builder = ClassBuilder(content, main, text_class, by_hand)
    for root in entry["roots"]:
        component = schemas.find("elements", QName(main, root))
        type_name = content.element_type(component.node, component.document, component.name)
        if not isinstance(type_name, QName):
            raise SchemaError(f"root {root!r} is not of a complex type")
        builder.add_root(component.name, type_name)
    uris = config.get("dialect", {}).get(entry.get("dialect"), {})
    prefixes = []
    for text in entry["prefixes"]:
        prefix, _, uri = text.partition("=")
        prefixes.append((prefix, uris.get(uri, uri)))
    made = Family(entry["namespace"], entry["schema"], entry["units"], prefixes, main, builder.classes, builder.roots)
    made.missing = entry.get("missing", {})
    made.root_prefixes = entry.get("root_prefixes", {})
    made.optional = frozenset(rules.get("optional", ()))
    return made, cut.unused()


def root_elements(schemas, path):
    """Names of the global elements that stand in the document itself."""
    return [c.name for c in schemas.elements.values() if os.path.samefile(c.document.path, path)]
