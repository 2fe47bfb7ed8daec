"""Small pieces of C++ text."""

import json

# C++ type, and how a parameter of it is passed, by the form of a value.
_VALUES = {
    "narrow": ("std::string", False),
    "wide": ("std::wstring", False),
    "boolean": ("bool", True),
    "onOff": ("bool", True),
    "int8": ("int", True),
    "int16": ("int", True),
    "int32": ("int", True),
    "int64": ("long long", True),
    "uint8": ("unsigned char", True),
    "uint16": ("unsigned short", True),
    "uint32": ("unsigned int", True),
    "uint64": ("unsigned long long", True),
    "float32": ("double", True),
    "float64": ("double", True),
    "decimal": ("double", True),
    "hex": ("bindery::c_binary", False),
    "base64": ("bindery::c_binary", False),
    "dateTime": ("bindery::c_datetime", False),
    "date": ("bindery::c_datetime", False),
    "time": ("bindery::c_datetime", False),
}


def value_type(simple):
    return _VALUES[simple.atom][0]


def by_value(simple):
    """True when a getter gives a copy; texts and the like are given by reference."""
    return _VALUES[simple.atom][1] and not simple.is_list


def result_type(simple):
    """What a getter of such a value gives."""
    if simple.is_list:
        return f"const std::vector<{value_type(simple)}>&"
    return value_type(simple) if by_value(simple) else f"const {value_type(simple)}&"


def string(text):
    """A string literal."""
    escaped = json.dumps(text, ensure_ascii=True)
    return escaped.replace("\\u007f", "\\177").replace("\x7f", "\\177")


def default_literal(simple, text):
    """The default of an attribute as an expression, or None when T() says the same or none is needed."""
    if text is None or simple.is_list or simple.atom in ("hex", "base64", "dateTime", "date", "time"):
        return None
    if simple.atom in ("boolean", "onOff"):
        return "true" if text in ("true", "1", "on") else None
    if simple.atom in ("narrow", "wide"):
        return (("L" if simple.atom == "wide" else "") + string(text)) if text else None
    if float(text) == 0:
        return None
    if simple.atom in ("float32", "float64", "decimal"):
        return repr(float(text))
    return text + ("u" if simple.atom in ("uint32",) else "")

