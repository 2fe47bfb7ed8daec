// Records that are kept as bytes and written back as they were.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "biff/container/cursor.h"
#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

/// A run of records in wire form, headers included: one block of bytes however many they are.
class KeptRecords {
public:
    /// Appends the record whose header has just been read, and all that belongs to it right behind.
    void take(Xls& in, RecordHeader header);
    void add(std::uint16_t id, std::span<const std::byte> body);
    /// Records in wire form.
    void append(std::span<const std::byte> wire) { _wire.insert(_wire.end(), wire.begin(), wire.end()); }
    void write(Xls& out) const;
    void clear() { _wire = {}; }

    [[nodiscard]] bool empty() const { return _wire.empty(); }
    [[nodiscard]] std::span<const std::byte> wire() const { return _wire; }
    /// Body of the first record, for what is read or patched in place.
    [[nodiscard]] std::span<std::byte> firstBody();
    [[nodiscard]] std::span<const std::byte> firstBody() const;
    /// Each record with its identifier and body.
    template <class Visit>
    void forEach(Visit&& visit) const;
    void shrink() { _wire.shrink_to_fit(); }

private:
    std::vector<std::byte> _wire;
};

template <class Visit>
void KeptRecords::forEach(Visit&& visit) const {
    for (auto rest = std::span<const std::byte>(_wire); !rest.empty();) {
        const std::size_t size = loadLe<std::uint16_t>(&rest[2]);
        visit(loadLe<std::uint16_t>(rest.data()), rest.subspan(recordHeaderSize, size));
        rest = rest.subspan(recordHeaderSize + size);
    }
}

}  // namespace vellum
