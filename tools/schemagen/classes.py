"""Turns complex types into the classes that are emitted, from the roots of a family down.

A type becomes a class with members in schema order. What stands between two tags and repeats, or is one
of several, becomes a class of its own inside: a choice (`form` "choice") or, for a group definition, a
class named after the group.
"""

from dataclasses import dataclass, field
from typing import Dict, List, Optional, Tuple, Union

from content import UNBOUNDED, Element, Wildcard
from naming import Names, accessor
from simple import SimpleType
from xsd import QName, SchemaError


@dataclass
class Member:
    """One member of a class.

    kind: "attribute", "text" (simple content), "child" (complex), "value" (simple), "raw", "choice", "group"
    """

    kind: str
    name: str
    elements: Tuple[QName, ...] = ()  # what it is called in a document; several for a raw group
    type: Union[SimpleType, "Class", None] = None
    min: int = 1
    max: int = 1
    default: Optional[str] = None

    @property
    def repeats(self):
        return self.max == UNBOUNDED or self.max > 1


@dataclass
class Class:
    name: str
    form: str = "sequence"  # or "choice"
    type_name: Optional[QName] = None  # of the complex type; None for a compositor
    attributes: List[Member] = field(default_factory=list)
    children: List[Member] = field(default_factory=list)
    text: Optional[Member] = None
    inner: List["Class"] = field(default_factory=list)
    outer: Optional["Class"] = None
    open: bool = False  # a wildcard stands in it: unknown children are what it is for
    written_by_hand: Optional[str] = None  # header of the class that stands in its place

    @property
    def path(self):
        return f"{self.outer.path}::{self.name}" if self.outer else self.name

    @property
    def is_compositor(self):
        return self.type_name is None

    @property
    def may_be_empty(self):
        """True when the schema allows an element of this class without any child."""
        if self.text:
            return True
        if self.form == "choice":
            return any(m.min == 0 for m in self.children)
        for m in self.children:
            if m.min > 0 and not (m.kind in ("choice", "group") and m.type.may_be_empty):
                return False
        return True


@dataclass
class Root:
    """A global element: a class derived from that of its type."""

    element: QName
    name: str
    type: Class


class ClassBuilder:
    """Builds the classes of one family. `classes` holds them in the order in which they were met."""

    def __init__(self, content, main, text_class=None, by_hand=()):
        self._content, self._main = content, main
        self._names = Names()
        self._types: Dict[QName, Class] = {}
        self._groups: Dict[QName, Class] = {}
        self._text_class = text_class  # (type name) of string elements that keep their attributes
        self._by_hand = dict(by_hand)
        self._pending = []
        self.classes: List[Class] = []
        self.roots: List[Root] = []

    def add_root(self, element, type_name):
        root = Root(element, "c_" + element.local, self._class(type_name))
        self.roots.append(root)
        self._drain()

    def _drain(self):
        while self._pending:
            self._pending.pop(0)()

    def _class(self, type_name):
        if type_name not in self._types:
            made = Class(self._names.unique("c_" + type_name.local), type_name=type_name)
            made.written_by_hand = self._by_hand.get(type_name.local)
            self._types[type_name] = made
            self.classes.append(made)
            self._pending.append(lambda: self._fill(made, self._content.type(type_name)))
        return self._types[type_name]

    def _text_element_class(self):
        """The class of elements such as `t`: text, with `xml:space` beside it."""
        return self._class(self._text_class)

    def _fill(self, made, type_):
        names = Names(made.name.removeprefix("c_"))
        for a in type_.attributes:
            low = 1 if a.required else 0
            made.attributes.append(
                Member("attribute", names.unique(accessor(a.name.local)), (a.name,), a.type, low, 1, a.default)
            )
        if type_.text:
            made.text = Member("text", names.unique("text"), (), type_.text, 0)
        if type_.content:
            if type_.content.kind == "choice":
                self._choice(made, type_.content, 1, names, made)
            else:
                self._sequence(made, type_.content, 1, names, made)

    def _sequence(self, made, compositor, low, names, type_class):
        """The members of a sequence become members of the class it stands in."""
        if compositor.max != 1:
            elements = [i for i in compositor.items if isinstance(i, Element)]
            if len(compositor.items) == 1 and elements:
                self._element(made, elements[0], 0, UNBOUNDED, names)
            else:
                self._choice(made, compositor, low, names, type_class)  # the document's order is kept that way
            return
        low = min(low, compositor.min)
        for item in compositor.items:
            if isinstance(item, Wildcard):
                made.open = True
            elif isinstance(item, Element):
                self._element(made, item, min(low, item.min), item.max, names)
            elif item.kind == "sequence":
                self._sequence(made, item, low, names, type_class)
            elif item.kind == "choice":
                self._choice(made, item, low, names, type_class)
            elif item.kind == "raw":
                made.children.append(self._raw(item, names))
            elif item.kind == "group":
                made.children.append(self._group_member(item, min(low, item.min), names))

    def _raw(self, item, names):
        elements = tuple(e.name for e in item.items)
        return Member("raw", names.unique(accessor(item.group.local)), elements, None, 0, UNBOUNDED)

    def _element(self, made, item, low, high, names):
        made.children.append(self._element_member(item, low, high, names))

    def _element_member(self, item, low, high, names):
        name = names.unique(accessor(item.name.local))
        if item.type is None:
            return Member("raw", name, (item.name,), None, low, high)
        if isinstance(item.type, SimpleType):
            if item.type.is_wide and self._text_class:
                return Member("child", name, (item.name,), self._text_element_class(), low, high)
            return Member("value", name, (item.name,), item.type, low, high, item.default)
        return Member("child", name, (item.name,), self._class(item.type), low, high)

    def _group_member(self, item, low, names):
        group = self._group(item.group, item.items[0])
        if item.max != 1 and group.form != "choice":
            raise SchemaError(f"repeated group {item.group.local} is not a choice")
        return Member("group", names.unique(accessor(item.group.local)), (), group, low, item.max)

    def _group(self, name, content):
        if name not in self._groups:
            made = Class(self._names.unique("c_" + name.local))
            self._groups[name] = made
            self.classes.append(made)
            names = Names(name.local)
            if content.kind == "choice":
                self._options(made, content, names)
            else:
                self._sequence(made, content, 1, names, made)
        return self._groups[name]

    def _choice(self, made, compositor, low, names, type_class):
        first = next((i for i in compositor.items if isinstance(i, Element)), None)
        stem = made.name.removeprefix("c_")
        if made.is_compositor:
            name = f"c_{stem}_anon_{first.name.local if first else 'any'}"
        else:
            name = f"c_inner_{stem}"
        taken = {c.name for c in made.inner}
        suffix = next(s for s in ["", *(f"_{n}" for n in range(2, 100))] if name + s not in taken)
        inner = Class(name + suffix, form="choice", outer=made)
        made.inner.append(inner)
        self._options(inner, compositor, Names(stem))
        made.open = made.open or inner.open
        high = compositor.max
        if any(m.repeats for m in inner.children):
            high = UNBOUNDED
            for m in inner.children:
                m.max = 1
        low = min(low, compositor.min)
        made.children.append(Member("choice", names.unique("choice"), (), inner, low, high))

    def _options(self, made, compositor, names):
        """The options of a choice; those of a choice inside a choice count as its own."""
        made.form = "choice"
        for item in compositor.items:
            if isinstance(item, Wildcard):
                made.open = True
            elif isinstance(item, Element):
                made.children.append(self._element_member(item, item.min, item.max, names))
            elif item.kind == "group":
                made.children.append(self._group_member(item, item.min, names))
            elif item.kind == "raw":
                made.children.append(self._raw(item, names))
            elif item.kind == "choice" or len(item.items) == 1 or compositor.max != 1:
                self._options(made, item, names)
            else:
                raise SchemaError(f"{made.name}: a sequence of several as one option of a choice is not supported")
