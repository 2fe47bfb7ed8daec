"""Runs scripts of the command `quillet run` on the package: each statement becomes a call, each declaration a container,
and what `--json` would print comes out, as far as values, counts and messages go."""
import datetime
import math
import re
import warnings

import quillet
from quillet import _quillet as native
from quillet._containers import ArrayData, ListData, ScalarData, SetData
from quillet._writing import new_list

_TOKEN = re.compile(r'''(?P<space>[ \t\r]+|\#[^\n]*)|(?P<newline>\n)|(?P<text>"(?:[^"\\\n]|\\.)*")
    |(?P<real>\d+\.(?!\.)\d*(?:[eE][+-]?\d+)?|\d+[eE][+-]?\d+)|(?P<integer>\d+)|(?P<name>[A-Za-z_]\w*)|(?P<symbol>\.\.|.)''', re.X)
_ESCAPES = {'"': '"', "\\": "\\", "n": "\n", "t": "\t"}
_BASE = {"integer": int, "real": float, "text": str, "boolean": bool, "any": object, "date": datetime.date}
_TYPE_WORDS = {*_BASE, "alias", "array", "dynamic", "list", "range", "record", "set", "static"}


class NotTranslated(Exception):
    """A script that Python has no equal for."""


class Named(str):
    """A name in a value."""


class Tokens:
    def __init__(self, script):
        self._tokens, depth = [], 0
        for found in _TOKEN.finditer(script):
            kind, text = found.lastgroup, found.group()
            depth += (text in "([{") - (text in ")]}") if kind == "symbol" else 0
            if kind == "text":
                text = re.sub(r"\\(.)", lambda escape: _ESCAPES[escape[1]], text[1:-1])
            if kind != "space" and not (kind == "newline" and depth > 0):
                self._tokens.append((kind, text))
        self._tokens.append(("newline", "\n"))
        self._next = 0

    def peek(self, ahead=0):
        at = self._next + ahead
        return self._tokens[at] if at < len(self._tokens) else ("end", "")

    def take(self, *wanted):
        token = self.peek()
        if wanted and token[1] not in wanted:
            raise NotTranslated(f"{token} instead of {wanted}")
        self._next += 1
        return token[1]

    def skip(self, word):
        if self.peek()[0] in ("name", "symbol") and self.peek()[1] == word:
            self._next += 1
            return True
        return False

    def integer(self):
        return -int(self.take()) if self.skip("-") else int(self.take())

    def starts_integer(self):
        return self.peek()[0] == "integer" or (self.peek()[1] == "-" and self.peek(1)[0] == "integer")


def date_of(text):
    match = re.fullmatch(r"(?:(\d{4})-(\d\d)-(\d\d))?(?:[T ]?(\d\d):(\d\d)(?::(\d\d)(?:[,.](\d{1,3}))?)?)?", text)
    if not text:
        return None
    time = match[4] and datetime.time(int(match[4]), int(match[5]), int(match[6] or 0),
                                      int((match[7] or "0").ljust(3, "0")) * 1000)
    if not match[1]:
        return time
    day = datetime.date(int(match[1]), int(match[2]), int(match[3]))
    return datetime.datetime.combine(day, time) if time else day


def date_text(value):
    time = "" if not hasattr(value, "hour") else value.strftime("%H:%M:%S")
    if time and value.microsecond:
        time += f",{value.microsecond // 1000:03}"
    day = f"{value.year:04}-{value.month:02}-{value.day:02}" if hasattr(value, "year") else ""
    return day + ("T" if day and time else "") + time


class ScriptHost:
    """The variables and sources of a script."""

    def __init__(self, directory):
        self.session = quillet.Session(directory=directory, contexts=99)
        self.context, self.number = self.session, 1
        self.variables, self.types, self.open = {}, {}, []

    def run(self, script):
        """Yields a dictionary for each statement, as the lines of --json; a printed variable is the container itself."""
        self.tokens = Tokens(script)
        while self.tokens.peek()[0] != "end":
            if self.tokens.peek()[0] == "newline":
                self.tokens.take()
                continue
            line = getattr(self, "do_" + self.tokens.take())()
            if line is not None:
                yield line
        for *_, source in reversed(self.open):
            source.close()

    # Statements

    def do_context(self):
        self.number = self.tokens.integer()
        if not 1 <= self.number <= 99:
            raise NotTranslated("contexts count from 1")
        self.context = self.session.context(self.number)

    def do_param(self):
        name, value = self.tokens.take(), self.tokens.take()
        self.context.set_parameters(**{name: value == "true" if name == "finish" else value})

    def do_print(self):
        name = self.tokens.take()
        return {"op": "print", "name": name, "value": self.variables[name]}

    def do_read(self):
        source, items = self.items("from")
        items = {f"item{place}": quillet.into(self.variables[name], label) for place, (name, label) in enumerate(items)}
        return self.told("read", source, lambda: self.context.read(source, **items))

    def do_write(self):
        source, items = self.items("to")
        items = [quillet.to(label, self.variables[name]) for name, label in items]
        return self.told("write", source, lambda: self.context.write(source, *items))

    def do_open(self):
        source, update = self.tokens.take(), self.tokens.skip("update")

        def run():
            self.open.append((source, self.number, self.context.open(source, update=update)))
        return self.told("open", source, run)

    def do_close(self):
        source = self.tokens.take()
        for place in range(len(self.open) - 1, -1, -1):
            if self.open[place][:2] == (source, self.number):
                return self.told("close", source, self.open.pop(place)[2].close)
        return {"op": "close", "source": source, "status": -1, "messages": [], "driver": []}

    def items(self, word):
        source, items = self.tokens.take(), []
        self.tokens.take("{")
        while not self.tokens.skip("}"):
            name = self.tokens.take()
            self.tokens.take(word)
            items.append((name, self.tokens.take()))
            self.tokens.skip(",")
        return source, items

    def told(self, op, source, run):
        line = {"op": op, "source": source, "status": 0, "messages": [], "driver": []}
        counts = ()
        with warnings.catch_warnings(record=True) as caught:
            warnings.simplefilter("always")
            try:
                data = run()
                counts = data._counts if op == "read" else ()
                line["close"] = 0
                line["messages"] = [str(warning.message) for warning in caught]
            except quillet.StatementError as error:
                line.update(status=error.status, close=error.close, counts=list(error.counts),
                            messages=[text.rstrip("\n") for text in error.messages],
                            driver=[{"code": code, "text": text} for code, text in error.driver])
                counts = error.counts
        if op == "read":
            line["counts"] = list(counts)
        if op in ("open", "close"):
            line.pop("close", None), line.pop("counts", None)
        return line

    # Declarations

    def do_declare(self):
        name = self.tokens.take()
        self.tokens.take(":")
        self.declared = name
        make = self.variable_type()
        value, given = None, self.tokens.skip("=")
        if given:
            value = self.value()
        self.variables[name] = make(given and value is None, value)

    def variable_type(self):
        """What makes the variable, when it is told whether it is null and its value."""
        tokens, core = self.tokens, self.session._core
        dynamic, static = tokens.skip("dynamic"), tokens.skip("static")
        flag = native.FLAG_DYNAMIC if dynamic else 0
        if tokens.skip("range"):
            first, last = self.bounds()
            return self.container(SetData, native.Form.set, native.CLASS_SET | native.TYPE_INTEGER | flag,
                                  lambda: native.Container.range(core, first, last, dynamic), self.fill_set)
        if tokens.skip("set"):
            number = self.number_of(self.of_element())
            return self.container(SetData, native.Form.set, native.CLASS_SET | number | flag | native.FLAG_EXPLICIT,
                                  lambda: native.Container.set(core, number, dynamic), self.fill_set)
        if tokens.skip("list"):
            return self.list_type(not static)
        if tokens.skip("array"):
            return self.array_type(dynamic)
        type_ = self.element()

        def scalar(_, value):
            made = ScalarData(native.Container.scalar(core, self.number_of(type_)))
            if value is not None:
                made.value = self.converted(value, type_)
            return made
        return scalar

    def container(self, kind, form, word, make, fill):
        core = self.session._core

        def made(is_null, value):
            native_ = native.Container.uninitialised(core, form, word) if is_null else make()
            held = kind(native_)
            held.type = self.element_type
            if value is not None:
                fill(held, value)
            return held
        return made

    def list_type(self, dynamic):
        flag = native.FLAG_DYNAMIC if dynamic else 0
        core = self.session._core
        if self.tokens.peek()[1] == "of" and self.tokens.peek(1)[1] == "array":
            self.tokens.take(), self.tokens.take()
            self.element_type = object
            return self.container(ListData, native.Form.list, native.CLASS_LIST | flag,
                                  lambda: native.Container.list(core, native.WORD_ARRAY, dynamic), self.fill_list)
        type_ = self.of_element()
        number = self.number_of(type_)
        return self.container(ListData, native.Form.list, native.CLASS_LIST | number | flag,
                              lambda: native.Container.list(core, number or native.WORD_UNION, dynamic), self.fill_list)

    def array_type(self, dynamic):
        sets, types = [], []
        self.tokens.take("(")
        while not self.tokens.skip(")"):
            make, type_ = self.index()
            sets.append(make)
            types.append(type_)
            self.tokens.skip(",")
        number = self.number_of(self.of_element())
        names = tuple(f"i{place}" for place in range(len(sets)))
        flag = native.FLAG_DYNAMIC if dynamic else 0

        def fill(held, value):
            keys = [key if isinstance(key, tuple) else (key,) for key, _ in value]
            held.update([(tuple(map(self.converted, key, types)), self.converted(entry, held.type))
                         for key, (_, entry) in zip(keys, value)])
        made = self.container(lambda native_: ArrayData(native_, names), native.Form.array,
                              native.CLASS_ARRAY | number | flag,
                              lambda: native.Container.array(self.session._core, [s() for s in sets], number, dynamic),
                              fill)
        return made

    def index(self):
        tokens, core = self.tokens, self.session._core
        if tokens.starts_integer():
            first, last = self.bounds()
            return lambda: native.Container.range(core, first, last, False), int
        word = tokens.peek()[1]
        if word in self.variables and word not in _TYPE_WORDS and isinstance(self.variables[word], SetData):
            tokens.take()
            return lambda: self.variables[word]._native, self.variables[word].type
        dynamic = tokens.skip("dynamic")
        if tokens.skip("range"):
            bounded = tokens.starts_integer()
            first, last = self.bounds()
            return lambda: native.Container.range(core, first, last, dynamic or not bounded), int
        dynamic = dynamic or tokens.peek()[1] != "set"
        type_ = self.of_element() if tokens.skip("set") else self.element()
        number = self.number_of(type_)
        return lambda: native.Container.set(core, number, dynamic), type_

    def bounds(self):
        self.element_type = int
        if not self.tokens.starts_integer():
            return 1, 0
        first = self.tokens.integer()
        self.tokens.take("..")
        return first, self.tokens.integer()

    def of_element(self):
        self.tokens.take("of")
        self.element_type = self.element()
        return self.element_type

    def element(self):
        word = self.tokens.take()
        if word in _BASE:
            return _BASE[word]
        if word == "alias":
            self.tokens.take("of")
            of = self.element()
            made = of if of in (int, float, str, bool) else quillet.Alias(of)
            self.types[self.declared] = made
            return made
        if word == "record":
            fields, name = {}, self.declared
            self.tokens.take("(")
            while not self.tokens.skip(")"):
                field = self.tokens.take()
                self.tokens.take(":")
                fields[field] = self.element()
                self.tokens.skip(",")
            self.types[name] = quillet.Record(**fields)
            return self.types[name]
        if word not in self.types:
            raise NotTranslated(f"the type {word}")
        return self.types[word]

    def number_of(self, type_):
        return self.session._types.number(type_)

    # Values

    def value(self):
        tokens = self.tokens
        kind, text = tokens.peek()
        if kind == "text":
            return tokens.take()
        if text in ("{", "[", "("):
            return self.group()
        if kind in ("integer", "real") or text in ("-", "+", "inf"):
            return self.number_value()
        tokens.take()
        return {"null": None, "true": True, "false": False, "nan": math.nan}.get(text, Named(text))

    def number_value(self):
        sign = -1 if self.tokens.skip("-") else 1
        self.tokens.skip("+")
        kind, text = self.tokens.peek()
        self.tokens.take()
        if kind == "integer" and self.tokens.skip(".."):
            return range(sign * int(text), self.tokens.integer() + 1)
        return sign * (int(text) if kind == "integer" else float(text))

    def group(self):
        closing = {"{": "}", "[": "]", "(": ")"}[self.tokens.take()]
        items, pairs = [], False
        while not self.tokens.skip(closing):
            if closing == ")" and self.tokens.peek()[0] == "name" and self.tokens.peek(1)[1] == ":":
                self.tokens.take(), self.tokens.take()
            item = self.value()
            if closing == "}" and self.tokens.skip(":"):
                item, pairs = (item, self.value()), True
            items.append(item)
            self.tokens.skip(",")
        return tuple(items) if closing == ")" else items

    def converted(self, value, type_):
        if isinstance(value, Named):
            return self.variables[value].value
        of = type_
        while isinstance(of, quillet.Alias):
            of = of.of
        if isinstance(of, quillet.Record) and isinstance(value, tuple):
            return tuple(self.converted(part, field) for part, field in zip(value, of.fields.values()))
        if of is datetime.date and isinstance(value, str):
            return date_of(value)
        return value

    def fill_set(self, held, value):
        if isinstance(value, range) and len(value) > 1000 and held._native.is_range:
            value = [value[0], value[-1]]
        for element in value:
            held.add(self.converted(element, held.type))

    def fill_list(self, held, value):
        for item in value:
            known = self.variables.get(item) if isinstance(item, Named) else None
            if known is not None and (held.type is object):
                held._native.list_append_container(known._native)
            else:
                held.append(self.converted(item, held.type))


def same(expected, found, inside_any=False):
    """Whether a printed value is what a container holds."""
    if isinstance(found, ScalarData):
        return same(expected, found.value, found._native.element_type == 0)
    if isinstance(found, native.Container):
        held = {native.Form.set: SetData, native.Form.list: ListData}.get(found.form)
        return same(expected, held(found) if held else ArrayData(found, ()))
    if isinstance(found, (SetData, ListData, ArrayData)) and not found._native.is_made:
        return expected is None
    if isinstance(found, (SetData, ListData)):
        of_any = found._native.element_type == native.TYPE_ANY
        return isinstance(expected, list) and len(expected) == len(found) and \
            all(same(e, f, of_any) for e, f in zip(expected, found))
    if isinstance(found, ArrayData):
        of_any = found._native.element_type == native.TYPE_ANY
        return isinstance(expected, list) and len(expected) == len(found) and \
            all(same(e[0], list(key) if isinstance(key, tuple) else [key]) and same(e[1], value, of_any)
                for e, (key, value) in zip(expected, found.items()))
    if isinstance(found, list):
        return len(expected) == len(found) and all(map(same, expected, found))
    if hasattr(found, "_fields"):
        return isinstance(expected, dict) and all(map(same, expected.values(), found))
    if isinstance(found, (datetime.date, datetime.time)):
        return expected == date_text(found)
    if isinstance(found, float) and not math.isfinite(found):
        return expected == str(found)
    if isinstance(found, str):
        return expected == re.sub("[\ud800-\udfff]", "\ufffd", found)
    if inside_any and type(expected) is not type(found):
        return False
    return expected == found and isinstance(expected, bool) == isinstance(found, bool)
