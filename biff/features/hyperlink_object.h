// The object within a hyperlink record: where it leads.
#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "biff/container/sink.h"

namespace vellum::biff {

/// What a link leads to: a file or an address of the web, and a place in it or in this workbook.
struct LinkTarget {
    std::wstring moniker, location;
    bool known = true;  // the moniker is of a kind that we read

    /// Both joined by "#", or the one that is there. Empty when the moniker is of an unknown kind.
    [[nodiscard]] std::wstring text() const;
    /// The parts of a text as a caller writes it.
    static LinkTarget of(std::wstring_view text);
};

/// From behind the class id of the record. Throws "error in reading HyperlinkObj" when it ends early.
LinkTarget readHyperlinkObject(std::span<const std::byte> object);
void writeHyperlinkObject(Sink& out, const LinkTarget& target);

}  // namespace vellum::biff
