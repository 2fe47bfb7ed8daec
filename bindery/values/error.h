// Codes and places of failures.
#pragma once
#include <iosfwd>
#include <string>
#include <string_view>

namespace bindery {

/// Codes of failures while a document is bound or written. 0 is success.
enum error_code : int {
    no_error = 0,
    cannot_open_file = 1,
    all_cardinality = 2,
    attribute_repeated = 3,
    attributes_in_compositor = 4,
    badly_formed = 5,
    unknown_encoding = 6,
    wrong_choice = 7,
    bad_comment = 8,
    bad_dtd = 9,
    bad_end_of_element = 10,
    bad_start_tag_end = 11,
    bad_end_tag = 12,
    bad_declaration = 13,
    bad_version = 14,
    encoding_mismatch = 15,
    element_not_found = 16,
    external_entity = 17,
    too_many_fraction_digits = 18,
    too_long = 19,
    too_short = 20,
    element_missing = 21,
    no_pattern_matched = 22,
    not_well_formed = 23,
    recursive_entity = 24,
    attribute_missing = 25,
    too_many_elements = 26,
    too_many_digits = 27,
    bad_attribute_value = 28,
    bad_element_value = 29,
    unknown_in_all = 30,
    unknown_element = 31,
    unexpected_empty = 32,
    unexpected_entity = 33,
    unexpected_end = 34,
    bad_value = 35,
    above_maximum = 36,
    below_minimum = 37,
    not_enumerated = 38,
    unexpected_attribute = 39,
    nil_not_empty = 40,
    entity_not_found = 41,
    undefined_error = 42,
    not_the_fixed_value = 43,
    unknown_type = 44,
    type_not_set = 45,
    occurs_on_marshal = 46,
    user_error_1 = 1000,  // to user_error_1 + 8
};

/// Text of a code, "" for a code that is none.
const char* errorText(int code);

/// The record of one failure.
struct c_error {
    int code = no_error;
    std::string item;       // "@name" of an attribute, the name of an element
    const char* file = "";  // program file, static text; never null
    int line = 0;           // program line
    int xmlLine = -1;       // line of the document, from 1; -1 when there is none

    /// Prints the record, a line for each field; nothing but the code's text for code 0.
    void report(std::ostream& out) const;
};

}  // namespace bindery
