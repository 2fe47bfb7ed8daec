// One field list per record: size, reading, writing and dumping walk it.
//
// A record with a fixed body is a plain struct with `id`, `name` and
//
//     template <class Self, class Visit>
//     static constexpr void fields(Self& r, Visit&& visit) { visit("rw", r.rw); visit("col", r.col); }
//
// in wire order; fields are integers, doubles and std::arrays of them. Its default value must be a
// constant expression. A record that varies in size has a `read` of its own.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <type_traits>

#include "biff/container/cursor.h"
#include "biff/container/messages.h"
#include "biff/container/record_ids.h"
#include "biff/container/sink.h"
#include "biff/container/xls.h"

namespace vellum {

[[noreturn]] inline void throwBadSize(const char* record) {
    throw vlerror(biff::msg::badSize(record));
}
[[noreturn]] inline void throwUnexpected(const char* record) {
    throw vlerror(biff::msg::unexpectedRecord(record));
}

template <class T>
struct FieldCodec {
    static T get(Cursor& in) { return in.get<T>(); }
    static void put(Sink& out, T value) { out.put(value); }
    static void dump(std::wostream& out, T value) {
        if constexpr (sizeof(T) == 1)
            out << static_cast<int>(value);
        else
            out << value;
    }
};

template <class T, std::size_t N>
struct FieldCodec<std::array<T, N>> {
    static std::array<T, N> get(Cursor& in) {
        std::array<T, N> values;
        for (auto& value : values) value = FieldCodec<T>::get(in);
        return values;
    }
    static void put(Sink& out, const std::array<T, N>& values) {
        for (const auto& value : values) FieldCodec<T>::put(out, value);
    }
    static void dump(std::wostream& out, const std::array<T, N>& values) {
        for (std::size_t i = 0; i < N; ++i) {
            if (i > 0) out << L' ';
            FieldCodec<T>::dump(out, values[i]);
        }
    }
};

/// Bytes of the record's body.
template <class Record>
consteval std::size_t wireSize() {
    std::size_t size = 0;
    const Record r{};
    Record::fields(r, [&](const char*, const auto& field) { size += sizeof field; });
    return size;
}

/// The fields one after the other, from a cursor that holds at least `wireSize` bytes.
template <class Record>
void readFields(Cursor& in, Record& r) {
    Record::fields(
        r, [&](const char*, auto& field) { field = FieldCodec<std::remove_reference_t<decltype(field)>>::get(in); });
}

/// A body of exactly `wireSize` bytes; any other `size` throws "NAME size is incorrect".
template <class Record>
Record readFixed(Cursor& in, std::size_t size) {
    if (size != wireSize<Record>()) throwBadSize(Record::name);
    Record r;
    readFields(in, r);
    return r;
}

/// A body that may stop at any field boundary, where later fields keep their defaults. A size inside a
/// field, or beyond the last, throws "NAME size is incorrect".
template <class Record>
Record readPrefix(Cursor& in, std::size_t size) {
    Record r;
    Record::fields(r, [&](const char*, auto& field) {
        if (size == 0) return;
        if (size < sizeof field) throwBadSize(Record::name);
        field = FieldCodec<std::remove_reference_t<decltype(field)>>::get(in);
        size -= sizeof field;
    });
    if (size != 0) throwBadSize(Record::name);
    return r;
}

template <class Record>
void writeFields(Sink& out, const Record& r) {
    Record::fields(
        r, [&](const char*, const auto& field) { FieldCodec<std::remove_cvref_t<decltype(field)>>::put(out, field); });
}

/// Header and body.
template <class Record>
void writeFixed(Sink& out, const Record& r) {
    constexpr std::size_t size = wireSize<Record>();
    static_assert(size <= maxRecordBody);
    out.putAll(Record::id, static_cast<std::uint16_t>(size));
    writeFields(out, r);
}

template <class Record>
void writeFixed(Xls& xls, const Record& r) {
    writeFixed(xls.out(), r);
}

/// The next record of the stream, which must be this one: "NAME: unexpected record" otherwise.
template <class Record>
Record readFixedRecord(Xls& xls) {
    const RecordHeader header = xls.readHeader();
    if (header.id != Record::id) throwUnexpected(Record::name);
    Cursor body = xls.body(header.size);
    return readFixed<Record>(body, header.size);
}

/// "[Window1 xWn=0 yWn=15 ...]" and a newline, to the wide standard output. A record whose dump bears another
/// name has it as `dumpName`.
template <class Record>
void dumpFixed(const Record& r, std::wostream& out = std::wcout) {
    out << L'[';
    if constexpr (requires { Record::dumpName; })
        out << Record::dumpName;
    else
        out << Record::name;
    Record::fields(r, [&](const char* name, const auto& field) {
        out << L' ' << name << L'=';
        FieldCodec<std::remove_cvref_t<decltype(field)>>::dump(out, field);
    });
    out << L"]\n";
}

}  // namespace vellum
