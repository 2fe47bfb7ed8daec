#!/usr/bin/env python3
"""face_widths.py: the table of character widths in engine/facts/face_widths.cpp, against the typefaces themselves.

Carlito and Liberation Sans (Debian fonts-crosextra-carlito, fonts-liberation) have the advance widths of Calibri and
Arial. Without them, or without python3-fonttools, nothing is done.
"""
import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
FONTS = "/usr/share/fonts/truetype/"
FACES = {"calibriRegular": "crosextra/Carlito-Regular.ttf", "calibriBold": "crosextra/Carlito-Bold.ttf",
         "arialRegular": "liberation/LiberationSans-Regular.ttf", "arialBold": "liberation/LiberationSans-Bold.ttf"}
BLOCKS = ((32, 127), (160, 592), (880, 1328))


def main():
    try:
        from fontTools.ttLib import TTFont
    except ImportError:
        print("no python3-fonttools")
        return 0
    with open(os.path.join(ROOT, "engine/facts/face_widths.cpp"), encoding="utf-8") as f:
        source = f.read()
    faults = 0
    for name, file in FACES.items():
        if not os.path.exists(FONTS + file):
            print("no %s" % file)
            continue
        table = re.search(r"FaceWidths %s = \{\{(.*?)\}\}" % name, source, re.S)[1]
        widths = [int(n) for n in re.findall(r"\d+", table)]
        font = TTFont(FONTS + file)
        drawn, metrics = font.getBestCmap(), font["hmtx"]
        points = [c for first, end in BLOCKS for c in range(first, end)]
        assert len(points) == len(widths) and font["head"].unitsPerEm == 2048
        wrong = [c for c, width in zip(points, widths) if c in drawn and metrics[drawn[c]][0] != width]
        faults += len(wrong)
        print("%s: %d of %d characters drawn, %d wrong" % (name, sum(c in drawn for c in points), len(points), len(wrong)))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
