quillet_fuzz_target(formula_tokens SOURCES ${CMAKE_CURRENT_LIST_DIR}/tokens.cpp DEPENDS vellum_formula)
quillet_fuzz_target(formula_text SOURCES ${CMAKE_CURRENT_LIST_DIR}/text.cpp DEPENDS vellum_formula)
