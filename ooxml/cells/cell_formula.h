// Formulas of cells as they are read.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ooxml {

/// A cell's formula, or none; to be read until the cell changes or moves.
template <class Formula>
class CellFormula {
public:
    CellFormula() = default;
    /// An element with attributes; null for none.
    explicit CellFormula(const Formula* element) : _element(element), _isThere(element != nullptr) {}
    /// A text without attributes that tell more about it; UTF-8.
    explicit CellFormula(std::string_view text) : _text(text), _isThere(true) {}
    /// One that takes its text from the group of that number.
    explicit CellFormula(std::uint32_t group) : _group(group), _isThere(true) {}

    explicit operator bool() const { return _isThere; }
    const CellFormula* operator->() const { return this; }

    std::string_view t() const;  // "normal" when it is absent
    bool isset_t() const;
    std::string_view ref() const;
    bool isset_ref() const;
    std::uint32_t si() const;
    bool isset_si() const;
    std::wstring text() const;
    bool hasText() const;

private:
    const Formula* _element = nullptr;
    std::string_view _text;
    std::optional<std::uint32_t> _group;
    bool _isThere = false;
};

}  // namespace ooxml
