# Styles, fonts, formats, strings.
set(QUILLET_XLSX_STYLES_SOURCES
    book_styles.cpp colors.cpp font.cpp format.cpp format_lines.cpp rich_string.cpp shared_strings.cpp styles.cpp
    theme.cpp)
