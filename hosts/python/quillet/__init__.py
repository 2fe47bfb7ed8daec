"""Workbooks and csv files for models and analyses.

Statements move scalars, sets, lists, arrays and records between ranges of a sheet and Python:

>>> import quillet
>>> session = quillet.Session()
>>> data = session.read("xlsx:skiph;plan.xlsx",                             # doctest: +SKIP
...                     demand=quillet.Array(("product", "year"), float, "[Demand$A:C]"))
>>> data.demand["anvil", 2024]                                              # doctest: +SKIP
135.5
"""
from ._containers import ArrayData, ListData, ScalarData, SetData
from ._errors import StatementError, StatementWarning
from ._quillet import ModuleError
from ._session import Data, Session, Source, into
from ._specs import Array, Arrays, Frame, List, Range, Scalar, Set
from ._types import Alias, Record
from ._writing import to

ModuleError.__doc__ = "The native module is missing, or is not one that this package can use."

__all__ = [
    "Alias", "Array", "ArrayData", "Arrays", "Data", "Frame", "List", "ListData", "ModuleError", "Range", "Record",
    "Scalar", "ScalarData", "Session", "Set", "SetData", "Source", "StatementError", "StatementWarning", "into", "to",
]
