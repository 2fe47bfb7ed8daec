# Reading and writing of host data: labels, conversions, and the forms of items.
set(QUILLET_HOST_DATA_SOURCES
    array_list.cpp array_shape.cpp cell_read.cpp cell_ref.cpp cell_write.cpp column_selection.cpp
    column_types.cpp date_text.cpp index_sets.cpp item.cpp name_compare.cpp range.cpp read.cpp read_array.cpp read_array_list.cpp
    read_array_values.cpp read_dataframe.cpp read_indexed.cpp read_list.cpp read_scalar.cpp read_set.cpp
    read_walk.cpp records.cpp write.cpp write_array.cpp write_array_list.cpp write_array_values.cpp
    write_dataframe.cpp write_flow.cpp write_indexed.cpp write_list.cpp write_scalar.cpp write_set.cpp write_walk.cpp)
