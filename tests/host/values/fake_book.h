// A workbook in memory behind the table operations, for tests of what runs over them: cells of any kind, sheets that
// can be added up to a limit, and defined names.
#pragma once
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/interface/host.h"
#include "host/sources/driver_context.h"

namespace quillet::fake {

struct FakeCell {
    int kind = cellEmpty;
    double number = 0;
    std::string text;
    bool isDate = false;
};

struct FakeName {
    std::string name;
    int firstRow, lastRow, firstCol, lastCol;
};

struct FakeSheet {
    std::string name;
    std::map<std::pair<int, int>, FakeCell> cells;
    std::vector<FakeName> names;
    int writableRows = 1 << 20;  // writes below are refused

    FakeCell& at(int row, int col) { return cells[{row, col}]; }
    const FakeCell* find(int row, int col) const {
        const auto found = cells.find({row, col});
        return found == cells.end() ? nullptr : &found->second;
    }
    /// "1.5", "true", "#err" and "" by their kind, all else a text.
    void put(int row, int col, const std::string& value) {
        FakeCell& cell = at(row, col);
        char* end = nullptr;
        const double number = std::strtod(value.c_str(), &end);
        if (value.empty())
            cell = {};
        else if (value == "#err")
            cell = {cellError, 0, "", false};
        else if (value == "true" || value == "false")
            cell = {cellBoolean, value == "true" ? 1.0 : 0.0, "", false};
        else if (*end == '\0')
            cell = {cellNumber, number, "", false};
        else
            cell = {cellText, 0, value, false};
    }
};

struct FakeBook {
    std::vector<std::unique_ptr<FakeSheet>> sheets;
    std::size_t maxSheets = 10;

    FakeSheet& add(const std::string& name) {
        sheets.push_back(std::make_unique<FakeSheet>());
        sheets.back()->name = name;
        return *sheets.back();
    }
};

inline FakeBook& bookOf(Book* book) {
    return *static_cast<FakeBook*>(book);
}
inline FakeSheet& sheetOf(Sheet* sheet) {
    return *static_cast<FakeSheet*>(sheet);
}

/// The least or greatest row or column in use.
template <class Pick>
int bound(Sheet* sheet, bool least, Pick pick) {
    int result = least ? notGiven : 0;
    for (const auto& [place, cell] : sheetOf(sheet).cells) {
        result = least ? std::min(result, pick(place)) : std::max(result, pick(place));
    }
    return result;
}
inline int rowOf(const std::pair<int, int>& place) {
    return place.first;
}
inline int colOf(const std::pair<int, int>& place) {
    return place.second;
}

inline int write(Sheet* sheet, int row, int col, FakeCell cell) {
    if (row < 0 || row >= sheetOf(sheet).writableRows || col < 0 || col > largestColumn) return 0;
    sheetOf(sheet).at(row, col) = std::move(cell);
    return 1;
}

inline const TableOps fakeTableOps = {
    .sheetCount = [](Book* book) { return int(bookOf(book).sheets.size()); },
    .sheetAt = [](Book* book, int i) -> Sheet* {
        auto& sheets = bookOf(book).sheets;
        return i >= 0 && std::size_t(i) < sheets.size() ? sheets[std::size_t(i)].get() : nullptr;
    },
    .addSheet = [](Book* book, const char* name, Sheet*) -> Sheet* {
        if (bookOf(book).sheets.size() >= bookOf(book).maxSheets) return nullptr;
        return &bookOf(book).add(name);
    },
    .sheetName = [](Sheet* sheet) { return sheetOf(sheet).name.c_str(); },
    .nameCount = [](Sheet* sheet) { return int(sheetOf(sheet).names.size()); },
    .nameRange =
        [](Sheet* sheet, int i, int* firstRow, int* lastRow, int* firstCol, int* lastCol) {
            const FakeName& name = sheetOf(sheet).names[std::size_t(i)];
            *firstRow = name.firstRow;
            *lastRow = name.lastRow;
            *firstCol = name.firstCol;
            *lastCol = name.lastCol;
            return name.name.c_str();
        },
    .firstRow = [](Sheet* sheet) { return bound(sheet, true, rowOf); },
    .lastRow = [](Sheet* sheet) { return bound(sheet, false, rowOf); },
    .firstCol = [](Sheet* sheet) { return bound(sheet, true, colOf); },
    .lastCol = [](Sheet* sheet) { return bound(sheet, false, colOf); },
    .cellKind =
        [](Sheet* sheet, int row, int col) {
            const FakeCell* cell = sheetOf(sheet).find(row, col);
            return cell ? cell->kind : int(cellEmpty);
        },
    .cellIsDate =
        [](Sheet* sheet, int row, int col) {
            const FakeCell* cell = sheetOf(sheet).find(row, col);
            return cell && cell->isDate;
        },
    .readBool =
        [](Sheet* sheet, int row, int col, CellFormat**) {
            const FakeCell* cell = sheetOf(sheet).find(row, col);
            return cell ? int(cell->number) : 0;
        },
    .readBoolText =
        [](Sheet* sheet, int row, int col) {
            const FakeCell* cell = sheetOf(sheet).find(row, col);
            return cell && cell->number >= 1 ? "true" : "false";
        },
    .readReal =
        [](Sheet* sheet, int row, int col, CellFormat**) {
            const FakeCell* cell = sheetOf(sheet).find(row, col);
            return cell ? cell->number : 0.0;
        },
    .readText = [](Sheet* sheet, int row, int col, CellFormat**) -> const char* {
        const FakeCell* cell = sheetOf(sheet).find(row, col);
        return cell && cell->kind == cellText ? cell->text.c_str() : nullptr;
    },
    .writeBool =
        [](Sheet* sheet, int row, int col, int value, CellFormat*) {
            return write(sheet, row, col, {cellBoolean, double(value), "", false});
        },
    .writeReal =
        [](Sheet* sheet, int row, int col, CellFormat*, double value) {
            return write(sheet, row, col, {cellNumber, value, "", false});
        },
    .writeText =
        [](Sheet* sheet, int row, int col, const char* text, CellFormat*) {
            return write(sheet, row, col, {cellText, 0, text ? text : "", false});
        },
    .writeBlank = [](Sheet* sheet, int row, int col, CellFormat*) { return write(sheet, row, col, {}); },
    .textToReal =
        [](Sheet* sheet, int row, int col) {
            const FakeCell* cell = sheetOf(sheet).find(row, col);
            return cell ? std::strtod(cell->text.c_str(), nullptr) : 0.0;
        },
    .textToBool =
        [](Sheet* sheet, int row, int col) {
            const FakeCell* cell = sheetOf(sheet).find(row, col);
            return cell && cell->text == "TRUE" ? 1 : 0;
        },
};

/// An open source over a FakeBook, as the drivers make one.
class FakeSource {
public:
    FakeBook book;

    explicit FakeSource(std::uint32_t optionFlags = 0, int bufferSize = defaultBufferSize)
        : _memory(sizeof(DriverContext) + std::size_t(bufferSize)) {
        DriverContext& c = *context();
        c = {};
        c.path = "fake";
        c.ops = &fakeTableOps;
        c.backing = &book;
        c.optionFlags = optionFlags;
        c.bufferSize = bufferSize;
        c.specialValues = &_special;
    }
    DriverContext* context() { return reinterpret_cast<DriverContext*>(_memory.data()); }
    SpecialValues& special() { return _special; }

private:
    std::vector<char> _memory;
    SpecialValues _special;
};

/// The little of a host that labels and base values need. Keeps the messages.
class FakeHost {
public:
    FakeHost() {
        messages().clear();
        api().hostLanguage = [] { return "en"; };
        api().hostParam = [](HostContext*, int code, void* out) {
            if (code == hostParamRealFormat) *static_cast<const char**>(out) = "%.10g";
        };
        api().hostError = keepMessage;
        api().hostFormatReal = [](HostContext*, char* buffer, int size, const char* format, double value) {
            return std::snprintf(buffer, std::size_t(size), format, value);
        };
        api().hostRegisterText = [](HostContext*, const char* text) -> const char* {
            static std::vector<std::unique_ptr<std::string>> texts;
            texts.push_back(std::make_unique<std::string>(text));
            return texts.back()->c_str();
        };
        api().hostValueToText = [](HostContext*, HostType, HostValue value, char* buffer, int size) {
            return std::snprintf(buffer, std::size_t(size), "%*s", value.integer, "text");
        };
        openHost(&api());
    }
    ~FakeHost() { closeHost(); }
    static std::vector<std::string>& messages() {
        static std::vector<std::string> all;
        return all;
    }

private:
    static void keepMessage(HostContext*, const char* format, ...) {
        char text[1024];
        va_list args;
        va_start(args, format);
        std::vsnprintf(text, sizeof text, format, args);
        va_end(args);
        messages().push_back(text);
    }
    static HostApi& api() {
        static HostApi table = {};
        return table;
    }
};

}  // namespace quillet::fake
