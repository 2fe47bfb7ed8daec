"""The text of emitted units, and the program around it."""

import contextlib
import io
import os
import sys
import tempfile
import unittest

from support import HEAD, family, root, type_
from emit import FamilyEmitter, spread
from emit_dialect import dialect_header
from schemagen import generate, generated_files, main
from xsd import SchemaError

BODY = root(
    '<xsd:sequence><xsd:element name="leaf" type="CT_Leaf" maxOccurs="unbounded"/>'
    '<xsd:element name="n" type="xsd:int" minOccurs="0"/><xsd:group ref="EG_Pick"/></xsd:sequence>',
    '<xsd:attribute name="mode" type="ST_Mode" default="on"/><xsd:attribute name="id" type="xsd:token" use="required"/>',
    type_("CT_Leaf", "", '<xsd:attribute name="val" type="xsd:int" default="3"/>')
    + '<xsd:group name="EG_Pick"><xsd:choice><xsd:element name="x" type="CT_Leaf"/><xsd:element name="y" type="CT_Leaf"/>'
    "</xsd:choice></xsd:group>"
    '<xsd:simpleType name="ST_Mode"><xsd:restriction base="xsd:string"><xsd:enumeration value="on"/>'
    '<xsd:enumeration value="of&quot;f"/></xsd:restriction></xsd:simpleType>',
)


class Units(unittest.TestCase):
    def setUp(self):
        self.files = FamilyEmitter(family(BODY)).files()

    def expect(self, file, *fragments):
        for fragment in fragments:
            self.assertIn(fragment, self.files[file])

    def test_names_of_a_compositor_have_its_token(self):
        self.expect("unit/unit.cpp", 'entry(2, "leaf", 13),', 'entry(2, "n", 14),', 'entry(2, "x", 15),', 'entry(2, "y", 15),')

    def test_rows_of_the_tables(self):
        self.expect(
            "unit/unit.cpp",
            '{"mode", 1, Kind::optional, offsetof(c_CT_Root, _mode), __LINE__, 0, 1, &spec::ST_Mode}',
            '{"id", 1, Kind::single, offsetof(c_CT_Root, _id), __LINE__, 1, 1, &spec::xsd_token}',
            '{"leaf", 2, Kind::children, offsetof(c_CT_Root, _leaf), __LINE__, 1, unbounded, nullptr, &c_CT_Leaf::info}',
            '{"", 1, Kind::group, offsetof(c_CT_Root, _EG_Pick), __LINE__, 1, 1, nullptr, &c_EG_Pick::info}',
            '{"x", 2, Kind::child, 0, __LINE__, 1, 1, nullptr, &c_CT_Leaf::info}',
            ".choiceOffset = offsetof(c_EG_Pick, _choice)",
        )

    def test_accessors(self):
        self.expect("unit/unit.h", "int val() const { return _val.get(3); }", "void unset_n() { _n.unset(); }", "c_CT_Leaf& x();")
        self.assertNotIn("unset_id", self.files["unit/unit.h"])

    def test_attributes_by_name_are_held_narrow(self):
        body = root("", '<xsd:attribute name="a" type="xsd:string"/><xsd:attribute name="b" type="xsd:string"/>')
        header = FamilyEmitter(family(body, narrow=["CT_Root/b"])).files()["unit/unit.h"]
        self.assertIn("const std::wstring& a() const", header)
        self.assertIn("const std::string& b() const", header)

    def test_enumeration_texts_are_escaped(self):
        self.expect("unit/unit-types.h", r'"on", "of\"f",')

    def test_output_is_the_same_each_time(self):
        self.assertEqual(self.files, FamilyEmitter(family(BODY)).files())

    def test_classes_are_spread_over_units_in_order(self):
        compiled = family(BODY)
        one, two = spread(compiled.classes, 2)
        self.assertEqual(one + two, compiled.classes)
        self.assertTrue(one and two)

    def test_a_class_written_by_hand_is_only_referred_to(self):
        files = FamilyEmitter(family(BODY, by_hand=[{"type": "CT_Leaf", "header": "own/leaf.h"}])).files()
        self.assertNotIn("class c_CT_Leaf", files["unit/unit.h"] + files["unit/unit-fwd.h"])
        self.assertIn('#include "own/leaf.h"', files["unit/unit-fwd.h"])
        self.assertIn("&c_CT_Leaf::info", files["unit/unit.cpp"])

    def test_dialects_have_to_agree(self):
        one, other = family(BODY), family(BODY.replace('name="mode" type="ST_Mode"', 'name="mode" type="xsd:int"'))
        self.assertIn("using c_CT_Leaf = ::unit::c_CT_Leaf;", dialect_header([("part", (one, one))]))
        with self.assertRaisesRegex(SchemaError, "c_CT_Root differs in the dialects"):
            dialect_header([("part", (one, other))])


class Program(unittest.TestCase):
    CONFIG = {
        "rules": {"own": {}},
        "family": [{"namespace": "unit", "schema": "main.xsd", "roots": ["root"], "units": ["unit"],
                    "prefixes": ["=urn:main"], "rules": "own"}],
    }  # fmt: skip

    def test_misspelled_raw_entries_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "main.xsd"), "w", encoding="utf-8") as file:
                file.write(f"{HEAD}{BODY}</xsd:schema>")
            config = {**self.CONFIG, "rules": {"own": {"raw": ["CT_Root/laef"]}}}
            with self.assertRaisesRegex(SchemaError, "'CT_Root/laef' names nothing"):
                generate(folder, config)
            self.assertIn("unit/unit.h", generate(folder, self.CONFIG))

    def test_only_marked_files_count_as_generated(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, content in (("a.h", "// Generated by tools/schemagen\n"), ("b.h", "// by hand\n")):
                with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                    file.write(content)
            self.assertEqual(list(generated_files(folder)), ["a.h"])

    def test_missing_schemas_are_a_clear_failure(self):
        with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stderr(io.StringIO()):
            sys.argv = ["schemagen.py", folder, folder]
            with self.assertRaisesRegex(SystemExit, "schemagen: .*No such file"):
                main()


if __name__ == "__main__":
    unittest.main()
