#include "cli/diff/book_differences.h"

#include <strings.h>

#include <algorithm>
#include <map>
#include <memory>
#include <sstream>

#include "cli/diff/cell_differences.h"
#include "cli/diff/feature_differences.h"
#include "cli/diff/sheet_pairs.h"
#include "cli/tables/area.h"
#include "engine/api/enums.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;

class BookComparer {
public:
    BookComparer(Book& first, Book& second, Aspects aspects)
        : _first(first),
          _second(second),
          _aspects(aspects),
          _firstReader(first, aspects),
          _secondReader(second, aspects) {}

    Differences run() {
        const bool features = _aspects.formulas;
        if (features) addNameDifferences(_first, _second, _out);
        if (_aspects.looks) addUsualLook();
        _matches = matchSheets(_first, _second, _out);
        compareAll(features);
        return std::move(_out);
    }
    Differences run(const SheetArea& firstArea, const SheetArea& secondArea) {
        _firstReader.keepTo(firstArea);
        _secondReader.keepTo(secondArea);
        _matches = {{firstArea.sheet, secondArea.sheet}};
        compareAll(false);
        return std::move(_out);
    }

private:
    void compareAll(bool features) {
        for (const SheetMatch& match : _matches) alignOne(match);
        for (std::size_t i = 0; i < _matches.size(); ++i) compareOne(i, features);
    }
    void addUsualLook() {
        auto [before, after] = lookChanges(CellLooks(_first).usual(), CellLooks(_second).usual());
        if (!before.empty()) _out.push_back({"", "usual look", "setting changed", 1, before, after});
    }
    [[nodiscard]] bool areWorksheets(const SheetMatch& match) const {
        return match.first >= 0 && match.second >= 0 && _first.sheetKindAt(match.first) == vellum::sheetWorksheet &&
               _second.sheetKindAt(match.second) == vellum::sheetWorksheet;
    }

    void alignOne(const SheetMatch& match) {
        _alignments.push_back(nullptr);
        auto* const first = areWorksheets(match) ? _first.getSheet(match.first) : nullptr;
        auto* const second = areWorksheets(match) ? _second.getSheet(match.second) : nullptr;
        if (first == nullptr || second == nullptr) return;
        _alignments.back() =
            std::make_unique<SheetAlignment>(alignSheets(_firstReader, *first, _secondReader, *second));
    }

    /// Of the sheet that bears this name in the first book: formulas there have it.
    const SheetAlignment* alignmentOf(std::string_view name) const {
        for (std::size_t i = 0; i < _matches.size(); ++i) {
            const char* const found = _matches[i].first >= 0 ? _first.sheetNameAt(_matches[i].first) : nullptr;
            if (found != nullptr && name.size() == std::string_view(found).size() &&
                strncasecmp(found, name.data(), name.size()) == 0)
                return _alignments[i].get();
        }
        return nullptr;
    }

    void compareOne(std::size_t i, bool features) {
        if (_alignments[i] == nullptr) return;
        const SheetMatch& match = _matches[i];
        SheetPair pair{_firstReader, *_first.getSheet(match.first), _secondReader, *_second.getSheet(match.second), ""};
        if (const char* const name = _second.sheetNameAt(match.second)) pair.name = name;
        addCellDifferences(
            pair, *_alignments[i], [this](std::string_view name) { return alignmentOf(name); }, _out);
        if (features) addFeatureDifferences(_first, pair.first, _second, pair.second, pair.name, _out);
    }

    Book &_first, &_second;
    Aspects _aspects;
    CellReader _firstReader, _secondReader;
    std::vector<SheetMatch> _matches;
    std::vector<std::unique_ptr<SheetAlignment>> _alignments;  // by match; null where there are no cells to compare
    Differences _out;
};

}  // namespace

Differences bookDifferences(Book& first, Book& second, Aspects aspects) {
    return BookComparer(first, second, aspects).run();
}

Differences areaDifferences(Book& first, const SheetArea& firstArea, Book& second, const SheetArea& secondArea,
                            Aspects aspects) {
    return BookComparer(first, second, aspects).run(firstArea, secondArea);
}

}  // namespace cli
