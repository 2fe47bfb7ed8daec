#!/usr/bin/env python3
"""Each damage of a drawing has its own finding, and a sound package has none."""
import os
import sys
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "tools"))
import drawinglint

R = "urn:relationships"
DRAWING = ('<wsDr xmlns:r="%s"><twoCellAnchor><from><col>%s</col><row>%s</row></from><pic><blip r:embed="rId1"/></pic>'
           "</twoCellAnchor></wsDr>")
SOUND = {"drawing": DRAWING % (R, 16383, 1048575), "image": b"\x89PNG", "imageType": "image/png", "kind": R + "/image",
         "sheet": b'<worksheet><drawing r:id="rId0"/>', "how": "urn:relationships/drawing", "more": []}
CASES = [
    ({}, []),
    ({"drawing": DRAWING % (R, 16384, 0)}, ["/d.xml: from has the col 16384"]),
    ({"drawing": DRAWING % (R, 0, -1)}, ["/d.xml: from has the row -1"]),
    ({"kind": R + "/chart"}, ["/d.xml: embed rId1 is no image"]),
    ({"imageType": "application/xml"}, ["/d.xml: rId1 leads to /i.png of type application/xml"]),
    ({"image": b"GIF89a"}, ["/i.png: its bytes are not of the type image/png"]),
    ({"how": "urn:x"}, ["/s.xml: its drawing is a relationship of type urn:x"]),
    ({"more": ["/t.xml"]}, ["/d.xml: is the drawing of 2 sheets"]),
    ({"sheet": b"<worksheet/>", "how": "urn:x"}, []),
]


class Package:
    def __init__(self, given):
        self.given = {**SOUND, **given}
        self.parts = {"/d.xml": self.given["drawing"], "/i.png": self.given["image"], "/s.xml": self.given["sheet"]}
        self.parts.update({path: self.given["sheet"] for path in self.given["more"]})

    def type_of(self, path):
        return {"/d.xml": "x.officedocument.drawing+xml", "/i.png": self.given["imageType"]}.get(
            path, "x.spreadsheetml.worksheet+xml")

    def relationships_of(self, path):
        if path != "/d.xml":
            return [("rId0", self.given["how"], "/d.xml", False)]
        return [("rId1", self.given["kind"], "/i.png", False)]


class DrawingLint(unittest.TestCase):
    def test_each_damage(self):
        for given, findings in CASES:
            with self.subTest(given):
                self.assertEqual(list(drawinglint.findings(Package(given))), findings)


if __name__ == "__main__":
    unittest.main()
