// apply_operations [--load FILE] [--save FILE]: runs operations of sheets on a workbook, for checks.
//
// Without --load the book is new, with one sheet. Each line of the standard input is an operation, such as
// {"op":"addMerge","sheet":0,"args":[0,1,0,1]}; a format is the index of one of the book's, or null. Arguments that an
// operation gives values through are left out. Operations of the sheet's filter go by the same form; those of one of
// its columns have the column's number in front. Each line of the output has the result, those values, and the book's
// text. Exit status 1 when a line is no operation or a file cannot be read or written.
#include <cmath>
#include <cstdio>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "cli/workbook/book_file.h"
#include "engine/api/iautofilter.h"
#include "engine/api/ibook.h"
#include "engine/api/ifiltercolumn.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "tools/json_line.h"

namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;
using Filter = vellum::IAutoFilterT<char>;
using FilterColumn = vellum::IFilterColumnT<char>;
using tools::Scalar;

std::string shown(bool value) {
    return value ? "true" : "false";
}
std::string shown(int value) {
    return std::to_string(value);
}
std::string shown(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return std::isfinite(value) ? text : "null";
}
std::string shown(const char* value) {
    return value ? tools::jsonText(value) : "null";
}
template <class T>
std::string shown(T* value) {
    return value ? "\"object\"" : "null";
}

/// The arguments of one call: what is given is taken in order, what is asked for finds room here.
class Call {
public:
    Call(Book& book, const tools::Scalars& given) : _book(book), _given(given) {}

    template <class T>
    T argument() {
        if constexpr (std::is_same_v<T, int*> || std::is_same_v<T, bool*>) {
            using Value = std::remove_pointer_t<T>;
            auto room = std::make_shared<Value>();
            _results.push_back([room] { return shown(*room); });
            return room.get();
        } else if constexpr (std::is_pointer_v<std::remove_pointer_t<T>>) {
            return nullptr;  // the format of a cell is not asked for
        } else {
            if (_next == _given.size()) throw std::runtime_error("too few arguments");
            return taken<T>(_given[_next++]);
        }
    }
    std::string results() const {
        std::string text;
        for (const auto& result : _results) {
            if (!text.empty()) text += ',';
            text += result();
        }
        return text;
    }

private:
    template <class T>
    T taken(const Scalar& value) {
        if constexpr (std::is_same_v<T, bool>) {
            return std::get<bool>(value);
        } else if constexpr (std::is_arithmetic_v<T>) {
            return static_cast<T>(std::get<double>(value));
        } else if constexpr (std::is_same_v<T, const char*>) {
            return std::holds_alternative<std::string>(value) ? std::get<std::string>(value).c_str() : nullptr;
        } else if constexpr (std::is_same_v<T, Sheet::Format*>) {
            return std::holds_alternative<double>(value) ? _book.formatAt(static_cast<int>(std::get<double>(value)))
                                                         : nullptr;
        } else {
            return nullptr;
        }
    }

    Book& _book;
    const tools::Scalars& _given;
    std::size_t _next = 0;
    std::vector<std::function<std::string()>> _results;
};

template <class Object, class Result, class... Args>
std::string run(Result (Object::*operation)(Args...), Book& book, Object& object, const tools::Scalars& given) {
    Call call(book, given);
    std::tuple<Args...> arguments{call.argument<Args>()...};
    const std::string result =
        shown(std::apply([&](auto... values) { return (object.*operation)(values...); }, arguments));
    std::string line = "\"result\":";
    line.append(result).append(",\"out\":[").append(call.results()).append("]");
    return line;
}

using Runner = std::string (*)(Book&, Sheet&, const tools::Scalars&);
template <auto operation>
constexpr Runner runner =
    [](Book& book, Sheet& sheet, const tools::Scalars& given) { return run(operation, book, sheet, given); };

/// Of the sheet's filter, which is made when there is none.
template <auto operation>
constexpr Runner filterRunner = [](Book& book, Sheet& sheet, const tools::Scalars& given) {
    return run(operation, book, *sheet.filterObject(), given);
};

/// Of the filter's column that the first argument names.
template <auto operation>
constexpr Runner columnRunner = [](Book& book, Sheet& sheet, const tools::Scalars& given) {
    const tools::Scalars rest(given.begin() + 1, given.end());
    auto* const column = sheet.filterObject()->filterColumn(static_cast<int>(std::get<double>(given.at(0))));
    return column != nullptr ? run(operation, book, *column, rest) : std::string("\"result\":null,\"out\":[]");
};

const std::map<std::string, Runner, std::less<>> operations = {
#define OPERATION(name) \
    { #name, runner < &Sheet::name> }
#include "tools/sheet_operations.inc"
#undef OPERATION
    {"setFilterRange", filterRunner<&Filter::setFilterRange>},
    {"setSort", filterRunner<&Filter::setSort>},
    {"addSort", filterRunner<&Filter::addSort>},
    {"addValueFilter", columnRunner<&FilterColumn::addValueFilter>},
    {"setTop10", columnRunner<&FilterColumn::setTop10>},
    {"setCustomFilter", columnRunner<&FilterColumn::setCustomFilter>},
};

int fail(const std::string& what) {
    std::fprintf(stderr, "apply_operations: %s\n", what.c_str());
    return 1;
}

int applyLines(Book& book) {
    std::string line;
    while (std::getline(std::cin, line)) {
        if (line.empty()) continue;
        auto members = tools::readJsonLine(line);
        const std::string name = std::get<std::string>(members.at("op").at(0));
        const int index = members.count("sheet") != 0 ? static_cast<int>(std::get<double>(members["sheet"].at(0))) : 0;
        const auto operation = operations.find(name);
        Sheet* const sheet = book.getSheet(index);
        if (operation == operations.end() || !sheet) return fail("no such operation or sheet: " + line);
        const std::string result = operation->second(book, *sheet, members["args"]);
        std::cout << "{\"op\":\"" << name << "\"," << result << ",\"error\":" << tools::jsonText(book.errorMessage())
                  << "}\n";
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::string load, save;
    for (int i = 1; i + 1 < argc; i += 2) (std::string_view(argv[i]) == "--load" ? load : save) = argv[i + 1];
    const bool binary = (load.empty() ? save : load).ends_with(".xls");
    const cli::BookPtr book(binary ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>());
    book->setLocale("UTF-8");
    if (load.empty()) {
        book->addSheet("Sheet1");
    } else if (!book->loadFile(load.c_str())) {
        return fail(load + ": " + book->errorMessage());
    }
    book->setLocale("UTF-8");
    try {
        if (const int status = applyLines(*book)) return status;
    } catch (const std::exception& e) {
        return fail(e.what());
    }
    if (!save.empty() && !book->saveFile(save.c_str())) return fail(save + ": " + book->errorMessage());
    return 0;
}
