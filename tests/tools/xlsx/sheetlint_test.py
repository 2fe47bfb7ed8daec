#!/usr/bin/env python3
"""Each damage of a worksheet's elements has its own finding, and sound ones have none."""
import os
import sys
import unittest
import xml.etree.ElementTree as ET

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "tools"))
import sheetlint

BRK = '<brk id="%d" man="1"/>'
PANE = '<sheetViews><sheetView workbookViewId="0">%s</sheetView></sheetViews>'
CASES = [
    ('<mergeCells count="2"><mergeCell ref="A1:B2"/></mergeCells>', "mergeCells has the count 2 and 1 elements"),
    ("<mergeCells/>", "mergeCells is empty"),
    ("<hyperlinks></hyperlinks>", "hyperlinks is empty"),
    ('<mergeCells><mergeCell ref="A1:XFE2"/></mergeCells>', "mergeCell has the range A1:XFE2"),
    ('<mergeCells><mergeCell ref="B2:A1"/></mergeCells>', "mergeCell has the range B2:A1"),
    ('<mergeCells><mergeCell ref="A1048577"/></mergeCells>', "mergeCell has the range A1048577"),
    ("<rowBreaks>" + BRK % 5 + BRK % 3 + "</rowBreaks>", "rowBreaks are not in order"),
    ("<rowBreaks>" + BRK % 5 + BRK % 5 + "</rowBreaks>", "rowBreaks are not in order"),
    ('<rowBreaks count="1" manualBreakCount="0">' + BRK % 5 + "</rowBreaks>", "rowBreaks has manualBreakCount 0 of 1"),
    ('<cols><col min="3" max="4"/><col min="4" max="5"/></cols>', "columns 4 to 5 are out of order"),
    ('<cols><col min="1" max="16385"/></cols>', "columns 1 to 16385 are out of order"),
    (PANE % '<selection pane="topRight"/>', "there is no pane topRight"),
    (PANE % '<pane ySplit="1" activePane="bottomRight"/>', "there is no pane bottomRight"),
    ('<autoFilter ref="B1:C9"><filterColumn colId="2"/></autoFilter>', "a filter column has the colId 2 of 2"),
    ('<autoFilter ref="B1:C9"><filterColumn colId="0"/><filterColumn colId="0"/></autoFilter>',
     "colId 0 stands there 2 times"),
    ('<autoFilter ref="B1:C9"><filterColumn colId="0"><customFilters><customFilter/><customFilter/><customFilter/>'
     "</customFilters></filterColumn></autoFilter>", "3 custom filters on one column"),
    ('<sheetData><row><c><f ref="$A$1:$B$2"/></c></row></sheetData><rowBreaks count="2" manualBreakCount="2">'
     + BRK % 3 + BRK % 5 + '</rowBreaks><cols><col min="1" max="2"/><col min="3" max="16384"/></cols>'
     + PANE % '<pane xSplit="1" activePane="topRight"/><selection/><selection pane="topRight"/>', None),
]


class SheetLint(unittest.TestCase):
    def test_each_damage(self):
        for xml, finding in CASES:
            with self.subTest(xml):
                found = list(sheetlint.sheet_findings("s", ET.fromstring("<worksheet>%s</worksheet>" % xml)))
                self.assertEqual(found, ["s: " + finding] if finding else [])


if __name__ == "__main__":
    unittest.main()
