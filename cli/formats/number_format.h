// A number format, run for display.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "cli/formats/format_code.h"

namespace cli {

/// A format by its code, such as `#,##0.00;[Red]-#,##0.00`. Colours are left out, and so is what fills a cell's width;
/// names of months and days are English.
class NumberFormat {
public:
    explicit NumberFormat(std::string_view code) : _sections(readFormatCode(code)) {}

    /// A number as a reader sees it in a cell that is wide enough; hash signs for what cannot be shown.
    [[nodiscard]] std::string show(double value, bool date1904) const;
    /// A text, which only a section for texts changes.
    [[nodiscard]] std::string showText(std::string_view text) const;

private:
    struct Choice {
        const FormatSection* section;
        bool signShown;  // whether a minus sign is the caller's to put in front
    };
    [[nodiscard]] Choice choose(double value) const;

    std::vector<FormatSection> _sections;
};

}  // namespace cli
