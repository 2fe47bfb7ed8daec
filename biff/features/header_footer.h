// The texts above and below each printed page.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "biff/container/record_ids.h"
#include "biff/records/kept_records.h"

namespace vellum {

class Xls;

namespace biff {

/// A Header or Footer record. It stays in its bytes until somebody sets a text.
class PageText {
public:
    static constexpr std::size_t maxLength = 255;  // applications refuse files with more

    /// Takes the record behind its header. One of the older layout becomes one of the later. Throws when the text
    /// does not fit the record.
    void read(RecordHeader header, Xls& in, bool biff5);
    /// Writes nothing when there is no record.
    void write(Xls& out) const { _record.write(out); }

    [[nodiscard]] std::wstring text() const;
    /// Throws "string is too long". An empty text makes an empty record.
    void set(std::uint16_t id, std::wstring_view text);

private:
    void make(std::uint16_t id, std::wstring_view text, bool wide);

    KeptRecords _record;
};

}  // namespace biff
}  // namespace vellum
