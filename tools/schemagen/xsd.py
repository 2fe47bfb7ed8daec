"""Reads XML Schema documents into tables of named components.

A `SchemaSet` knows every global component of the documents that it was given and of what they include
or import. Nothing is resolved here beyond names: a component is the parsed node together with the
document that it stands in, whose prefixes and target namespace give its names a meaning.
"""

import os
import xml.etree.ElementTree as ET
from collections import namedtuple

XSD = "http://www.w3.org/2001/XMLSchema"
XML = "http://www.w3.org/XML/1998/namespace"

QName = namedtuple("QName", "ns local")

_COMPONENTS = {
    "complexType": "types",
    "simpleType": "types",
    "element": "elements",
    "attribute": "attributes",
    "group": "groups",
    "attributeGroup": "attribute_groups",
}


class SchemaError(Exception):
    """The schema uses something that the compiler cannot express. Says what and where."""


def tag(node):
    """The local name of a schema node, such as "sequence"."""
    return node.tag.rpartition("}")[2]


def children(node):
    """The schema children of a node; annotations say nothing that a compiler needs."""
    return [c for c in node if isinstance(c.tag, str) and tag(c) != "annotation"]


class Document:
    """One schema document: its root, its target namespace and its prefixes."""

    def __init__(self, path, includer=None):
        self.path = path
        self.prefixes = {"xml": XML}
        root = None
        for event, item in ET.iterparse(path, events=("start-ns", "start")):
            if event == "start-ns":
                self.prefixes.setdefault(item[0], item[1])
            elif root is None:
                root = item
        self.root = root
        self.target = root.get("targetNamespace") or ""
        if includer and not self.target:
            # It takes the namespace of the document which includes it, and may use its prefixes.
            self.target = includer.target
            self.prefixes = {**includer.prefixes, **self.prefixes}
        self.qualified = root.get("elementFormDefault") == "qualified"
        self.qualified_attributes = root.get("attributeFormDefault") == "qualified"

    def resolve(self, text):
        prefix, _, local = text.rpartition(":")
        if prefix and prefix not in self.prefixes:
            raise SchemaError(f"{self.path}: undeclared prefix in {text!r}")
        return QName(self.prefixes.get(prefix, "" if prefix else self.target), local)


Component = namedtuple("Component", "name node document")


class SchemaSet:
    """All global components of some documents, by namespace and name."""

    def __init__(self, paths):
        self.types, self.elements, self.attributes, self.groups, self.attribute_groups = {}, {}, {}, {}, {}
        self._read = set()
        for path in paths:
            self._load(path, None)

    def add(self, path, beside):
        """Reads a document without a target namespace as if `beside` included it."""
        self._load(path, Document(beside))

    def _load(self, path, includer):
        key = (os.path.realpath(path), includer.target if includer else None)
        if key in self._read:
            return
        self._read.add(key)
        document = Document(path, includer)
        for node in children(document.root):
            kind = tag(node)
            if kind in ("include", "import"):
                # An import without a file at hand matters only when something refers into it.
                location = node.get("schemaLocation")
                target = os.path.join(os.path.dirname(path), location) if location else None
                if target and os.path.exists(target):
                    self._load(target, document if kind == "include" else None)
                elif kind == "include":
                    raise SchemaError(f"{path}: included file {location!r} is missing")
            elif kind in _COMPONENTS:
                name = QName(document.target, node.get("name"))
                getattr(self, _COMPONENTS[kind]).setdefault(name, Component(name, node, document))
            else:
                raise SchemaError(f"{path}: {kind} is not supported")

    def find(self, table, name):
        component = getattr(self, table).get(name)
        if component is None:
            raise SchemaError(f"no {table[:-1]} {name.local!r} in namespace {name.ns!r}")
        return component
