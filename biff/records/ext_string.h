// The rich string of the shared string table, in memory and on the wire. All of it lies in the book's pool.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "biff/records/text_reader.h"
#include "engine/text/string_pool.h"

namespace vellum {

class ContinueWriter;

/// From character `ich` on the text has the font of wire index `ifnt`.
struct ExtStringRun {
    std::uint16_t ich = 0, ifnt = 0;
    bool operator==(const ExtStringRun&) const = default;
};

/// Kept unparsed.
struct ExtStringPhonetic {
    std::uint32_t size = 0;
    const std::byte* bytes = nullptr;
};

struct ExtStringFormat {
    std::span<const ExtStringRun> runs;
    const ExtStringPhonetic* phonetic = nullptr;
};

struct ExtString {
    const wchar_t* text = nullptr;            // null stands for empty; ended by a null
    const ExtStringFormat* format = nullptr;  // runs and phonetic data, if it has any
    std::uint32_t length = 0;
    std::uint8_t flags = wideText;  // TextFlags
    bool open = false;              // somebody still adds runs, so that no other cell may share it

    [[nodiscard]] std::wstring_view view() const { return {text == nullptr ? L"" : text, length}; }
    [[nodiscard]] std::span<const ExtStringRun> runs() const {
        return format == nullptr ? std::span<const ExtStringRun>() : format->runs;
    }
    [[nodiscard]] bool hasPhonetic() const { return format != nullptr && format->phonetic != nullptr; }

    /// Appends `more` as a run in the font of wire index `ifnt`.
    void addRun(std::wstring_view more, std::uint16_t ifnt, StringPool& pool);

    /// One string of a table whose current record has `budget` bytes left. Fewer than 3 at its start throw "can't read
    /// ExtString: size is incorrect".
    static ExtString read(Xls& xls, StringPool& pool, std::uint16_t& budget);
    void write(ContinueWriter& out) const;
};

/// Both empty, or the same text, runs and kind; a string with phonetic data is equal to none.
bool sameString(const ExtString& a, const ExtString& b);

}  // namespace vellum
