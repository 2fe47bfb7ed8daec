// A worksheet from its part, as a copy, and back.
#include <algorithm>
#include <array>

#include "bindery/binderyparse/reader.h"
#include "bindery/classes/extras.h"
#include "bindery/classes/raw_node.h"
#include "bindery/values/error.h"
#include "engine/failure/vlerror.h"
#include "xlsx/filters/auto_filter.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {
namespace {

/// Reads what XmlFileBase reads, but only some of the rows.
class SheetReader final : public bindery::c_keeping_reader<bindery::c_xml_reader> {
public:
    /// -1 for no bound.
    SheetReader(bindery::c_read& source, int firstRow, int lastRow)
        : c_keeping_reader(source), _firstRow(firstRow), _lastRow(lastRow) {}

    bool wantsItem(std::int64_t row) const override {
        return (_firstRow < 0 || row >= _firstRow) && (_lastRow < 0 || row <= _lastRow);
    }

private:
    int _firstRow, _lastRow;
};

/// Elements that name another part by its Id.
constexpr std::array<std::string_view, 10> linkedParts = {
    "drawing",    "legacyDrawing", "legacyDrawingHF",  "drawingHF",       "picture",
    "oleObjects", "controls",      "customProperties", "webPublishItems", "tableParts"};

bool isLinkedPart(const bindery::c_raw_node& node) {
    return std::find(linkedParts.begin(), linkedParts.end(), node.localName()) != linkedParts.end();
}

/// Whether a choice or a fallback of an alternative holds one.
bool offersLinkedPart(const bindery::c_raw_node& alternative) {
    return std::any_of(alternative.children.begin(), alternative.children.end(), [](const auto& branch) {
        return std::any_of(branch->children.begin(), branch->children.end(),
                           [](const auto& child) { return isLinkedPart(*child); });
    });
}

/// Whether an attribute of the subtree is an Id of a relationship.
bool namesPart(const bindery::c_raw_node& node) {
    return std::any_of(node.attrs.begin(), node.attrs.end(),
                       [](const bindery::Attr& attr) { return attr.uri.ends_with("/relationships"); }) ||
           std::any_of(node.children.begin(), node.children.end(), [](const auto& child) { return namesPart(*child); });
}

}  // namespace

template <class CharT, class Tag>
XMLSheetImplT<CharT, Tag>::XMLSheetImplT() {
    attachRows();
    afterLoad();
}

template <class CharT, class Tag>
XMLSheetImplT<CharT, Tag>::XMLSheetImplT(const PartBytes& part, int firstRow, int lastRow)
    : _firstLoadedRow(std::max(firstRow, 0)) {
    std::vector<char> fromFile;
    std::string_view bytes = part.memory;
    if (part.path) {
        fromFile = BinaryFile::readWhole(*part.path);
        bytes = {fromFile.data(), fromFile.size()};
    }
    if (bytes.empty()) throw vlerror(xlsx::msg::dataEmpty);
    bindery::c_read_memory source(bytes.data(), bytes.size());
    readFrom(source, firstRow, lastRow);
}

template <class CharT, class Tag>
XMLSheetImplT<CharT, Tag>::XMLSheetImplT(bindery::c_read& source, int firstRow, int lastRow)
    : _firstLoadedRow(std::max(firstRow, 0)) {
    readFrom(source, firstRow, lastRow);
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::readFrom(bindery::c_read& source, int firstRow, int lastRow) {
    SheetReader reader(source, firstRow, lastRow);
    if (const int code = this->_root.unmarshal(reader)) throw vlerror(bindery::errorText(code));
    attachRows();
    afterLoad();
}

template <class CharT, class Tag>
XMLSheetImplT<CharT, Tag>::XMLSheetImplT(const XMLSheetImplT& source)
    : XmlFile<typename ooxml::dialect<Tag>::c_worksheet>(source),
      _numbered(source._numbered),
      _changed(source._changed),
      _firstLoadedRow(source._firstLoadedRow),
      _columnStyle(source._columnStyle),
      _areasDirty(true) {
    attachRows();
}

template <class CharT, class Tag>
XMLSheetImplT<CharT, Tag>::~XMLSheetImplT() = default;

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::bind(BookContextT<CharT, Tag>& book, int sheetIndex) {
    _book = &book;
    _index = sheetIndex;
}

template <class CharT, class Tag>
BookContextT<CharT, Tag>& XMLSheetImplT<CharT, Tag>::book() const {
    if (!_book) throw vlerror(xlsx::msg::sheetWithoutBook);
    return *_book;
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::afterLoad() {
    _columns.putInOrder();
    readColumnStyles();
    auto& views = this->_root.sheetViews().sheetView();
    if (views.empty()) views.append().workbookViewId(0);
    checkOrder();
    _areasDirty = true;
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::readColumnStyles() {
    constexpr std::uint32_t styledColumns = sheetColumns + 1;
    for (const auto& cols : this->_root.cols()) {
        for (const auto& col : cols.col()) {
            if (!col.isset_style() || col.style() == 0 || col.min() == 0) continue;
            const std::uint32_t end = std::min(col.max(), styledColumns);
            if (end > _columnStyle.size()) _columnStyle.resize(end);
            for (std::uint32_t i = col.min() - 1; i < end; ++i) _columnStyle[i] = col.style();
        }
    }
}

/// Some producers leave out where rows and cells stand, or write them in any order. What has no number stands behind
/// the one before it, and may meet the next one that has.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::checkOrder() {
    splitZeroRows();
    bool sorted = _numbered;
    std::int64_t next = _firstLoadedRow;
    for (Row& row : *_rows) {
        if (!row.isset_r() || row.r() == 0) {
            row.unset_r();
            _numbered = false;
        }
        const std::int64_t at = row.isset_r() ? std::int64_t{row.r()} - 1 : next;
        sorted = sorted && at >= next;
        next = at + 1;
        std::uint32_t nextCol = 0;
        for (Cell& cell : row.c()) {
            if (!cell.hasReference()) {
                _numbered = false;
                cell.setImpliedColumn(std::min(nextCol, sheetColumns));
            }
            const std::uint32_t col = cell.hasReference() ? cell.column() : nextCol;
            sorted = sorted && col >= nextCol;
            nextCol = col + 1;
        }
    }
    if (!sorted) {
        numberAll();
        sortAll();
    }
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::clearTabSelected() {
    if (auto* const views = this->_root.find_sheetViews()) {
        for (auto& view : views->sheetView()) view.unset_tabSelected();
    }
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::takeOutLinkedParts() {
    auto& root = this->_root;
    // Two sheets with one code name damage a workbook with macros.
    if (auto* const properties = root.find_sheetPr()) properties->unset_codeName();
    root.unset_drawing();
    root.unset_legacyDrawing();
    root.unset_legacyDrawingHF();
    root.unset_drawingHF();
    root.unset_picture();
    root.unset_oleObjects();
    root.unset_controls();
    root.unset_customProperties();
    root.unset_webPublishItems();
    root.unset_tableParts();
    for (auto& view : root.sheetViews().sheetView()) view.unset_pivotSelection();
    if (root.extras()) {
        std::erase_if(root.makeExtras().elements, [](const bindery::Placed& placed) {
            return isLinkedPart(placed.node) || offersLinkedPart(placed.node);
        });
    }
    if (auto* const extensions = root.find_extLst()) {
        std::erase_if(extensions->children, [](const auto& extension) { return namesPart(*extension); });
        if (extensions->children.empty()) root.unset_extLst();
    }
}

/// Readers that trust `dimension` would miss cells outside.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::setDimension() {
    auto* const dimension = this->_root.find_dimension();
    if (!dimension) return;
    const CellArea& area = used();
    CellRange range;
    if (!area.empty()) {
        range = {static_cast<std::uint32_t>(area.rowFirst), static_cast<std::uint32_t>(area.rowEnd - 1),
                 static_cast<std::uint32_t>(area.colFirst), static_cast<std::uint32_t>(area.colEnd - 1)};
    }
    for (bindery::Attr& attr : dimension->attrs) {
        if (attr.name == "ref") attr.value = cellRangeText(range);
    }
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::beforeWrite() {
    dropEmptyFilter();
    if (_changed) setDimension();
}

}  // namespace vellum
