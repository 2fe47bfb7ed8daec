from typing import Any

class BookError(Exception): ...
class ModuleError(ImportError): ...

class Format:
    number_format_id: int
    align_horizontal: int
    align_vertical: int
    wraps_text: bool
    indent: int
    shrinks_to_fit: bool
    border_left: int
    border_right: int
    border_top: int
    border_bottom: int
    fill_pattern: int
    fill_color: int
    fill_back_color: int
    locked: bool
    formula_hidden: bool
    font_size: int
    bold: bool
    italic: bool
    strike_out: bool
    underline: int
    font_color: int
    rotation: int
    font_name: str

def __getattr__(name: str) -> Any: ...
