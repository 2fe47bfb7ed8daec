"""Where the native module lies."""
from __future__ import annotations

import os
from pathlib import Path

_FILE = "quillet.dso"


def find_module() -> str:
    """The path of the module: ``QUILLET_MODULE`` where it is set, beside this package, where it is installed, or in
    the build tree that this package lies in."""
    told = os.environ.get("QUILLET_MODULE")
    if told:
        return told
    here = Path(__file__).parent
    places = [here, here.parent.parent.parent / "host"]
    try:
        from ._installed import FOLDER
        places.append((here / FOLDER).resolve())
    except ImportError:
        pass
    for place in places:
        if (place / _FILE).is_file():
            return str(place / _FILE)
    raise ImportError(f"{_FILE} is not beside the package quillet; name it in QUILLET_MODULE")
