"""Compiles simple types: restriction by restriction into one flat description.

`atom` says how one item of the type looks and with it which C++ value holds it. A union is held as the text that was written,
checked against its members in order; a list is a vector of its item type.
"""

from dataclasses import dataclass, replace
from typing import Tuple

from xsd import XSD, QName, SchemaError, children, tag

# How a value of a built-in type looks, by the runtime's names, and the bounds that the built-in type adds.
_BUILT_IN = {
    "boolean": ("boolean", None),
    "unsignedInt": ("uint32", None),
    "unsignedShort": ("uint16", None),
    "unsignedByte": ("uint8", None),
    "int": ("int32", None),
    "short": ("int16", None),
    "byte": ("int8", None),
    "long": ("int64", None),
    "integer": ("int64", None),
    "nonNegativeInteger": ("int64", (0, None)),
    "positiveInteger": ("int64", (1, None)),
    "unsignedLong": ("uint64", None),
    "double": ("float64", None),
    "float": ("float32", None),
    "decimal": ("decimal", None),
    "string": ("wide", None),
    "normalizedString": ("wide", None),
    "token": ("narrow", None),
    "anyURI": ("narrow", None),
    "ID": ("narrow", None),
    "NCName": ("narrow", None),
    "Name": ("narrow", None),
    "language": ("narrow", None),
    "hexBinary": ("hex", None),
    "base64Binary": ("base64", None),
    "dateTime": ("dateTime", None),
    "date": ("date", None),
    "time": ("time", None),
}

_BOUNDS = ("minInclusive", "maxInclusive", "minExclusive", "maxExclusive")
_LENGTHS = ("length", "minLength", "maxLength")
_DIGITS = ("totalDigits", "fractionDigits")


@dataclass(frozen=True)
class SimpleType:
    """A simple type with all facets of its chain of restrictions."""

    name: QName
    atom: str
    preserve: bool = False  # white space is kept; all other types collapse it
    enumeration: Tuple[str, ...] = ()
    patterns: Tuple[str, ...] = ()  # all must match
    facets: Tuple[Tuple[str, str], ...] = ()
    members: Tuple["SimpleType", ...] = ()  # of a union
    is_list: bool = False

    @property
    def facet(self):
        return dict(self.facets)

    @property
    def is_wide(self):
        return self.atom == "wide" and not self.is_list


def built_in(local):
    if local not in _BUILT_IN:
        raise SchemaError(f"built-in type {local!r} is not supported")
    atom, bounds = _BUILT_IN[local]
    facets = ()
    if bounds:
        facets = tuple((n, str(v)) for n, v in zip(("minInclusive", "maxInclusive"), bounds) if v is not None)
    return SimpleType(QName(XSD, local), atom, preserve=local == "string", facets=facets)


class SimpleCompiler:
    """Turns type names into `SimpleType`s; each is compiled once.

    `narrow` names string types whose texts are identifiers rather than prose; `boolean` names unions that
    stand for a truth value; `plain` names enumerations that are held as any text; `any_length` lifts length
    facets that real files do not keep to; `pattern` gives a type another pattern of the same texts.
    """

    def __init__(self, schemas, narrow=(), boolean=(), plain=(), any_length=(), pattern=None):
        self._schemas = schemas
        self._narrow, self._boolean = set(narrow), set(boolean)
        self._plain, self._any_length = set(plain), set(any_length)
        self._pattern = dict(pattern or {})
        self._done = {}

    def named(self, name):
        if name not in self._done:
            if name.ns == XSD:
                self._done[name] = built_in(name.local)
            else:
                component = self._schemas.find("types", name)
                self._done[name] = self._amended(self.anonymous(component.node, component.document, name))
        return self._done[name]

    def anonymous(self, node, document, name):
        (body,) = [c for c in children(node)]
        kind = tag(body)
        if kind == "restriction":
            return self._restriction(body, document, name)
        if kind == "list":
            item = self.named(document.resolve(body.get("itemType")))
            return replace(item, name=name, is_list=True, preserve=False)
        if kind == "union":
            members = [self.named(document.resolve(m)) for m in (body.get("memberTypes") or "").split()]
            members += [self.anonymous(m, document, name) for m in children(body)]
            return SimpleType(name, "narrow", members=tuple(members))
        raise SchemaError(f"{document.path}: {name.local}: {kind} in a simple type")

    def _restriction(self, body, document, name):
        base_name = body.get("base")
        inner = [c for c in children(body) if tag(c) == "simpleType"]
        base = self.named(document.resolve(base_name)) if base_name else self.anonymous(inner[0], document, name)
        enumeration, patterns, facets, preserve = [], [], dict(base.facets), base.preserve
        for facet in children(body):
            kind, value = tag(facet), facet.get("value")
            if kind == "enumeration":
                enumeration.append(value)
            elif kind == "pattern":
                patterns.append(value)
            elif kind == "whiteSpace":
                preserve = value == "preserve"
            elif kind in _BOUNDS + _LENGTHS + _DIGITS:
                facets[kind] = value
            elif kind != "simpleType":
                raise SchemaError(f"{document.path}: {name.local}: facet {kind} is not supported")
        # Several patterns of one step are alternatives; those of different steps must all match.
        step = ("|".join(patterns),) if patterns else ()
        result = replace(
            base,
            name=name,
            facets=tuple(sorted(facets.items())),
            enumeration=tuple(enumeration) or base.enumeration,
            patterns=base.patterns + step,
            preserve=preserve,
        )
        if result.atom == "wide" and (result.enumeration or result.patterns):
            result = replace(result, atom="narrow")
        return result

    def _amended(self, type_):
        local = type_.name.local
        if local in self._narrow and type_.atom == "wide":
            type_ = replace(type_, atom="narrow")
        if local in self._boolean:
            type_ = replace(type_, atom="onOff", members=())
        if local in self._plain:
            type_ = replace(type_, enumeration=())
        if type_.atom == "int64" and within_int(type_.facet):
            type_ = replace(type_, atom="int32")
        if local in self._any_length:
            type_ = replace(type_, facets=tuple(f for f in type_.facets if f[0] not in _LENGTHS))
        if local in self._pattern:
            type_ = replace(type_, patterns=(self._pattern[local],))
        return type_


def within_int(facets):
    """True when the bounds leave only values that an int holds."""
    low, high = facets.get("minInclusive"), facets.get("maxInclusive")
    return None not in (low, high) and -(2**31) <= int(low) and int(high) < 2**31
