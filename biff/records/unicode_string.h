// The two plain string forms of records. Their texts are wide characters in pool memory, ended by a null; the structs
// are copied by value and own nothing.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "biff/container/cursor.h"
#include "biff/container/sink.h"
#include "biff/records/text_reader.h"
#include "engine/text/string_pool.h"

namespace vellum {

class ContinueWriter;

/// How a string lies in the file: BIFF5 (`vers` below 1281) has no flags byte, one byte a character.
enum class TextForm { withFlags, noFlags };

/// 8-bit count, flags, characters: at most 255 of them, so never in two records.
struct ShortXLUnicodeString {
    std::uint8_t cch = 0;
    std::uint8_t flags = 0;  // bit 0: two bytes a character in the file
    bool noFlags = false;    // write no flags byte; readers clear it, since all is saved in the later form
    const wchar_t* text = L"";

    /// A body that ends too early throws "RECORD size is incorrect".
    static ShortXLUnicodeString read(Cursor& in, StringPool& pool, TextForm form, const char* record);
    void write(Sink& out) const;
    /// Bytes that `write` writes.
    [[nodiscard]] std::size_t wireSize() const;

    /// Throws "ShortXLUnicodeString: string is too long" above 255. A narrow text in UTF-8 is measured in bytes.
    /// A null text counts as empty. What is set is two-byte in the file, even pure ASCII.
    template <class CharT>
    void set(const CharT* newText, StringPool& pool, bool utf8);

    [[nodiscard]] std::wstring_view view() const { return {text, cch}; }
};

/// The same with a 16-bit count.
struct XLUnicodeString {
    std::uint16_t cch = 0;
    std::uint8_t flags = 0;
    bool noFlags = false;
    bool byteCount = false;  // the count has 8 bits in the file
    const wchar_t* text = L"";

    /// From a body that holds it whole. `shortCount`: BIFF5 records with an 8-bit count, saved with 16 bits later.
    static XLUnicodeString read(Cursor& in, StringPool& pool, TextForm form, bool shortCount, const char* record);
    /// From the stream, where it may go on in CONTINUE records; `budget` is what remains of the current record.
    static XLUnicodeString read(Xls& xls, StringPool& pool, TextForm form, bool shortCount, std::uint16_t& budget);
    /// Throws "string is too long" for more than 255 characters with an 8-bit count.
    void write(Sink& out) const;
    /// The same, going on in CONTINUE records where the text does not fit.
    void write(ContinueWriter& out) const;
    [[nodiscard]] std::size_t wireSize() const;

    /// A text that is in the pool already, of at most 65535 characters.
    static XLUnicodeString twoByte(const wchar_t* pooled, std::size_t cch) {
        return {.cch = static_cast<std::uint16_t>(cch), .flags = 1, .text = pooled};
    }
    /// Throws "string is too long" above 65535.
    template <class CharT>
    void set(const CharT* newText, StringPool& pool, bool utf8);

    [[nodiscard]] std::wstring_view view() const { return {text, cch}; }
};

/// Flags byte and characters, with a count that stands elsewhere.
const wchar_t* readTextNoCch(Cursor& in, StringPool& pool, std::size_t cch, TextForm form, const char* record,
                             std::uint8_t* flags = nullptr);
/// The characters alone, two bytes or one each.
void writeCharacters(Sink& out, std::wstring_view characters, bool wide);

}  // namespace vellum
