"""pandas, when it is there."""
from __future__ import annotations

import sys
from typing import Any, Dict, List, Optional, Sequence

import numpy as np


def pandas() -> Any:
    """The module pandas. Raises ImportError with a plain text when it is not installed."""
    try:
        import pandas as found
    except ImportError as error:
        raise ImportError("this needs pandas (Debian: python3-pandas)") from error
    return found


def is_frame(value: Any) -> bool:
    """Whether this is a DataFrame; does not load pandas to find out."""
    loaded = sys.modules.get("pandas")
    return loaded is not None and isinstance(value, loaded.DataFrame)


def is_series(value: Any) -> bool:
    loaded = sys.modules.get("pandas")
    return loaded is not None and isinstance(value, loaded.Series)


def frame(columns: Dict[str, np.ndarray]) -> Any:
    return pandas().DataFrame(columns)


def series(array: Any) -> Any:
    pd = pandas()
    if len(array.names) == 1:
        index = pd.Index(array.sets[0].to_numpy()[array.codes(0)], name=array.names[0])
    else:
        index = pd.MultiIndex(levels=[index_set.to_numpy() for index_set in array.sets],
                              codes=[array.codes(d) for d in range(len(array.names))], names=array.names)
    values = array.to_numpy()
    if values.dtype.names is not None:
        values = list(array.values())
    return pd.Series(values, index=index, name="value")


def long(array: Any, record: Optional[Any]) -> Any:
    columns: Dict[str, np.ndarray] = {}
    for d, name in enumerate(array.names):
        columns[name] = array.sets[d].to_numpy()[array.codes(d)]
    if record is None:
        columns["value"] = array.to_numpy()
    else:
        for name in record.fields:
            columns[name] = array.column(name)
    return frame(columns)


def wide(array: Any) -> Any:
    pd = pandas()
    if len(array.names) != 2:
        return series(array).unstack()
    rows, columns = array.sets
    made = pd.DataFrame(dict(enumerate(array._native.array_columns())), index=pd.Index(list(rows), name=array.names[0]))
    made.columns = pd.Index(list(columns), name=array.names[1])
    return made


def table(array: Any, dates: Sequence[str]) -> Any:
    """The DataFrame of an array of rows and named columns, as a statement read it."""
    columns: List[np.ndarray] = array._native.array_columns()
    pd = pandas()
    made = pd.DataFrame(dict(enumerate(columns)))
    made.columns = list(array.sets[1])
    for name in dates:
        made[name] = pd.to_datetime(made[name])
    return made
