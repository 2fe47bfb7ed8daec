if(TARGET vellum_biff)
  quillet_fuzz_target(workbook_stream SOURCES ${CMAKE_CURRENT_LIST_DIR}/workbook_stream.cpp DEPENDS vellum)
endif()
