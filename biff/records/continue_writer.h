// Writing of records whose bodies may be longer than a record.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "biff/container/record_ids.h"
#include "biff/container/xls.h"

namespace vellum {

/// Writes one record and, as its body grows, the CONTINUE records behind it. Sizes are patched when a part is full and
/// by `finish`, which must be called at the end.
///
///     ContinueWriter out(xls, record_id::SST);
///     out.put(cstTotal);
///     out.text(characters, wide);
///     out.finish();
class ContinueWriter {
public:
    ContinueWriter(Xls& xls, std::uint16_t id, std::uint16_t continueId = record_id::Continue);

    /// Room left in the current part.
    [[nodiscard]] std::size_t budget() const { return maxRecordBody - _size; }
    /// Bytes of the current part's body so far.
    [[nodiscard]] std::size_t partSize() const { return _size; }
    /// Offset in the main stream of the current part's header.
    [[nodiscard]] std::uint32_t partPosition() const { return _part; }

    /// Ends the current part and opens a CONTINUE.
    void startContinue();
    /// A new part unless the current one has room for `n` bytes, which then are not cut.
    void keepTogether(std::size_t n) {
        if (budget() < n) startContinue();
    }

    /// A value or bytes, cut wherever a part is full.
    template <WireValue T>
    void put(T value) {
        write(std::as_bytes(std::span(&value, 1)));
    }
    void write(std::span<const std::byte> bytes);
    /// The characters of a text, the low 16 bits of each or with `wide` off the low 8. No character is cut, and where
    /// the text goes on in a CONTINUE, that begins with a flags byte which says `wide`.
    void text(std::wstring_view characters, bool wide);

    void finish();

private:
    void begin(std::uint16_t id);

    Xls& _xls;
    std::uint16_t _continueId;
    std::uint32_t _part = 0;
    std::uint16_t _size = 0;
};

/// A whole record from bytes of any length.
void writeSplit(Xls& xls, std::uint16_t id, std::span<const std::byte> body,
                std::uint16_t continueId = record_id::Continue);

}  // namespace vellum
