// A defined name: a text, the sheet that it belongs to, and the expression that it stands for.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "biff/container/record_ids.h"
#include "biff/names/builtin_names.h"
#include "biff/records/kept_records.h"
#include "biff/records/unicode_string.h"

namespace vellum {

class StringPool;
class Xls;

/// What stands in front of the name's text.
struct LblHead {
    static constexpr std::uint16_t id = record_id::Lbl;
    static constexpr const char* name = "Lbl";

    std::uint16_t grbit = 0;
    std::uint8_t chKey = 0;  // keyboard shortcut of a macro
    std::uint8_t cch = 0;
    std::uint16_t cce = 0;  // bytes of the tokens
    std::uint16_t reserved = 0;
    std::uint16_t itab = 0;                     // the sheet counted from 1; 0: the workbook
    std::array<std::uint8_t, 4> textLengths{};  // menu, description, help, status line

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("grbit", r.grbit);
        visit("chKey", r.chKey);
        visit("cch", r.cch);
        visit("cce", r.cce);
        visit("reserved", r.reserved);
        visit("itab", r.itab);
        visit("textLengths", r.textLengths);
    }
};

/// A record that writes back the bytes it came from, apart from what was changed.
///
/// Formulas mean a name by its place in the list, also those that are kept as bytes. So a name that is removed stays
/// there: it is found no more, and goes into the file as a hidden name "_gone1" without a value.
class Lbl {
public:
    enum Flag : std::uint16_t { hidden = 0x0001, builtIn = 0x0020 };
    static constexpr std::size_t maxText = 255;
    static constexpr int wholeBook = -1, noScope = -2;

    /// From behind the record's header on. What cannot be parsed is kept as bytes and has no text.
    static Lbl read(Xls& in, RecordHeader header, StringPool& pool, TextForm form);
    /// `text` is pool memory of at most 255 characters, one code when the flags say `builtIn`; `scope` a sheet or
    /// `wholeBook`.
    static Lbl make(std::uint16_t grbit, int scope, std::wstring_view text, std::span<const std::byte> tokens);
    /// Always in the BIFF8 form.
    void write(Xls& out) const;

    /// Whether it could be parsed. All that follows is empty when it could not.
    [[nodiscard]] bool isSound() const { return _sound; }
    [[nodiscard]] bool isGone() const { return !_goneText.empty(); }
    /// Sound and not gone.
    [[nodiscard]] bool isAlive() const { return _sound && !isGone(); }
    [[nodiscard]] const LblHead& head() const { return _head; }
    [[nodiscard]] bool isHidden() const { return (_head.grbit & hidden) != 0; }
    [[nodiscard]] bool isBuiltIn() const { return (_head.grbit & builtIn) != 0; }
    /// The sheet that the name belongs to, `wholeBook`, or `noScope` when its sheet is gone.
    [[nodiscard]] int scope() const { return _head.itab == lostSheet ? int{noScope} : _head.itab - 1; }
    /// What users call it: of a built-in name the text for its code.
    [[nodiscard]] std::wstring_view text() const;
    /// As the record has it: of a built-in name its code.
    [[nodiscard]] std::wstring_view recordText() const { return _name; }
    /// The same as `text` for a formula that uses it; a name that is gone shows as what it is saved as.
    [[nodiscard]] std::wstring_view shownText() const { return isGone() ? std::wstring_view(_goneText) : text(); }
    [[nodiscard]] std::optional<biff::BuiltinName> builtin() const;
    [[nodiscard]] std::span<const std::byte> tokens() const;
    /// What stands behind the tokens for them: values of arrays, areas.
    [[nodiscard]] std::span<const std::byte> tokensExtra() const;
    [[nodiscard]] std::size_t keptBytes() const { return _wire.wire().size(); }

    void setHidden(bool on);
    void setScope(int scope);
    /// In place of all tokens. Throws "string is too long" when they do not fit into a record.
    void setTokens(std::span<const std::byte> tokens, std::span<const std::byte> extra = {});
    /// The tokens, to be patched in place.
    [[nodiscard]] std::span<std::byte> patchTokens();
    /// The name is gone from now on; the text that it is saved as must not be that of another.
    void remove(std::wstring goneText) { _goneText = std::move(goneText); }
    void loseScope() { _head.itab = lostSheet; }
    /// Takes its place again, with a new value.
    void revive(std::span<const std::byte> tokens);

private:
    static constexpr std::uint16_t lostSheet = 0xFFFF;

    void parse(StringPool& pool, TextForm form);
    void storeHead();
    void build(std::span<const std::byte> front, std::span<const std::byte> tokens, std::span<const std::byte> rest);

    KeptRecords _wire;
    LblHead _head;
    std::wstring_view _name;      // as the record has it, in the pool
    std::uint16_t _tokensAt = 0;  // in the body
    bool _sound = false;
    std::wstring _goneText;
};

}  // namespace vellum
