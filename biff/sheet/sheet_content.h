// The content of a sheet, which for a small sheet of a file may be its bytes.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "biff/sheet/sheet_parts.h"

namespace vellum::biff {

class SheetContent;

/// The small sheets of a book that were opened last. A file of a few megabytes has room for 100,000 sheets of a cell
/// each, of which the parts take a hundred times as much as the bytes: of those that nobody changes only some are open
/// at a time.
class OpenSheets {
public:
    OpenSheets(StringPool& pool, StrMap& strings) : _pool(pool), _strings(strings) {}
    OpenSheets(const OpenSheets&) = delete;
    OpenSheets& operator=(const OpenSheets&) = delete;

    /// The parts of a sheet's bytes. Its uses of shared strings were counted when the file was loaded.
    [[nodiscard]] std::unique_ptr<SheetParts> parse(std::span<const std::byte> wire, const SheetLoad& what);
    /// Closes the one that was opened longest ago.
    void opened(const SheetContent& content) noexcept;
    void forget(const SheetContent& content) noexcept;

private:
    StringPool& _pool;
    StrMap& _strings;
    std::array<const SheetContent*, 16> _open{};
    std::size_t _next = 0;
};

/// The parts of a sheet, or the bytes from which they can be made at any time. What `read` gives lives until `edit` is
/// called or other sheets are read.
class SheetContent {
public:
    /// Of a new sheet.
    explicit SheetContent(OpenSheets& open) : _open(&open), _parts(std::make_unique<SheetParts>()) {}
    SheetContent(const SheetContent&) = delete;
    SheetContent& operator=(const SheetContent&) = delete;
    ~SheetContent() { _open->forget(*this); }

    [[nodiscard]] const SheetParts& read() const {
        if (_parts == nullptr) open();
        return *_parts;
    }
    /// For a change: from now on the parts are all there is.
    SheetParts& edit() {
        static_cast<void>(read());
        if (_wire != nullptr) forgetWire();
        return *_parts;
    }
    /// New parts in place of all that was there.
    SheetParts& replace(std::unique_ptr<SheetParts> parts);
    /// Keeps the bytes that were just loaded into the parts, and lets the parts go, where that is the smaller form and
    /// nothing is lost by it.
    void park(std::span<const std::byte> wire, const SheetLoad& what);
    /// Whether bytes can stand for the parts. Then the sheet is a worksheet that has neither formulas, texts of its own
    /// nor a drawing.
    [[nodiscard]] bool isParked() const { return _wire != nullptr; }

    /// Calls `work` with the parts, which no other sheet's opening closes meanwhile.
    template <class Work>
    void use(Work&& work) {
        if (_parts != nullptr) {
            work(*_parts);
        } else {
            work(*_open->parse(wire(), _what));
        }
    }

    // Facts of which a book asks all its sheets.
    [[nodiscard]] std::int16_t calcMode() const { return isParked() ? _calcMode : _parts->settings.calcMode; }
    [[nodiscard]] std::uint16_t calcRefMode() const { return isParked() ? _calcRefMode : _parts->settings.calcRefMode; }
    [[nodiscard]] std::uint16_t viewFlags() const { return isParked() ? _viewFlags : _parts->window2.flags; }
    [[nodiscard]] std::size_t keptBytes() const;

private:
    friend class OpenSheets;
    static constexpr std::size_t mostBytes = 1024;

    void open() const;
    void forgetWire();
    [[nodiscard]] std::span<const std::byte> wire() const { return {_wire.get(), _size}; }

    OpenSheets* _open;
    mutable std::unique_ptr<SheetParts> _parts;
    std::unique_ptr<std::byte[]> _wire;
    SheetLoad _what;
    std::uint16_t _size = 0, _keptBytes = 0;
    std::int16_t _calcMode = 0;
    std::uint16_t _calcRefMode = 0, _viewFlags = 0;
};

}  // namespace vellum::biff
