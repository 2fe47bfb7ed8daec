"""The list of real workbooks in a corpus."""
import csv
import os


def loadable(corpus, *formats):
    """Rows of the manifest, in its order, of files that load; of these formats when any is named."""
    with open(os.path.join(corpus, "manifest.tsv"), newline="", encoding="utf-8") as f:
        return [row for row in csv.DictReader(f, delimiter="\t", quoting=csv.QUOTE_NONE)
                if row["expect"] == "load" and (not formats or row["format"] in formats)]
