// The sheet list of the book.
#include <algorithm>
#include <limits>
#include <numeric>
#include <unordered_set>
#include <utility>

#include "engine/api/enums.h"
#include "engine/facts/sheet_names.h"
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "engine/text/text_hash.h"
#include "xlsx/book/book.h"
#include "xlsx/package/content_type_names.h"
#include "xlsx/package/content_types.h"
#include "xlsx/package/messages.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"
#include "xlsx/sheet/sheet.h"

namespace vellum {
namespace {

/// The number that ends a text, 0 when there is none or it is beyond all reason.
unsigned numberAtEnd(std::string_view text) {
    std::size_t first = text.size();
    while (first > 0 && text[first - 1] >= '0' && text[first - 1] <= '9') --first;
    unsigned number = 0;
    for (const char digit : text.substr(first)) {
        if (number > 100000000) return 0;
        number = number * 10 + static_cast<unsigned>(digit - '0');
    }
    return number;
}

/// Relationships that a copied sheet may share with its source: those that lead outside or to a place in a sheet, and
/// printer settings.
bool mayBeShared(const relationships::c_CT_Relationship& element) {
    return element.TargetMode() == "External" || element.Type().ends_with("/hyperlink") ||
           element.Type().ends_with("/printerSettings");
}

}  // namespace

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::sheetCount() {
    const auto* const sheets = this->_root.find_sheets();
    return sheets ? static_cast<int>(sheets->sheet().size()) : 0;
}

template <class CharT, class Tag>
const typename ooxml::dialect<Tag>::sml::c_CT_Sheet& XMLBookImplT<CharT, Tag>::sheetElement(int index) const {
    const auto* const sheets = this->_root.find_sheets();
    if (!sheets || index < 0 || static_cast<std::size_t>(index) >= sheets->sheet().size()) {
        throw vlerror(xlsx::msg::indexOutOfRange);
    }
    return sheets->sheet()[static_cast<std::size_t>(index)];
}

template <class CharT, class Tag>
std::string XMLBookImplT<CharT, Tag>::sheetPath(int sheetIndex) {
    const std::string target = requireRelationships().targetById(sheetElement(sheetIndex).id());
    return target.empty() ? target : absoluteTarget(_folder, target);
}

/// The sheet's object, told its place; null for what is no worksheet.
template <class CharT, class Tag>
auto XMLBookImplT<CharT, Tag>::findSheet(int index) -> Sheet* {
    Sheet* const sheet = dynamic_cast<Sheet*>(findPart(sheetPath(index)));
    if (!sheet) return nullptr;
    const auto place = static_cast<std::size_t>(index);
    if (place >= _placed.size()) _placed.resize(place + 1);
    _placed[place] = sheet;
    sheet->bind(*this, index);
    return sheet;
}

/// Those from `first` on stand elsewhere now.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::bindPlaced(std::size_t first) {
    for (std::size_t i = first; i < _placed.size(); ++i) {
        if (_placed[i]) _placed[i]->bind(*this, static_cast<int>(i));
    }
}

/// A sheet's part is about to go.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::forgetPlaced(XFile* part) {
    if (Sheet* const sheet = dynamic_cast<Sheet*>(part)) {
        std::replace(_placed.begin(), _placed.end(), sheet, static_cast<Sheet*>(nullptr));
    }
}

template <class CharT, class Tag>
ISheetT<CharT>* XMLBookImplT<CharT, Tag>::getSheet(int index) {
    return guarded<ISheetT<CharT>*>(this->_lastError, nullptr, [&] {
        Sheet* const sheet = findSheet(index);
        if (!sheet) throw vlerror(xlsx::msg::sheetNotFound);
        return sheet;
    });
}

template <class CharT, class Tag>
const CharT* XMLBookImplT<CharT, Tag>::sheetNameAt(int index) {
    return guarded<const CharT*>(this->_lastError, nullptr, [&] {
        if (index < 0 || index >= sheetCount()) throw vlerror(xlsx::msg::sheetIndexOutOfRange);
        return this->_conversion.template give<CharT>(sheetElement(index).name(), isUtf8());
    });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::sheetKindAt(int index) {
    return guarded(this->_lastError, static_cast<int>(sheetOther), [&]() -> int {
        const std::string path = sheetPath(index);
        XFile* const part = findPart(path);
        if (!part) throw vlerror(xlsx::msg::sheetNotFound);
        if (dynamic_cast<Sheet*>(part)) return sheetWorksheet;
        return dynamic_cast<XMLChartSheet*>(part) ? sheetChart : sheetOther;
    });
}

template <class CharT, class Tag>
ISheetT<CharT>* XMLBookImplT<CharT, Tag>::addSheet(const CharT* name, ISheetT<CharT>* source) {
    return insertSheet(sheetCount(), name, source);
}

template <class CharT, class Tag>
ISheetT<CharT>* XMLBookImplT<CharT, Tag>::insertSheet(int index, const CharT* name, ISheetT<CharT>* source) {
    return guarded<ISheetT<CharT>*>(this->_lastError, nullptr, [&] { return &makeSheet(index, name, source); });
}

template <class CharT, class Tag>
auto XMLBookImplT<CharT, Tag>::sheetFacts() -> SheetFacts& {
    SheetFacts& facts = _sheetFacts;
    if (facts.known && facts.renames == _names.renames()) return facts;
    facts = {};
    facts.known = true;
    facts.renames = _names.renames();
    if (const auto* const sheets = this->_root.find_sheets()) {
        for (const auto& element : sheets->sheet()) {
            facts.names.insert(foldedSheetName(element.name()));
            facts.lastId = std::max(facts.lastId, element.sheetId());
        }
    }
    if (!_relationships) return facts;
    for (const std::string& target : _relationships->targetsOfEnding("worksheet")) {
        if (target.size() <= 4) continue;
        facts.lastFile = std::max(facts.lastFile, numberAtEnd(std::string_view(target).substr(0, target.size() - 4)));
    }
    return facts;
}

/// The name as it will be; `cut` tells whether it had to lose characters.
template <class CharT, class Tag>
std::wstring XMLBookImplT<CharT, Tag>::checkedSheetName(const CharT* name, bool& cut) {
    const SheetNameText text = cutSheetName(name, isUtf8());
    if (sheetFacts().names.contains(foldedSheetName(text.name))) throw vlerror(xlsx::msg::sheetNameTaken);
    checkSheetName(text.name);
    cut = text.cut;
    return text.name;
}

template <class CharT, class Tag>
std::string XMLBookImplT<CharT, Tag>::makeSheetPath() {
    if (!_relationships) throw vlerror(xlsx::msg::makeSheetPath);
    unsigned number = sheetFacts().lastFile;
    std::string path;
    do path = _folder + "/worksheets/sheet" + std::to_string(++number) + ".xml";
    while (findPart(path));
    _sheetFacts.lastFile = number;
    return path;
}

/// The sheet that a new one is a copy of, null for none. Only sheets of this book can be copied.
template <class CharT, class Tag>
auto XMLBookImplT<CharT, Tag>::ownSheet(ISheetT<CharT>* source) -> const Sheet* {
    if (!source) return nullptr;
    const auto* const sheet = dynamic_cast<const Sheet*>(source);
    if (!sheet || findSheet(sheet->index()) != sheet) throw vlerror(xlsx::msg::sheetNotFound);
    return sheet;
}

/// Puts a sheet among the parts of the package; the Id of its relationship.
template <class CharT, class Tag>
std::string XMLBookImplT<CharT, Tag>::addSheetPart(const std::string& path, std::unique_ptr<Sheet> sheet) {
    ContentTypes& contentTypes = requireContentTypes();
    addPart(path, std::move(sheet));
    contentTypes.setOverride(path, type::worksheet);
    return requireRelationships().add(std::string(rel::transitional) + "worksheet",
                                      std::string_view(path).substr(_folder.size() + 1));
}

/// Puts a sheet in the list, under a number that no other has; names that are local to those behind move with them.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::listSheet(int index, const std::wstring& name, const std::string& id) {
    SheetFacts facts = std::exchange(sheetFacts(), {});  // asked for anew should this fail half way
    auto& element = this->_root.sheets().sheet().insert(static_cast<std::size_t>(index));
    element.name(name);
    element.sheetId(++facts.lastId);
    element.id(id);
    facts.names.insert(foldedSheetName(name));
    _sheetFacts = std::move(facts);
    const auto place = static_cast<std::size_t>(index);
    if (place < _placed.size()) _placed.insert(_placed.begin() + index, nullptr);
    findSheet(index);
    bindPlaced(place + 1);

    _names.changed();
    auto* const names = this->_root.find_definedNames();
    if (!names) return;
    for (auto& definedName : names->definedName()) {
        if (!definedName.isset_localSheetId() || definedName.localSheetId() < static_cast<unsigned>(index)) continue;
        definedName.localSheetId(definedName.localSheetId() + 1);
    }
}

template <class CharT, class Tag>
ISheetT<CharT>& XMLBookImplT<CharT, Tag>::makeSheet(int index, const CharT* name, ISheetT<CharT>* source) {
    if (index < 0 || index > sheetCount()) throw vlerror(xlsx::msg::indexOutOfRange);
    bool cut;
    const std::wstring wideName = checkedSheetName(name, cut);
    const Sheet* const sourceSheet = ownSheet(source);
    const int sourceIndex = sourceSheet ? sourceSheet->index() : -1;
    const std::string sourcePath = sourceSheet ? sheetPath(sourceIndex) : std::string();
    const std::wstring sourceName = sourceSheet ? sheetElement(sourceIndex).name() : std::wstring();

    auto made = sourceSheet ? std::make_unique<Sheet>(*sourceSheet) : std::make_unique<Sheet>();
    if (sourceSheet) made->takeOutLinkedParts();
    Sheet& sheet = *made;
    const std::string path = makeSheetPath();
    listSheet(index, wideName, addSheetPart(path, std::move(made)));
    if (sourceSheet) {
        copyRelationships(sourcePath, path);
        copyLocalNames(sourceIndex >= index ? sourceIndex + 1 : sourceIndex, index, sourceName, wideName);
    }

    // The sheet that is shown stays so.
    sheet.clearTabSelected();
    const int active = activeSheetIndex();
    if (sheetCount() == 1) {
        activate(0);
    } else if (index <= active && active + 1 < sheetCount()) {
        activate(active + 1);
    }
    if (cut) this->_lastError.set(xlsx::msg::sheetNameCut);
    return sheet;
}

/// A copy refers to what lies outside the package, and to printer settings, by the same Ids as its source.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::copyRelationships(std::string_view sourcePath, std::string_view path) {
    const Relationships* const source = findRelationshipsOf(sourcePath);
    if (!source) return;
    auto copy = source->copyIf(mayBeShared);
    if (!copy) return;
    const std::string relsPath = relsPathOf(path);
    addPart(relsPath, std::move(copy));
    ContentTypes& contentTypes = requireContentTypes();
    if (contentTypes.typeOf(relsPath) != type::relationships) contentTypes.setOverride(relsPath, type::relationships);
}

template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::copyLocalNames(int sourceIndex, int index, const std::wstring& sourceName,
                                              const std::wstring& name) {
    auto* const names = this->_root.find_definedNames();
    if (!names) return;
    auto& list = names->definedName();
    const std::size_t count = list.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!list[i].isset_localSheetId() || list[i].localSheetId() != static_cast<unsigned>(sourceIndex)) continue;
        auto& copy = list.push_back(list[i]);
        copy.localSheetId(static_cast<unsigned>(index));
        copy.text(withSheetRenamed(copy.text(), sourceName, name));
    }
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::moveSheet(int srcIndex, int dstIndex) {
    return guarded(this->_lastError, false, [&] {
        const int count = sheetCount();
        if (srcIndex < 0 || srcIndex >= count) throw vlerror(xlsx::msg::srcIndexOutOfRange);
        if (dstIndex < 0 || dstIndex > count) throw vlerror(xlsx::msg::dstIndexOutOfRange);
        if (srcIndex == dstIndex) throw vlerror(xlsx::msg::moveToItself);
        if (dstIndex - 1 == srcIndex) throw vlerror(xlsx::msg::moveBehindItself);

        auto& sheets = this->_root.sheets().sheet();
        const auto copy = sheets[static_cast<std::size_t>(srcIndex)];
        sheets.erase(static_cast<std::size_t>(srcIndex));
        const int landed = dstIndex > srcIndex ? dstIndex - 1 : dstIndex;
        sheets.insert(static_cast<std::size_t>(landed)) = copy;

        std::vector<unsigned> order(static_cast<std::size_t>(count));  // old index of each new place
        std::iota(order.begin(), order.end(), 0u);
        order.erase(order.begin() + srcIndex);
        order.insert(order.begin() + landed, static_cast<unsigned>(srcIndex));
        _names.changed();
        if (auto* const names = this->_root.find_definedNames()) {
            for (auto& name : names->definedName()) {
                if (!name.isset_localSheetId()) continue;
                const auto place = std::find(order.begin(), order.end(), name.localSheetId());
                if (place != order.end()) name.localSheetId(static_cast<unsigned>(place - order.begin()));
            }
        }
        _placed.resize(static_cast<std::size_t>(count));
        Sheet* const moved = _placed[static_cast<std::size_t>(srcIndex)];
        _placed.erase(_placed.begin() + srcIndex);
        _placed.insert(_placed.begin() + landed, moved);
        bindPlaced(0);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::removeSheet(int index) {
    return guarded(this->_lastError, false, [&] {
        if (index < 0 || index >= sheetCount()) throw vlerror(xlsx::msg::indexOutOfRange);
        if (sheetCount() == 1) throw vlerror(xlsx::msg::cantRemoveLastSheet);
        const std::string path = sheetPath(index);
        if (!findPart(path)) throw vlerror(xlsx::msg::sheetNotFound);
        _sheetFacts = {};
        removeNamesOfSheet(index);
        dropPart(relsPathOf(path));
        const std::string id = sheetElement(index).id();
        const auto place = static_cast<std::size_t>(index);
        this->_root.sheets().sheet().erase(place);
        if (place < _placed.size()) _placed.erase(_placed.begin() + index);
        requireRelationships().removeById(id);
        if (dropPart(path)) requireContentTypes().removeOverride(path);
        if (activeSheetIndex() >= sheetCount()) activate(sheetCount() - 1);
        clampFirstSheet();
        bindPlaced(place);
        return true;
    });
}

/// Drops the names that refer to the sheet; in the others the indices of later sheets go down by one. A name that is
/// local to the sheet passes to its successor: it goes when there is none, or when that has such a name already.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::removeNamesOfSheet(int index) {
    _names.changed();
    auto* const names = this->_root.find_definedNames();
    if (!names) return;
    const std::wstring sheetName = sheetElement(index).name();
    const auto sheet = static_cast<unsigned>(index);
    const bool isLast = index + 1 >= sheetCount();
    auto& list = names->definedName();
    std::unordered_set<std::wstring, TextHash> ofSuccessor;
    for (const auto& name : list) {
        if (name.isset_localSheetId() && name.localSheetId() == sheet + 1) {
            ofSuccessor.insert(foldedSheetName(name.name()));
        }
    }
    const auto kept = std::remove_if(list.begin(), list.end(), [&](const auto& name) {
        if (sheetOfReference(name.text()) == sheetName) return true;
        const bool isLocal = name.isset_localSheetId() && name.localSheetId() == sheet;
        return isLocal && (isLast || ofSuccessor.contains(foldedSheetName(name.name())));
    });
    if (kept != list.end()) list.erase(static_cast<std::size_t>(kept - list.begin()), list.size());
    for (auto& name : list) {
        if (name.isset_localSheetId() && name.localSheetId() > sheet) name.localSheetId(name.localSheetId() - 1);
    }
    if (list.size() == 0) this->_root.unset_definedNames();
}

/// Leaves one sheet in the list, as a load of one sheet does. The parts of the others are the caller's to drop.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::cutToSheet(int index) {
    _sheetFacts = {};
    _placed.clear();
    auto& sheets = this->_root.sheets().sheet();
    for (int i = sheetCount() - 1; i >= 0; --i) {
        if (i == index) continue;
        removeNamesOfSheet(i);
        sheets.erase(static_cast<std::size_t>(i));
    }
    if (auto* const views = this->_root.find_bookViews()) {
        for (auto& view : views->workbookView()) view.activeTab(0);
    }
    clampFirstSheet();
}

/// The first tab in sight is one that is there.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::clampFirstSheet() {
    auto* const views = this->_root.find_bookViews();
    if (!views) return;
    const auto count = static_cast<unsigned>(sheetCount());
    for (auto& view : views->workbookView()) {
        if (view.isset_firstSheet() && view.firstSheet() >= count) view.firstSheet(count - 1);
    }
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::activeSheetIndex() {
    return activeSheet();
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::activeSheet() {
    const auto* const views = this->_root.find_bookViews();
    if (!views || views->workbookView().size() == 0) return 0;
    constexpr unsigned last = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(views->workbookView()[0].activeTab(), last));
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::setActiveSheetIndex(int index) {
    return guarded(this->_lastError, false, [&] {
        if (index < 0 || index >= sheetCount()) throw vlerror(xlsx::msg::indexOutOfRange);
        activate(index);
        return true;
    });
}

/// No sheet is left marked as selected: readers go by the active index.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::activate(int index) {
    auto& views = this->_root.bookViews().workbookView();
    if (views.size() == 0) views.append();
    views[0].activeTab(static_cast<unsigned>(index));
    for (int i = 0; i < sheetCount(); ++i) {
        if (Sheet* const sheet = findSheet(i)) sheet->clearTabSelected();
    }
}

}  // namespace vellum
