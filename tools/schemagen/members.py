"""Emits the accessors of one member: declarations for the header, bodies for the source."""

from cpp import by_value, default_literal, result_type, value_type


class Text:
    """What a member adds to its class: lines in the public part, the holder, and bodies in the source."""

    def __init__(self):
        self.public, self.private, self.source = [], [], []


def holder(member, optional=False):
    """The type of the holder of an attribute, text or simple element."""
    value = value_type(member.type)
    if member.type.is_list:
        return f"bindery::ct_simple_pod_list_{'single' if member.min and not optional else 'optional'}<{value}>"
    if member.repeats:
        return f"bindery::ct_simple_pod_multi<{value}>"
    return f"bindery::ct_simple_pod_{'single' if member.min and not optional else 'optional'}<{value}>"


def kind(member, optional=False):
    """The runtime's name for how a member is held."""
    if member.kind in ("attribute", "text", "value"):
        single = member.min and not optional
        if member.type.is_list:
            return "listSingle" if single else "listOptional"
        if member.repeats:
            return "multi"
        return "single" if single else "optional"
    one = {"child": "child", "raw": "raw", "choice": "group", "group": "group"}[member.kind]
    return {"child": "children", "raw": "raws", "group": "groups"}[one] if member.repeats else one


def value_member(cls, member, optional):
    """An attribute, the text of simple content, or a child of simple type."""
    out, name, simple = Text(), member.name, member.type
    held = holder(member, optional)
    out.private.append(f"{held} _{name};")
    if held.startswith("bindery::ct_simple_pod_multi"):
        out.public.append(f"{held}& {name}() {{ return _{name}; }}")
        out.public.append(f"const {held}& {name}() const {{ return _{name}; }}")
        out.public.append(f"bool isset_{name}() const {{ return _{name}.isset(); }}")
        out.public.append(f"void unset_{name}() {{ _{name}.clear(); }}")
        return out
    absent = default_literal(simple, member.default) if "optional" in held else None
    if absent is None:
        out.public.append(f"{result_type(simple)} {name}() const {{ return _{name}.get(); }}")
    elif by_value(simple):
        out.public.append(f"{result_type(simple)} {name}() const {{ return _{name}.get({absent}); }}")
    else:
        out.public.append(f"{result_type(simple)} {name}() const;")
        out.source += [
            f"{result_type(simple)} {cls.path}::{name}() const {{",
            f"    static const {value_type(simple)} absent = {absent};",
            f"    return _{name}.isset() ? _{name}.get() : absent;",
            "}",
        ]
    parameter = f"std::vector<{value_type(simple)}>" if simple.is_list else value_type(simple)
    argument = "value" if by_value(simple) else "std::move(value)"
    out.public.append(f"void {name}({parameter} value) {{ _{name}.set({argument}); }}")
    out.public.append(f"bool isset_{name}() const {{ return _{name}.isset(); }}")
    if "optional" in held:
        out.public.append(f"void unset_{name}() {{ _{name}.unset(); }}")
    return out


def element_type(cls, member):
    """The class of a child, as seen from inside `cls`."""
    if member.kind == "raw":
        return "bindery::c_raw_node"
    return member.type.name


def child_member(cls, member):
    """A child element of complex type, a raw one, or a compositor."""
    out, name, of = Text(), member.name, element_type(cls, member)
    if member.repeats:
        held = f"bindery::ct_non_pod_container<{of}>"
        out.private.append(f"{held} _{name};")
        out.public += [
            f"{held}& {name}() {{ return _{name}; }}",
            f"const {held}& {name}() const {{ return _{name}; }}",
            f"bool isset_{name}() const {{ return _{name}.isset(); }}",
            f"void unset_{name}() {{ _{name}.clear(); }}",
        ]
        return out
    out.private.append(f"bindery::ct_child<{of}> _{name};")
    out.public += declared(name, of) + [
        f"bool isset_{name}() const {{ return _{name}.isset(); }}",
        f"void unset_{name}() {{ _{name}.unset(); }}",
    ]
    out.source += defined(cls, name, of, f"return _{name}.get();", f"return _{name}.getIf();", f"_{name}.set(value);")
    return out


def declared(name, of):
    return [
        f"{of}& {name}();",
        f"const {of}& {name}() const;",
        f"void {name}(const {of}& value);",
        f"{of}* find_{name}();",
        f"const {of}* find_{name}() const;",
    ]


def defined(cls, name, of, get, find, assign):
    """Bodies of a child's accessors. `find` serves the constant and the other form."""
    full = of if of.startswith("bindery::") else qualified(cls, of)
    return [
        f"{full}& {cls.path}::{name}() {{ {get} }}",
        f"const {full}& {cls.path}::{name}() const {{ return orEmpty(find_{name}()); }}",
        f"void {cls.path}::{name}(const {of}& value) {{ {assign} }}",
        f"{full}* {cls.path}::find_{name}() {{ {find} }}",
        f"const {full}* {cls.path}::find_{name}() const {{ {find} }}",
    ]


def qualified(cls, of):
    """A class as seen from outside `cls`."""
    for inner in cls.inner:
        if inner.name == of:
            return inner.path
    return of


def option_member(cls, member):
    """One option of a choice: its accessors select it."""
    out, name = Text(), member.name
    option = f"option_{name}"
    out.public.append(f"bool isset_{name}() const {{ return _choice.option() == {option}; }}")
    out.public.append(f"void unset_{name}() {{ if (isset_{name}()) _choice.unset(); }}")
    if member.kind == "value":
        boxed = f"bindery::ct_boxed<{value_type(member.type)}>"
        out.public.append(f"{result_type(member.type)} {name}() const;")
        out.public.append(f"void {name}({value_type(member.type)} value);")
        out.source += [
            f"{result_type(member.type)} {cls.path}::{name}() const {{",
            f"    return orEmpty(_choice.getIf<{boxed}>({option})).value.get();",
            "}",
            f"void {cls.path}::{name}({value_type(member.type)} value) {{",
            f"    _choice.get<{boxed}>({option}).value.set(std::move(value));",
            "}",
        ]
        return out
    of = element_type(cls, member)
    out.public += declared(name, of)
    out.source += defined(
        cls,
        name,
        of,
        f"return _choice.get<{of}>({option});",
        f"return _choice.getIf<{of}>({option});",
        f"_choice.select({option}, value.clone());",
    )
    return out


def options_below(member):
    """All options that a single choice or group leads to; a group's own class forwards to its choice."""
    found = []
    for option in member.type.children:
        if option.kind in ("choice", "group"):
            found += [] if option.repeats else options_below(option)
        elif option.kind in ("child", "raw") and not option.repeats:
            found.append(option)
    return found


def forwarded(cls, member, taken):
    """Accessors that reach the options of a choice from the class that it stands in."""
    out = Text()
    for option in options_below(member):
        name = option.name
        if name in taken:
            continue
        taken.add(name)
        of = element_type(cls, option)
        outer = f"_{member.name}"  # the holder of the choice
        seen = of if of.startswith("bindery::") else option.type.path
        out.public += declared(name, seen) + [f"bool isset_{name}() const {{ return find_{name}() != nullptr; }}"]
        out.public.append(f"void unset_{name}() {{ if (isset_{name}()) _{member.name}.unset(); }}")
        out.source += defined(
            cls,
            name,
            seen,
            f"return {outer}.get().{name}();",
            f"auto* inner = {outer}.getIf(); return inner != nullptr ? inner->find_{name}() : nullptr;",
            f"{outer}.get().{name}(value);",
        )
    return out


def is_set_like(member):
    """A repeated choice whose options each stand there at most once: a set of properties, such as a font's."""
    return (
        member.kind == "choice"
        and member.repeats
        and all(o.min == 0 and not o.repeats and o.kind == "child" for o in member.type.children)
    )


def set_like(cls, member, taken):
    """Accessors for the properties in a repeated choice: the first of its kind, made in the schema's order."""
    out, inner = Text(), member.type.path
    held = f"_{member.name}"
    for option in member.type.children:
        name = option.name
        if name in taken:
            continue
        taken.add(name)
        of, number = option.type.name, f"{inner}::option_{name}"
        out.public += declared(name, of) + [
            f"bool isset_{name}() const {{ return find_{name}() != nullptr; }}",
            f"void unset_{name}();",
        ]
        out.source += defined(
            cls,
            name,
            of,
            f"return propertyAt({held}, {number}).{name}();",
            f"auto* at = findProperty({held}, {number}); return at != nullptr ? at->find_{name}() : nullptr;",
            f"propertyAt({held}, {number}).{name}(value);",
        )
        out.source.append(f"void {cls.path}::unset_{name}() {{ removeProperty({held}, {number}); }}")
    return out
