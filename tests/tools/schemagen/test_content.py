"""What becomes of each construct of a content model."""

import unittest

from support import family, find, members, root, type_
from xsd import SchemaError

LEAF = type_("CT_Leaf", "", '<xsd:attribute name="val" type="xsd:int"/>')


def element(name, of="CT_Leaf", occurs=""):
    return f'<xsd:element name="{name}" type="{of}" {occurs}/>'


class ContentModels(unittest.TestCase):
    def test_particles(self):
        optional, many = 'minOccurs="0"', 'maxOccurs="unbounded"'
        seq = "<xsd:sequence{}>{}</xsd:sequence>"
        choice = "<xsd:choice{}>{}</xsd:choice>"
        ab = element("a") + element("b")
        cases = [
            ("once", seq.format("", element("a")), [("child", "a", 1, 1)]),
            ("optional and bounded", seq.format("", element("a", occurs=optional) + element("b", occurs='maxOccurs="4"')),
             [("child", "a", 0, 1), ("child", "b", 1, 4)]),
            ("optional sequence", seq.format("", seq.format(" " + optional, ab)), [("child", "a", 0, 1), ("child", "b", 0, 1)]),
            ("repeated sequence of one", seq.format(" " + many, element("a")), [("child", "a", 0, -1)]),
            ("repeated sequence of two", seq.format(" " + many, ab), [("choice", "choice", 1, -1)]),
            ("simple element", seq.format("", element("n", "xsd:int")), [("value", "n", 1, 1)]),
            ("choice at the top", choice.format("", ab), [("choice", "choice", 1, 1)]),
            ("repeated choice", choice.format(" " + many, ab), [("choice", "choice", 1, -1)]),
            ("an option that repeats", choice.format("", element("a") + element("b", occurs=many)), [("choice", "choice", 1, -1)]),
            ("two choices", seq.format("", choice.format("", ab) + choice.format("", element("c") + element("d"))),
             [("choice", "choice", 1, 1), ("choice", "choice_2", 1, 1)]),
            ("keyword", seq.format("", element("operator")), [("child", "operator_", 1, 1)]),
            ("any", seq.format("", element("a") + "<xsd:any/>"), [("child", "a", 1, 1)]),
            ("all", f"<xsd:all>{ab}</xsd:all>", [("child", "a", 1, 1), ("child", "b", 1, 1)]),
        ]
        for name, content, expected in cases:
            with self.subTest(name):
                self.assertEqual(members(family(root(content, rest=LEAF))), expected)

    def test_choice_is_an_inner_class(self):
        f = family(root(f'<xsd:choice>{element("a")}{element("b")}</xsd:choice>', rest=LEAF))
        self.assertEqual(find(f, "c_CT_Root::c_inner_CT_Root").form, "choice")
        self.assertEqual(members(f, "c_CT_Root::c_inner_CT_Root"), [("child", "a", 1, 1), ("child", "b", 1, 1)])

    def test_choice_in_a_choice_adds_its_options(self):
        inner = f'<xsd:choice>{element("b")}{element("c")}</xsd:choice>'
        f = family(root(f'<xsd:choice>{element("a")}{inner}</xsd:choice>', rest=LEAF))
        self.assertEqual([m[1] for m in members(f, "c_CT_Root::c_inner_CT_Root")], ["a", "b", "c"])

    def test_groups(self):
        groups = (
            f'<xsd:group name="EG_Pick"><xsd:choice>{element("a")}{element("b")}</xsd:choice></xsd:group>'
            f'<xsd:group name="EG_In"><xsd:sequence><xsd:choice>{element("sp")}{element("pic")}</xsd:choice>'
            f"</xsd:sequence></xsd:group>"
        )
        refs = '<xsd:sequence><xsd:group ref="EG_Pick" minOccurs="0" maxOccurs="unbounded"/><xsd:group ref="EG_In"/></xsd:sequence>'
        f = family(root(refs, rest=groups + LEAF))
        self.assertEqual(members(f), [("group", "EG_Pick", 0, -1), ("group", "EG_In", 1, 1)])
        self.assertEqual(find(f, "c_EG_Pick").form, "choice")
        self.assertEqual(members(f, "c_EG_In"), [("choice", "choice", 1, 1)])
        self.assertEqual(find(f, "c_EG_In::c_EG_In_anon_sp").form, "choice")

    def test_recursion_ends(self):
        f = family(root("<xsd:sequence>" + element("again", "CT_Root", 'minOccurs="0"') + "</xsd:sequence>"))
        self.assertIs(find(f, "c_CT_Root").children[0].type, find(f, "c_CT_Root"))

    def test_one_type_name_in_two_namespaces(self):
        other = """<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema" targetNamespace="urn:other"
            xmlns="urn:other"><xsd:complexType name="CT_Leaf"/><xsd:element name="mark" type="CT_Leaf"/></xsd:schema>"""
        body = '<xsd:import namespace="urn:other" schemaLocation="other.xsd"/>' + root(
            f'<xsd:sequence>{element("a")}<xsd:element ref="o:mark"/></xsd:sequence>', rest=LEAF
        )
        f = family(body, [("other.xsd", other)])
        mark = find(f, "c_CT_Root").children[1]
        self.assertEqual((mark.type.name, mark.elements[0].ns), ("c_CT_Leaf_2", "urn:other"))

    def test_import_without_a_file_is_no_failure_until_it_is_used(self):
        missing = '<xsd:import namespace="urn:other" schemaLocation="gone.xsd"/>'
        family(missing + root(""))
        with self.assertRaisesRegex(SchemaError, "no type 'CT_Gone' in namespace 'urn:other'"):
            family(missing + root("<xsd:sequence>" + element("a", "o:CT_Gone") + "</xsd:sequence>"))

    def test_include_takes_the_namespace_of_its_includer(self):
        part = f'<xsd:schema xmlns:xsd="http://www.w3.org/2001/XMLSchema">{LEAF}</xsd:schema>'
        f = family('<xsd:include schemaLocation="part.xsd"/>' + root(f'<xsd:sequence>{element("a")}</xsd:sequence>'),
                   [("part.xsd", part)])
        self.assertEqual(find(f, "c_CT_Leaf").type_name.ns, "urn:main")

    def test_may_be_empty(self):
        cases = [
            ('<xsd:sequence><xsd:element name="a" type="CT_Leaf"/></xsd:sequence>', False),
            ('<xsd:sequence><xsd:element name="a" type="CT_Leaf" minOccurs="0"/></xsd:sequence>', True),
            ("<xsd:choice>" + element("a") + element("b", occurs='minOccurs="0"') + "</xsd:choice>", True),
            ("", True),
        ]
        for content, expected in cases:
            with self.subTest(content):
                self.assertEqual(find(family(root(content, rest=LEAF)), "c_CT_Root").may_be_empty, expected)


class CutAndAmendments(unittest.TestCase):
    BODY = root(
        f'<xsd:sequence>{element("a")}{element("b", occurs=chr(109) + "axOccurs=" + chr(34) + "3" + chr(34))}'
        '<xsd:group ref="EG_Pick" minOccurs="0"/></xsd:sequence>',
        rest=LEAF + f'<xsd:group name="EG_Pick"><xsd:choice>{element("x")}{element("y")}</xsd:choice></xsd:group>',
    )

    def test_raw_children_keep_their_place_and_need_no_class(self):
        f = family(self.BODY, raw=["*/a", "CT_Root/b", "CT_Root/EG_Pick"])
        self.assertEqual(members(f), [("raw", "a", 1, 1), ("raw", "b", 1, 3), ("raw", "EG_Pick", 0, -1)])
        self.assertEqual([e.local for e in find(f, "c_CT_Root").children[2].elements], ["x", "y"])
        self.assertEqual([c.name for c in f.classes], ["c_CT_Root"])

    def test_a_raw_option_is_an_option(self):
        f = family(self.BODY, raw=["EG_Pick/x"])
        self.assertEqual(members(f, "c_EG_Pick"), [("raw", "x", 1, 1), ("child", "y", 1, 1)])

    def test_amendments(self):
        amend = [
            {"dialect": "one", "type": "CT_Root", "element": "late", "of": "CT_Leaf", "after": "a"},
            {"dialect": "one", "type": "CT_Root", "attribute": "extra", "of": "xsd:string"},
            {"dialect": "two", "type": "CT_Root", "element": "never", "of": "CT_Leaf"},
            {"dialect": "one", "type": "CT_Root", "element": "a", "of": "CT_Leaf"},  # is there already
        ]
        f = family(self.BODY, amend=amend)
        self.assertEqual([m[1] for m in members(f)], ["a", "late", "b", "EG_Pick"])
        self.assertEqual([a.name for a in find(f, "c_CT_Root").attributes], ["extra"])

    def test_text_elements_keep_attributes(self):
        text = type_(
            "ST_Text", '<xsd:simpleContent><xsd:extension base="xsd:string"><xsd:attribute ref="xml:space"/>'
            "</xsd:extension></xsd:simpleContent>")
        f = family(root("<xsd:sequence>" + element("t", "xsd:string") + "</xsd:sequence>", rest=text), text_class="ST_Text")
        self.assertEqual(find(f, "c_CT_Root").children[0].type.name, "c_ST_Text")
        self.assertEqual([a.name for a in find(f, "c_ST_Text").attributes], ["space"])


if __name__ == "__main__":
    unittest.main()
