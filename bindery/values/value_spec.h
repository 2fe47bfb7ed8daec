// The rules of simple types.
#pragma once
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace bindery {

class c_regex;
struct ValueSpec;

/// Atomic types, by what their text looks like.
enum class Atomic : std::uint8_t {
    narrow,  // std::string, UTF-8: references, ids, enumerations, URIs
    wide,    // std::wstring: texts that people read or type
    boolean,
    onOff,  // bool; also "on" and "off"
    int8,   // int
    int16,  // int
    int32,
    int64,
    uint8,
    uint16,
    uint32,
    uint64,
    float32,  // double
    float64,
    decimal,   // double, written with the fraction digits of its facets
    hex,       // c_binary
    base64,    // c_binary
    dateTime,  // c_datetime from here to gMonth
    date,
    time,
    gYearMonth,
    gYear,
    gMonthDay,
    gDay,
    gMonth,
    empty,  // c_empty
};

/// The C++ type that holds a value.
enum class Storage : std::uint8_t {
    string,
    wstring,
    boolean,
    integer,
    unsignedInteger,
    unsignedShort,
    unsignedChar,
    longInteger,
    unsignedLong,
    real,
    datetime,
    binary,
    empty
};

enum class Whitespace : std::uint8_t { preserve = 0, replace = 1, collapse = 2 };

inline constexpr std::uint32_t noLimit = std::numeric_limits<std::uint32_t>::max();
inline constexpr std::uint8_t anyDigits = 255;

/// Limits of a simple type; what a schema does not say keeps its default.
/// Lengths count characters, bytes of a binary value, or items of a list.
struct Facets {
    std::uint32_t minLength = 0;
    std::uint32_t maxLength = noLimit;
    double minimum = -std::numeric_limits<double>::infinity();
    double maximum = std::numeric_limits<double>::infinity();
    bool minimumExcluded = false;
    bool maximumExcluded = false;
    std::uint8_t totalDigits = anyDigits;
    std::uint8_t fractionDigits = anyDigits;
    std::span<const c_regex* const> patterns = {};  // all have to match, one for each step of restriction
};

/// What a value test, a facet test and the two conversions of a type look like. Codes of error.h.
using ValueTest = int (*)(const ValueSpec& spec, std::string_view text);
using FacetTest = int (*)(const ValueSpec& spec, std::string_view text);
using FromText = int (*)(const ValueSpec& spec, std::string_view text, void* value);
using ToText = void (*)(const ValueSpec& spec, const void* value, std::string& out);

/// One simple type of a schema. Constant: make it with `valueSpec`, as `constinit const`.
struct ValueSpec {
    Atomic atomic = Atomic::narrow;
    Storage storage = Storage::string;
    Whitespace whitespace = Whitespace::preserve;
    const char* fixed = "";  // "" for none
    std::span<const std::string_view> enumeration = {};
    std::span<const ValueSpec* const> members = {};  // of a union: the text has to be valid under one of them
    const Facets* facets = nullptr;                  // null: no limits
    ValueTest valueTest = nullptr;
    FacetTest facetTest = nullptr;
    FromText fromText = nullptr;  // stores; the text has passed the whitespace rule and the value test
    ToText toText = nullptr;      // appends, not escaped
};

constexpr Storage storageOf(Atomic atomic) {
    switch (atomic) {
        case Atomic::narrow:
            return Storage::string;
        case Atomic::wide:
            return Storage::wstring;
        case Atomic::boolean:
        case Atomic::onOff:
            return Storage::boolean;
        case Atomic::int8:
        case Atomic::int16:
        case Atomic::int32:
            return Storage::integer;
        case Atomic::int64:
            return Storage::longInteger;
        case Atomic::uint8:
            return Storage::unsignedChar;
        case Atomic::uint16:
            return Storage::unsignedShort;
        case Atomic::uint32:
            return Storage::unsignedInteger;
        case Atomic::uint64:
            return Storage::unsignedLong;
        case Atomic::float32:
        case Atomic::float64:
        case Atomic::decimal:
            return Storage::real;
        case Atomic::hex:
        case Atomic::base64:
            return Storage::binary;
        case Atomic::empty:
            return Storage::empty;
        default:
            return Storage::datetime;
    }
}

int testValue(const ValueSpec& spec, std::string_view text);
int testFacets(const ValueSpec& spec, std::string_view text);
int storeValue(const ValueSpec& spec, std::string_view text, void* value);
void appendValue(const ValueSpec& spec, const void* value, std::string& out);

/// What a schema adds to a built-in type.
struct Restriction {
    std::span<const std::string_view> enumeration = {};
    const Facets* facets = nullptr;
    std::span<const ValueSpec* const> members = {};
    const char* fixed = "";
};

/// The rules of a simple type: `constinit const ValueSpec ST_X = valueSpec(Atomic::narrow, Whitespace::collapse,
/// {.enumeration = ST_X_texts})`.
constexpr ValueSpec valueSpec(Atomic atomic, Whitespace whitespace, const Restriction& restriction = {}) {
    ValueSpec spec;
    spec.atomic = atomic;
    spec.storage = storageOf(atomic);
    spec.whitespace = whitespace;
    spec.fixed = restriction.fixed;
    spec.enumeration = restriction.enumeration;
    spec.members = restriction.members;
    spec.facets = restriction.facets;
    spec.valueTest = testValue;
    spec.facetTest = testFacets;
    spec.fromText = storeValue;
    spec.toText = appendValue;
    return spec;
}

/// Applies a whitespace rule; the view may point into `scratch`.
std::string_view applyWhitespace(Whitespace rule, std::string_view text, std::string& scratch);

/// Text to value: whitespace rule, value test, facets, fixed text. `facetCode` gets the code of a facet that
/// failed, or 0; the value is stored all the same, so that a handler may forgive it. The result is the code of
/// a text that has no value: 35 or 38, or 0.
int readValue(const ValueSpec& spec, std::string_view text, void* value, int& facetCode);

// UTF-8 and wide text. Bytes that are no UTF-8 become U+FFFD; a high surrogate without its low one ends a text.
void appendWide(std::wstring& out, std::string_view utf8);
std::wstring toWide(std::string_view utf8);
void appendUtf8(std::string& out, std::wstring_view wide);
std::string toUtf8(std::wstring_view wide);
void appendCodePoint(std::string& out, char32_t c);
void repairUtf8(std::string& text);  // in place

/// Whether a text is one of the type, its facets aside.
bool parses(const ValueSpec& spec, std::string_view text);

/// Specs of the built-in types, for hand-written classes and tests.
namespace builtin {
inline constexpr ValueSpec string = valueSpec(Atomic::wide, Whitespace::preserve);
inline constexpr ValueSpec token = valueSpec(Atomic::narrow, Whitespace::collapse);
inline constexpr ValueSpec boolean = valueSpec(Atomic::boolean, Whitespace::collapse);
inline constexpr ValueSpec integer = valueSpec(Atomic::int32, Whitespace::collapse);
inline constexpr ValueSpec unsignedInt = valueSpec(Atomic::uint32, Whitespace::collapse);
inline constexpr ValueSpec unsignedShort = valueSpec(Atomic::uint16, Whitespace::collapse);
inline constexpr ValueSpec unsignedByte = valueSpec(Atomic::uint8, Whitespace::collapse);
inline constexpr ValueSpec real = valueSpec(Atomic::float64, Whitespace::collapse);
}  // namespace builtin

}  // namespace bindery
