"""Workbooks and csv files for models and analyses.

Statements move scalars, sets, lists, arrays and records between ranges of a sheet and Python:

>>> import quillet
>>> session = quillet.Session()
>>> data = session.read("xlsx:skiph;plan.xlsx",                             # doctest: +SKIP
...                     demand=quillet.Array(("product", "year"), float, "[Demand$A:C]"))
>>> data.demand["anvil", 2024]                                              # doctest: +SKIP
135.5

Workbooks themselves, cell by cell or area by area, with their formulas, names, formats, pictures and comments:

>>> with quillet.open("plan.xlsx") as book:                                 # doctest: +SKIP
...     book["Demand"]["C2"] = 12.5
...     book["Demand"].values("A2:C9")
...     book.save()
"""
from ._book import Book, BookError, Format, open
from ._cell import Cell
from ._containers import ArrayData, ListData, ScalarData, SetData
from ._errors import StatementError, StatementWarning
from ._objects import CellError, Hyperlink, Name, Picture, PlacedPicture, Table
from ._quillet import ModuleError
from ._session import Data, Session, Source, into
from ._sheet import Sheet
from ._specs import Array, Arrays, Frame, List, Range, Scalar, Set
from ._types import Alias, Record
from ._writing import to

BookError.__doc__ = "What a workbook refused, or a file that is none."
ModuleError.__doc__ = "The native module is missing, or is not one that this package can use."

__all__ = [
    "Alias", "Array", "ArrayData", "Arrays", "Book", "BookError", "Cell", "CellError", "Data", "Format", "Frame",
    "Hyperlink", "List", "ListData", "ModuleError", "Name", "Picture", "PlacedPicture", "Range", "Record", "Scalar",
    "ScalarData", "Session", "Set", "SetData", "Sheet", "Source", "StatementError", "StatementWarning", "Table", "into",
    "open", "to",
]
