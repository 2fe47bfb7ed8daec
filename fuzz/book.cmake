if(TARGET vellum_biff OR TARGET vellum_xlsx)
  quillet_fuzz_target(book_load SOURCES book_load.cpp DEPENDS vellum)
endif()
