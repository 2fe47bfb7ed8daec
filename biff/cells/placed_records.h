// The kept records of a sheet, and where a save puts them back.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "biff/container/record_ids.h"
#include "biff/records/kept_records.h"

namespace vellum {

/// A place in the save order of a worksheet, in that order.
enum class Place : std::uint8_t {
    printerData,
    headerFooter,
    sorting,
    dropDowns,
    autoFilter,
    formulaExtension,
    consolidation,
    pageLayoutView,
    phonetic,
    codeName,
    other,
    tables,
    none,  // not a record that is kept
};

/// What is done with a record of which only the bytes are kept.
struct KeptRule {
    std::uint16_t id;
    Place place;
    bool single = false;  // a later one takes the place of an earlier one
};

/// The rule of a record id; `Place::other` for ids that no rule names.
KeptRule keptRule(std::uint16_t id);

/// The kept records of a sheet with their places, each with the records that go on with it.
class PlacedRecords {
public:
    /// Adds a record and what goes on with it, in wire form.
    void add(const KeptRule& rule, std::uint16_t id, std::span<const std::byte> wire);
    /// Adds further records to what was added last; something was.
    void append(std::span<const std::byte> wire);

    [[nodiscard]] bool has(Place place) const;
    /// Calls `write(bytes)` for the records of a place in their order.
    template <class Write>
    void forEach(Place place, Write&& write) const {
        for (const Entry& entry : _entries) {
            if (entry.place == place) write(bytesOf(entry));
        }
    }
    /// Drops what is kept at a place.
    void remove(Place place);
    /// Drops the records of an identifier, each with what goes on with it.
    void removeRecords(std::uint16_t id);
    /// How many records of an identifier there are, those that go on with others counted too.
    [[nodiscard]] std::size_t countRecords(std::uint16_t id) const;
    void clear();
    [[nodiscard]] std::size_t count() const { return _entries.size(); }
    [[nodiscard]] std::size_t byteCount() const { return _run.wire().size(); }

    /// Brings the entries into the save order. To be called when all of a file's records are in.
    void sort();

private:
    struct Entry {
        std::size_t at;
        std::size_t size;
        std::uint16_t id;
        Place place;
    };
    [[nodiscard]] std::span<const std::byte> bytesOf(const Entry& entry) const {
        return _run.wire().subspan(entry.at, entry.size);
    }

    KeptRecords _run;  // of all places, in the file's order
    std::vector<Entry> _entries;
    std::vector<std::size_t> _singles;  // entries of single records, until `sort`
};

}  // namespace vellum
