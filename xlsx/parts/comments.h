// The comments of a sheet.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ooxml/generated/dialect.h"
#include "ooxml/generated/sml-comments/sml-comments.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

/// Comments are read, not written: what shows them is a drawing of another kind, which is passed through.
template <class Tag>
class Comments final : public XmlFile<typename ooxml::dialect<Tag>::c_comments> {
public:
    using XmlFile<typename ooxml::dialect<Tag>::c_comments>::XmlFile;

    struct Entry {
        std::uint32_t row = 0, col = 0;
        std::size_t place = 0;  // in the list of the part
    };
    /// By row, then column; of several of one cell the first. Comments whose reference is no cell are left out.
    const std::vector<Entry>& entries();
    /// Null when the cell has none.
    const Entry* find(int row, int col);

    /// The text, then that of its runs, as they stand.
    std::wstring text(const Entry& entry) const;
    /// Nothing when the file's list of authors has no such one.
    std::optional<std::wstring> author(const Entry& entry) const;

private:
    std::vector<Entry> _entries;
    bool _known = false;
};

extern template class Comments<ooxml::excelNormal_tag>;
extern template class Comments<ooxml::excelStrict_tag>;

}  // namespace vellum
