"""Compiles complex types: attribute groups and group references expanded, amendments applied.

The result is close to the schema still: a tree of elements and compositors. `classes.py` turns it into
the classes that are emitted.
"""

from dataclasses import dataclass, replace
from typing import Optional, Tuple, Union

from simple import SimpleType
from xsd import XML, XSD, QName, SchemaError, children, tag

UNBOUNDED = -1


@dataclass(frozen=True)
class Attribute:
    name: QName  # with an empty namespace when it is unqualified
    type: SimpleType
    required: bool = False
    default: Optional[str] = None
    fixed: Optional[str] = None


@dataclass(frozen=True)
class Element:
    """A child element. `type` is a QName for a complex type, a SimpleType, or None for content kept raw."""

    name: QName
    type: Union[QName, SimpleType, None]
    min: int = 1
    max: int = 1
    default: Optional[str] = None


@dataclass(frozen=True)
class Compositor:
    """A sequence or a choice; `group` is the name of the group definition that it came from."""

    kind: str
    items: Tuple = ()
    min: int = 1
    max: int = 1
    group: Optional[QName] = None


@dataclass(frozen=True)
class Wildcard:
    """An `any`: whatever stands here is kept as raw nodes."""


@dataclass(frozen=True)
class ComplexType:
    name: QName
    attributes: Tuple[Attribute, ...] = ()
    content: Optional[Compositor] = None
    text: Optional[SimpleType] = None  # simple content
    mixed: bool = False


def occurs(node):
    low = int(node.get("minOccurs", "1"))
    high = node.get("maxOccurs", "1")
    return low, UNBOUNDED if high == "unbounded" else int(high)


class ContentCompiler:
    """Compiles complex types by name. `cut` decides which elements are kept raw, `amend` what is added, `narrow`
    ("Type/attribute") which attributes are no prose though their type is."""

    def __init__(self, schemas, simple, cut, amendments=(), narrow=()):
        self._schemas, self._simple, self._cut = schemas, simple, cut
        self._amendments, self._narrow = amendments, frozenset(narrow)
        self._done = {}

    def is_complex(self, name):
        component = self._schemas.types.get(name)
        return component is not None and tag(component.node) == "complexType"

    def type(self, name):
        if name not in self._done:
            component = self._schemas.find("types", name)
            self._done[name] = self._narrowed(self._amended(self._complex(component.node, component.document, name)))
        return self._done[name]

    def _narrowed(self, type_):
        def held(attribute):
            if f"{type_.name.local}/{attribute.name.local}" not in self._narrow:
                return attribute
            return replace(attribute, type=replace(attribute.type, atom="narrow"))

        return replace(type_, attributes=tuple(held(a) for a in type_.attributes))

    def _complex(self, node, document, name):
        attributes, content, text, body = [], None, None, node
        mixed = node.get("mixed") == "true"
        for kind in ("simpleContent", "complexContent"):
            wrapped = [c for c in children(node) if tag(c) == kind]
            if wrapped:
                (body,) = children(wrapped[0])
                base = document.resolve(body.get("base"))
                if self.is_complex(base):
                    if tag(body) != "extension":
                        raise SchemaError(f"{document.path}: {name.local}: restriction of a complex type")
                    inherited = self.type(base)
                    attributes += inherited.attributes
                    content, text = inherited.content, inherited.text
                elif kind == "simpleContent":
                    text = self._simple.named(base)
        for child in children(body):
            kind = tag(child)
            if kind in ("sequence", "choice", "all", "group"):
                own = self._particle(child, document, name)
                content = Compositor("sequence", (content, own)) if content else own
            elif kind in ("attribute", "attributeGroup"):
                attributes += self._attributes(child, document)
            elif kind not in ("simpleContent", "complexContent", "anyAttribute"):
                raise SchemaError(f"{document.path}: {name.local}: {kind} is not supported")
        return ComplexType(name, tuple(attributes), content, text, mixed)

    def _attributes(self, node, document):
        if tag(node) == "attributeGroup":
            group = self._schemas.find("attribute_groups", document.resolve(node.get("ref")))
            return [a for c in children(group.node) for a in self._attributes(c, group.document)]
        if tag(node) == "anyAttribute" or node.get("use") == "prohibited":
            return []
        required, default, fixed = node.get("use") == "required", node.get("default"), node.get("fixed")
        if node.get("ref"):
            name = document.resolve(node.get("ref"))
            if name.ns == XML:
                return [Attribute(name, self._simple.named(QName(XSD, "token")))]
            target = self._schemas.find("attributes", name)
            node, document = target.node, target.document
            default = default if default is not None else node.get("default")
        else:
            qualified = node.get("form", "qualified" if document.qualified_attributes else "") == "qualified"
            name = QName(document.target if qualified else "", node.get("name"))
        return [Attribute(name, self._attribute_type(node, document, name), required, default, fixed)]

    def _attribute_type(self, node, document, name):
        if node.get("type"):
            return self._simple.named(document.resolve(node.get("type")))
        inner = [c for c in children(node) if tag(c) == "simpleType"]
        if not inner:
            return self._simple.named(QName(XSD, "string"))
        return self._simple.anonymous(inner[0], document, QName(document.target, "ST_" + name.local))

    def _particle(self, node, document, owner, chain=()):
        kind, (low, high) = tag(node), occurs(node)
        if kind == "element":
            return self._element(node, document, owner, low, high)
        if kind == "any":
            return Wildcard()
        if kind == "group":
            name = document.resolve(node.get("ref"))
            if name in chain:
                raise SchemaError(f"{document.path}: group {name.local} refers to itself")
            group = self._schemas.find("groups", name)
            content = self._particle(children(group.node)[0], group.document, name, chain + (name,))
            if self._cut.is_raw(owner.local, name.local):
                return Compositor("raw", tuple(raw_elements(content)), low, high, name)
            return Compositor("group", (content,), low, high, name)
        if kind in ("sequence", "choice", "all"):
            raw = kind == "choice" and self._cut.is_raw(owner.local, "choice")
            items = tuple(self._particle(c, document, owner, chain) for c in children(node))
            if raw:
                return Compositor("raw", tuple(raw_elements(Compositor(kind, items))), low, high, QName("", kind))
            return Compositor("sequence" if kind == "all" else kind, items, low, high)
        raise SchemaError(f"{document.path}: {owner.local}: {kind} is not supported")

    def _element(self, node, document, owner, low, high):
        if node.get("ref"):
            name = document.resolve(node.get("ref"))
            target = self._schemas.find("elements", name)
            node, document = target.node, target.document
        else:
            qualified = node.get("form", "qualified" if document.qualified else "") == "qualified"
            name = QName(document.target if qualified else "", node.get("name"))
        if self._cut.is_raw(owner.local, name.local):
            return Element(name, None, low, high)
        return Element(name, self.element_type(node, document, owner), low, high, node.get("default"))

    def element_type(self, node, document, owner):
        """The type of an element declaration: the name of a complex type, or a simple type."""
        text = node.get("type")
        if text:
            name = document.resolve(text)
            return name if self.is_complex(name) else self._simple.named(name)
        for inner in children(node):
            if tag(inner) == "simpleType":
                return self._simple.anonymous(inner, document, QName(document.target, "ST_" + node.get("name")))
            if tag(inner) == "complexType":
                # An anonymous type is named after its element and where it stands.
                name = QName(document.target, f"CT_{owner.local.removeprefix('CT_')}_{node.get('name')}")
                self._done[name] = ComplexType(name)  # ends a recursion through the element itself
                self._done[name] = self._complex(inner, document, name)
                return name
        return None

    # Amendments -----------------------------------------------------------------------------------

    def _amended(self, type_):
        for amendment in self._amendments:
            if amendment["type"] == type_.name.local:
                type_ = self._amend(type_, amendment)
        return type_

    def _amend(self, type_, amendment):
        if "attribute" in amendment:
            name = QName("", amendment["attribute"])
            if any(a.name == name for a in type_.attributes):
                return type_
            added = Attribute(name, self._simple.named(self._qname(type_, amendment["of"])))
            return replace(type_, attributes=placed(type_.attributes, added, amendment.get("after")))
        name = QName(type_.name.ns, amendment["element"])
        if any(isinstance(i, Element) and i.name == name for i in type_.content.items):
            return type_
        of = self._qname(type_, amendment["of"])
        added = Element(name, of if self.is_complex(of) else self._simple.named(of), 0)
        items = placed(type_.content.items, added, amendment.get("after"))
        return replace(type_, content=replace(type_.content, items=items))

    def _qname(self, type_, text):
        return self._schemas.find("types", type_.name).document.resolve(text)


def placed(items, added, after):
    """`items` with `added` behind the one called `after`, or at the end."""
    names = [i.name.local if hasattr(i, "name") else None for i in items]
    if after is not None and after not in names:
        raise SchemaError(f"amendment: nothing is called {after!r} to put {added.name.local!r} behind")
    at = names.index(after) + 1 if after is not None else len(items)
    return tuple(items[:at]) + (added,) + tuple(items[at:])


def raw_elements(particle):
    """All elements below a particle, as raw elements."""
    if isinstance(particle, Element):
        return [replace(particle, type=None)]
    if isinstance(particle, Compositor):
        return [e for item in particle.items for e in raw_elements(item)]
    return []
