"""Writes the header that maps a dialect's tag to the classes of its families."""

from cpp import value_type
from emit import GENERATED, all_classes, text
from xsd import SchemaError

TAGS = (("excelNormal_tag", "the Transitional form"), ("excelStrict_tag", "the Strict form"))


def dialect_header(parts):
    """`parts` is a list of (name, (family of the one dialect, family of the other))."""
    lines = [GENERATED.format("the families of both dialects"), "#pragma once", ""]
    stems = sorted({f.units[0] for _, families in parts for f in families})
    lines += [f'#include "ooxml/generated/{stem}/{stem}-fwd.h"' for stem in stems]
    lines += ["", "/// The classes of each dialect, so that one text serves both: `dialect<Tag>::c_worksheet`,"]
    lines += ["/// `dialect<Tag>::sml::c_CT_Xf`.", "namespace ooxml {", ""]
    lines += [f"struct {tag} {{}};    // {what}" for tag, what in TAGS]
    lines += ["", "template <class Tag>", "struct dialect;"]
    for index, (tag, _) in enumerate(TAGS):
        lines += ["", "template <>", f"struct dialect<{tag}> {{"]
        roots = {}
        for name, families in parts:
            lines.append(f"    struct {name} {{")
            both = shared(name, families)
            space = families[index].namespace
            lines += [f"        using {c} = ::{space}::{c};" for c in both]
            lines.append("    };")
            for root in families[0].roots:
                roots[root.name] = space
        lines += [f"    using {name} = ::{space}::{name};" for name, space in roots.items()]
        lines.append("};")
    return text(lines + ["", "}  // namespace ooxml"])


def shared(part, families):
    """The classes that both families of a part have, after a check that their members agree."""
    one, other = (dict(members(f)) for f in families)
    both = [name for name in one if name in other]
    for name in one:
        if name not in other:
            raise SchemaError(f"part {part}: {name} is missing in {families[1].namespace}")
        if one[name] != other[name]:
            differ = sorted(set(one[name]) ^ set(other[name]), key=str)
            raise SchemaError(f"part {part}: {name} differs in the dialects: {differ}")
    return [name for name in both if "::" not in name]


def members(family):
    """(class, its members with what they hold): what an engine text sees of a family."""
    for c in all_classes(family.classes):
        seen = []
        for m in c.attributes + c.children + ([c.text] if c.text else []):
            of = value_type(m.type) if m.kind in ("attribute", "text", "value") else m.type and m.type.path
            seen.append((m.name, of, m.repeats, getattr(m.type, "is_list", False)))
        yield c.path, frozenset(seen)
