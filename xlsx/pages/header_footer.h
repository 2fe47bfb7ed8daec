// The texts above and below each printed page.
#pragma once
#include <string>
#include <string_view>

#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

/// `oddHeader` and `oddFooter`, which stand for all pages unless others are told apart; with their codes as written.
template <class Tag>
class HeaderFooter {
public:
    explicit HeaderFooter(Worksheet<Tag>& sheet) : _sheet(sheet) {}

    /// Null when there is none.
    [[nodiscard]] const std::wstring* header() const;
    [[nodiscard]] const std::wstring* footer() const;
    /// An empty text takes the element away.
    void setHeader(std::wstring_view text);
    void setFooter(std::wstring_view text);

private:
    void dropWhenEmpty();

    Worksheet<Tag>& _sheet;
};

extern template class HeaderFooter<ooxml::excelNormal_tag>;
extern template class HeaderFooter<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
