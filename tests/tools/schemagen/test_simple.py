"""Simple types, attributes and simple content."""

import unittest

from support import family, find, root, type_
from xsd import SchemaError


def attribute_type(definition, of="ST_X", **options):
    """The compiled type of an attribute of type ST_X."""
    f = family(root("", f'<xsd:attribute name="x" type="{of}"/>', definition), **options)
    return find(f, "c_CT_Root").attributes[0].type


def restriction(base, facets, name="ST_X"):
    return f'<xsd:simpleType name="{name}"><xsd:restriction base="{base}">{facets}</xsd:restriction></xsd:simpleType>'


class SimpleTypes(unittest.TestCase):
    def test_atoms(self):
        cases = {
            "boolean": "boolean", "unsignedInt": "uint32", "unsignedShort": "uint16", "unsignedByte": "uint8",
            "int": "int32", "byte": "int8", "long": "int64", "double": "float64", "string": "wide",
            "token": "narrow", "anyURI": "narrow", "ID": "narrow", "hexBinary": "hex", "base64Binary": "base64",
            "dateTime": "dateTime",
        }
        for name, atom in cases.items():
            with self.subTest(name):
                self.assertEqual(attribute_type("", f"xsd:{name}").atom, atom)

    def test_facets_gather_along_the_chain(self):
        t = attribute_type(
            restriction("ST_Base", '<xsd:maxInclusive value="9"/>')
            + restriction("xsd:int", '<xsd:minInclusive value="1"/><xsd:maxInclusive value="99"/>', "ST_Base")
        )
        self.assertEqual(t.facet, {"minInclusive": "1", "maxInclusive": "9"})

    def test_integer_within_small_bounds_is_an_int(self):
        bounds = '<xsd:minInclusive value="0"/><xsd:maxInclusive value="{}"/>'
        self.assertEqual(attribute_type(restriction("xsd:integer", bounds.format(14))).atom, "int32")
        self.assertEqual(attribute_type(restriction("xsd:integer", bounds.format(2**31))).atom, "int64")

    def test_enumeration_of_strings_is_narrow_text(self):
        t = attribute_type(restriction("xsd:string", '<xsd:enumeration value="b"/><xsd:enumeration value="a"/>'))
        self.assertEqual((t.atom, t.enumeration), ("narrow", ("b", "a")))

    def test_patterns_of_one_step_are_alternatives_of_two_steps_both_needed(self):
        t = attribute_type(
            restriction("ST_Base", '<xsd:pattern value="a+"/><xsd:pattern value="b+"/>')
            + restriction("xsd:token", '<xsd:pattern value=".{2}"/>', "ST_Base")
        )
        self.assertEqual(t.patterns, (".{2}", "a+|b+"))

    def test_list_and_union(self):
        item = restriction("xsd:string", "", "ST_Ref")
        t = attribute_type(item + '<xsd:simpleType name="ST_X"><xsd:list itemType="ST_Ref"/></xsd:simpleType>')
        self.assertTrue(t.is_list)
        t = attribute_type(item + '<xsd:simpleType name="ST_X"><xsd:union memberTypes="xsd:int ST_Ref"/></xsd:simpleType>')
        self.assertEqual([m.atom for m in t.members], ["int32", "wide"])
        self.assertEqual(t.atom, "narrow")

    def test_rules_of_the_configuration(self):
        union = '<xsd:simpleType name="ST_X"><xsd:union memberTypes="xsd:boolean xsd:string"/></xsd:simpleType>'
        names = restriction("xsd:string", '<xsd:enumeration value="a"/>')
        colour = restriction("xsd:hexBinary", '<xsd:length value="4"/>')
        self.assertEqual(attribute_type(union, simple={"boolean": ["ST_X"]}).atom, "onOff")
        self.assertEqual(attribute_type(names, simple={"plain": ["ST_X"]}).enumeration, ())
        self.assertEqual(attribute_type(colour, simple={"any_length": ["ST_X"]}).facet, {})
        text = restriction("xsd:string", '<xsd:pattern value="(a|a)+"/>')
        self.assertEqual(attribute_type(text, simple={"pattern": {"ST_X": "a+"}}).patterns, ("a+",))
        self.assertEqual(attribute_type(restriction("xsd:string", ""), simple={"narrow": ["ST_X"]}).atom, "narrow")

    def test_what_is_not_supported_says_so(self):
        with self.assertRaisesRegex(SchemaError, "built-in type 'duration' is not supported"):
            attribute_type("", "xsd:duration")


class Attributes(unittest.TestCase):
    def test_use_default_reference_and_group(self):
        other = """<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema" targetNamespace="urn:other">
            <xsd:attribute name="id" type="xsd:string"/></xsd:schema>"""
        group = (
            '<xsd:attributeGroup name="AG_In"><xsd:attribute name="g" type="xsd:int"/></xsd:attributeGroup>'
            '<xsd:attributeGroup name="AG"><xsd:attributeGroup ref="AG_In"/></xsd:attributeGroup>'
        )
        uses = (
            '<xsd:attribute name="a" type="xsd:int" use="required"/><xsd:attribute name="b" type="xsd:int" default="7"/>'
            '<xsd:attribute ref="o:id" use="required"/><xsd:attributeGroup ref="AG"/>'
            '<xsd:attribute name="gone" type="xsd:int" use="prohibited"/>'
        )
        imported = '<xsd:import namespace="urn:other" schemaLocation="other.xsd"/>'
        f = family(imported + root("", uses, group), [("other.xsd", other)])
        got = [(a.elements[0].ns, a.name, a.min, a.default) for a in find(f, "c_CT_Root").attributes]
        self.assertEqual(got, [("", "a", 1, None), ("", "b", 0, "7"), ("urn:other", "id", 1, None), ("", "g", 0, None)])

    def test_simple_content(self):
        base = ('<xsd:simpleContent><xsd:extension base="{}"><xsd:attribute name="{}" type="xsd:int"/>'
                "</xsd:extension></xsd:simpleContent>")
        f = family(root("", base.format("CT_Text", "more"), type_("CT_Text", base.format("xsd:string", "own"))))
        c = find(f, "c_CT_Root")
        self.assertEqual(([a.name for a in c.attributes], c.text.type.atom), (["own", "more"], "wide"))

    def test_second_use_of_a_name_gets_a_suffix(self):
        f = family(root('<xsd:sequence><xsd:element name="x" type="xsd:int"/></xsd:sequence>',
                        '<xsd:attribute name="x" type="xsd:int"/><xsd:attribute name="auto" type="xsd:int"/>'))
        c = find(f, "c_CT_Root")
        self.assertEqual([a.name for a in c.attributes] + [m.name for m in c.children], ["x", "auto_", "x_2"])


if __name__ == "__main__":
    unittest.main()
