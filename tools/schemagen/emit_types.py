"""Emits the simple types of a family: enumeration texts, patterns, facets and value specs.

All are constant-initialised; of the patterns only the automaton is made later, when one is first asked.
"""

from cpp import string
from naming import Names
from simple import SimpleType


class TypeTable:
    """The simple types that a family uses, each with the name of its spec."""

    def __init__(self):
        self._names = Names()
        self._specs = {}  # SimpleType -> name, members before the unions that they belong to

    def spec(self, simple):
        """Name of the rules of one item of a type, relative to the family's namespace."""
        key = item_of(simple)
        if key not in self._specs:
            for member in key.members:
                self.spec(member)
            local = key.name.local
            self._specs[key] = self._names.unique(local if local.startswith("ST_") else "xsd_" + local)
        return "spec::" + self._specs[key]

    def emit(self):
        """The definitions, in the order of their names' first use."""
        lines = []
        for simple, name in self._specs.items():
            lines += self._emit_one(simple, name)
        return lines

    def _emit_one(self, simple, name):
        lines, given = [], []
        if simple.enumeration:
            lines.append(f"inline constexpr std::string_view {name}_texts[] = {{")
            lines += wrapped([string(t) for t in simple.enumeration])
            lines.append("};")
            given.append(f".enumeration = {name}_texts")
        facets = facet_fields(simple)
        if simple.patterns:
            for i, pattern in enumerate(simple.patterns):
                lines.append(f"inline constinit const bindery::c_regex {name}_pattern{i}({string(pattern)});")
            all_patterns = ", ".join(f"&{name}_pattern{i}" for i in range(len(simple.patterns)))
            lines.append(f"inline constexpr const bindery::c_regex* {name}_patterns[] = {{{all_patterns}}};")
            facets.append(f".patterns = {name}_patterns")
        if facets:
            lines.append(f"inline constexpr bindery::Facets {name}_facets = {{{', '.join(facets)}}};")
            given.append(f".facets = &{name}_facets")
        if simple.members:
            members = ", ".join("&" + self._specs[item_of(m)] for m in simple.members)
            lines.append(f"inline constexpr const bindery::ValueSpec* {name}_members[] = {{{members}}};")
            given.append(f".members = {name}_members")
        space = "preserve" if simple.preserve else "collapse"
        arguments = [f"bindery::Atomic::{simple.atom}", f"bindery::Whitespace::{space}"]
        if given:
            arguments.append("{" + ", ".join(given) + "}")
        lines.append(f"inline constexpr bindery::ValueSpec {name} = bindery::valueSpec({', '.join(arguments)});")
        return lines


def item_of(simple):
    """The type of one item; a list has no spec of its own."""
    if not simple.is_list:
        return simple
    return SimpleType(simple.name, simple.atom, False, simple.enumeration, simple.patterns, (), simple.members)


def facet_fields(simple):
    facet, fields = simple.facet, []
    low = facet.get("length", facet.get("minLength"))
    high = facet.get("length", facet.get("maxLength"))
    if low is not None:
        fields.append(f".minLength = {low}")
    if high is not None:
        fields.append(f".maxLength = {high}")
    for bound, field in (("min", "minimum"), ("max", "maximum")):
        if f"{bound}Exclusive" in facet:
            fields.append(f".{field} = {number(facet[bound + 'Exclusive'])}")
        elif f"{bound}Inclusive" in facet:
            fields.append(f".{field} = {number(facet[bound + 'Inclusive'])}")
    for bound, field in (("min", "minimumExcluded"), ("max", "maximumExcluded")):
        if f"{bound}Exclusive" in facet:
            fields.append(f".{field} = true")
    for digits in ("totalDigits", "fractionDigits"):
        if digits in facet:
            fields.append(f".{digits} = {facet[digits]}")
    return fields


def number(text):
    """A bound as a double: all bounds in use are exact in one."""
    return text if "." in text or "e" in text.lower() else text + ".0"


def wrapped(items, indent="    ", width=118):
    lines, line = [], indent
    for item in items:
        if len(line) + len(item) + 2 > width and line.strip():
            lines.append(line.rstrip())
            line = indent
        line += item + ", "
    lines.append(line.rstrip())
    return lines
