if(TARGET vellum_biff)
  quillet_fuzz_target(sheet_stream SOURCES ${CMAKE_CURRENT_LIST_DIR}/sheet_stream.cpp DEPENDS vellum)
endif()
