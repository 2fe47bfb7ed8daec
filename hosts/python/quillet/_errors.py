"""What goes wrong in statements."""
from __future__ import annotations

from typing import Any, Sequence, Tuple


class StatementWarning(UserWarning):
    """A message of a statement that was done all the same."""


class StatementError(Exception):
    """A statement that failed, wholly or at one of its items.

    Items before the one that failed are done; for a read, :attr:`data` has what was read so far.
    """

    #: What the module has to say about data, as in ``SHEET: Wrong result value at [R2C1].``
    messages: Tuple[str, ...]
    #: Code and text of what it has to say about files.
    driver: Tuple[Tuple[int, str], ...]
    #: What the host itself has to say, such as that there is no such file.
    host: Tuple[str, ...]
    #: Items not done; -1 when the file could not be opened.
    status: int
    #: Of a read: the values stored, by item.
    counts: Tuple[int, ...]
    #: 0 when the file was closed, or saved, well; 1 when it was not; None when it was not open.
    close: "int | None"
    #: Of a read: the containers as far as they were filled.
    data: Any

    def __init__(self, source: str, messages: Sequence[str] = (), driver: Sequence[Tuple[int, str]] = (),
                 host: Sequence[str] = (), status: int = -1, counts: Sequence[int] = (),
                 close: "int | None" = None, data: Any = None) -> None:
        self.source = source
        self.messages, self.driver, self.host = tuple(messages), tuple(driver), tuple(host)
        self.status, self.counts, self.close, self.data = status, tuple(counts), close, data
        told = [*self.host, *(f"{text} ({code})" for code, text in self.driver), *(m.rstrip("\n") for m in self.messages)]
        super().__init__(f"{source}: " + ("; ".join(told) if told else "the statement failed"))
