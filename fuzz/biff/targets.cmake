quillet_fuzz_target(compound_file SOURCES ${CMAKE_CURRENT_LIST_DIR}/compound_file.cpp DEPENDS vellum_biff_stream)
quillet_fuzz_target(record_stream SOURCES ${CMAKE_CURRENT_LIST_DIR}/record_stream.cpp DEPENDS vellum_biff_stream)
quillet_fuzz_target(workbook_stream SOURCES ${CMAKE_CURRENT_LIST_DIR}/workbook_stream.cpp DEPENDS vellum)
quillet_fuzz_target(sheet_stream SOURCES ${CMAKE_CURRENT_LIST_DIR}/sheet_stream.cpp DEPENDS vellum)
