// The shared strings of a binary workbook: the SST record in memory.
#pragma once
#include <sparsehash/sparse_hash_map>

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "biff/container/record_ids.h"
#include "biff/records/ext_string.h"
#include "biff/strings/throwing_allocator.h"
#include "engine/text/text_hash.h"

namespace vellum {

class StringPool;
class Xls;

/// Strings by index, and the index by string. An index stays what it is for as long as the book lives;
/// no string is ever taken out. Memory of texts is the pool's.
class StrMap {
public:
    static constexpr std::uint16_t id = record_id::SST;
    static constexpr const char* name = "SST";

    explicit StrMap(StringPool& pool) : _pool(&pool) { clear(); }

    /// Forgets all strings; to be called before the pool is cleared or after.
    void clear();

    /// The index of a plain text, appended if it is new. Counts one more reference (`cstTotal`).
    std::uint32_t add(std::wstring_view text);
    /// Appends an entry without looking for an equal one: what a caller fills run by run.
    std::uint32_t append(const ExtString& entry);
    /// The index to refer to for a finished entry of this table: that of an equal string which is
    /// known already, else its own. Counts one more reference.
    std::uint32_t addRich(std::uint32_t index);
    /// The entry at `index`. Throws "StrMap: sst is out of range (2)".
    [[nodiscard]] const ExtString& at(std::uint32_t index) const;
    /// Its text, never null.
    [[nodiscard]] const wchar_t* text(std::uint32_t index) const {
        const ExtString& entry = at(index);
        return entry.text == nullptr ? L"" : entry.text;
    }
    /// Puts a plain text in place of an entry: all cells that refer to it show the new text.
    /// Throws "StrMap: sst is out of range (1)".
    void replace(std::uint32_t index, std::wstring_view text);
    /// The same with a whole entry, whose text must be pool memory.
    void replaceEntry(std::uint32_t index, const ExtString& entry);

    [[nodiscard]] std::uint32_t size() const { return static_cast<std::uint32_t>(_strings.size()); }
    [[nodiscard]] std::uint32_t cstTotal() const { return _cstTotal; }

    /// How many cell elements, of all sheets, hold an index; those that a cell no longer shows count
    /// too. An index beyond the table is not counted and has 0 uses.
    void noteUse(std::uint32_t index) {
        if (index >= _strings.size()) return;
        if (index >= _uses.size()) _uses.resize(_strings.size());
        ++_uses[index];
    }
    void dropUse(std::uint32_t index) {
        if (index < _uses.size() && _uses[index] > 0) --_uses[index];
    }
    [[nodiscard]] std::uint32_t uses(std::uint32_t index) const { return index < _uses.size() ? _uses[index] : 0; }

    /// Copies a text into the pool; empty gives null.
    const wchar_t* store(std::wstring_view text);
    /// Reads the record of `size` bytes and the CONTINUE records behind it. Each string of the file keeps its place,
    /// equal ones too, since cells refer to places.
    void read(Xls& in, std::uint16_t size);
    /// The record with its CONTINUE records, at most 8224 bytes each.
    void write(Xls& out) const;
    void dump() const;

private:
    struct Hash {
        // The runs too: a table of one text in many dresses would be one long chain.
        std::size_t operator()(const ExtString& s) const {
            std::size_t hash = textHash(s.view());
            if (s.length == 0) return hash;  // all empty ones are equal
            for (const ExtStringRun& run : s.runs()) hash = (hash * 16777619U ^ run.ich) * 16777619U ^ run.ifnt;
            return hash;
        }
    };
    struct Equal {
        bool operator()(const ExtString& a, const ExtString& b) const;
    };
    // The map's own allocator ends the process when memory is short; this one throws.
    using Index = google::sparse_hash_map<ExtString, std::uint32_t, Hash, Equal,
                                          biff::ThrowingAllocator<std::pair<const ExtString, std::uint32_t>>>;

    void buildIndex();
    void forget(std::uint32_t index);
    void remember(std::uint32_t index);

    StringPool* _pool;
    std::uint32_t _cstTotal = 0;
    std::vector<ExtString> _strings;
    std::vector<std::uint32_t> _uses;
    // Filled from the strings when it is first needed: a book that is only read never pays for it.
    Index _index;
    bool _indexed = false;
};

}  // namespace vellum
