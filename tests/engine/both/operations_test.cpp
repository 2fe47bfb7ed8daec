// Every operation of every interface, called with nothing in hand: what is not built says so, gives the failure value
// of its line in the interface, and stands in docs/status.md.
#include "tests/engine/both/operations.h"

#include <fstream>
#include <limits>
#include <map>
#include <regex>
#include <set>

#include "tests/engine/both/engines.h"

namespace vellum {
namespace {

constexpr const char* notBuilt = "function is not available yet";

std::string fileText(const std::string& name) {
    std::ostringstream content;
    content << std::ifstream(std::string(QUILLET_SOURCE_DIR) + "/" + name).rdbuf();
    return content.str();
}

/// Failure values that are not those of the operation's type.
const std::map<std::string, std::string> ownFailureValues = {
    {"columnWidth", "-1"},     {"rowHeight", "-1"},         {"packColor", "32767"},        {"pictureAt", "255"},
    {"readError", "255"},      {"newCustomNumFormat", "0"}, {"sheetKindAt", "-1"},         {"calculationMode", "1"},
    {"activeSheetIndex", "0"}, {"visibilityState", "0"},    {"defaultRowHeightValue", "0"}};

bool isFailureValue(const std::string& operation, const std::string& result) {
    const auto own = ownFailureValues.find(operation);
    if (own != ownFailureValues.end()) return result == own->second;
    return result.empty() || result == "null" || result == "false" || result == "0" || result == "-1";
}

class Operations : public EachEngine {
protected:
    /// Calls each operation of an object of a book of its own; `make` answers null when there is no such object yet.
    template <class Object, class Make>
    void callAll(Make&& make) {
        for (const auto& operation : operationsOf<Object>()) {
            const auto own = createBook(GetParam());
            own->setLocale("UTF-8");
            Object* const object = make(*own);
            if (object == nullptr) {
                if (own->errorMessage() == std::string(notBuilt)) missing.insert(operation.name);
                continue;
            }
            const std::string result = operation.call(*object);
            if (own->errorMessage() != std::string(notBuilt)) continue;
            missing.insert(operation.name);
            if (!isFailureValue(operation.name, result)) ADD_FAILURE() << operation.name << " gives " << result;
        }
    }
    void callAll() {
        const auto sheet = [](IBookT<char>& own) { return own.addSheet("S"); };
        callAll<IBookT<char>>([&](IBookT<char>& own) { return sheet(own), &own; });
        callAll<ISheetT<char>>(sheet);
        callAll<IFormatT<char>>([](IBookT<char>& own) { return own.newFormat(); });
        callAll<IFontT<char>>([](IBookT<char>& own) { return own.newFont(); });
        callAll<IRichStringT<char>>([](IBookT<char>& own) { return own.newRichString(); });
        callAll<IAutoFilterT<char>>([&](IBookT<char>& own) { return sheet(own)->filterObject(); });
        callAll<IFilterColumnT<char>>([&](IBookT<char>& own) -> IFilterColumnT<char>* {
            IAutoFilterT<char>* const filter = sheet(own)->filterObject();
            if (filter == nullptr || !filter->setFilterRange(0, 9, 0, 3)) return nullptr;
            return filter->filterColumn(0);
        });
    }

    std::set<std::string> missing;
};
INSTANTIATE_FOR_EACH_ENGINE(Operations);

/// The operations that docs/status.md lists for the files of an engine.
std::set<std::string> saidToBeMissing(const std::string& extension) {
    const std::string status = fileText("docs/status.md");
    const std::size_t section = status.find("## Operations that are not there yet");
    const std::size_t from = status.find("or " + extension + " files:", section);
    std::set<std::string> names;
    if (section == std::string::npos || from == std::string::npos) return names;
    const std::size_t end = std::min(status.find("\nFor .", from), status.find("\n## ", from));
    const std::string list = status.substr(from, end - from);
    const std::regex name("`(\\w+)`");
    for (std::sregex_iterator at(list.begin(), list.end(), name), last; at != last; ++at) names.insert((*at)[1]);
    return names;
}

TEST_P(Operations, ThatAreMissingStandInTheStatus) {
    callAll();
    EXPECT_EQ(missing, saidToBeMissing(isBinary() ? ".xls" : ".xlsx"))
        << "docs/status.md lists what says \"" << notBuilt << '"';
}

/// Calls each setter of an object of a book of its own, on which another operation has failed, with texts or without.
/// Answers the names of those that succeeded.
template <class Object, class Make>
std::set<std::string> expectOkAfterSetters(Engine engine, Make&& make) {
    std::set<std::string> succeededOnes;
    for (const char* const text : {static_cast<const char*>(nullptr), "A1"}) {
        for (const auto& operation : operationsOf<Object>()) {
            const std::string name = operation.name;
            const auto begins = [&](const char* verb) { return name.starts_with(verb); };
            if (!begins("set") && !begins("write") && !begins("add") && !begins("remove") && !begins("clear")) continue;
            const auto own = createBook(engine);
            own->setLocale("UTF-8");
            Object* const object = make(*own);
            if (object == nullptr) continue;
            own->getSheet(99);
            const std::string result = operation.call(*object, {0}, text);
            const bool succeeded = result.empty() || !isFailureValue(name, result);  // without a result none can fail
            EXPECT_EQ(succeeded, own->errorMessage() == std::string("ok")) << name << ": " << own->errorMessage();
            if (succeeded) succeededOnes.insert(name);
        }
    }
    return succeededOnes;
}

TEST_P(Operations, ThatSucceedLeaveOk) {
    const auto sheet = [](IBookT<char>& own) { return own.addSheet("S"); };
    expectOkAfterSetters<IBookT<char>>(GetParam(), [&](IBookT<char>& own) { return sheet(own), &own; });
    const auto setters = expectOkAfterSetters<ISheetT<char>>(GetParam(), sheet);
    for (const char* const withText :
         {"writeString", "writeFormula", "writeFormulaNumber", "writeFormulaText", "writeFormulaBoolean",
          "setHeaderText", "setFooterText", "setNamedRangeByName", "addHyperlink", "setSheetName", "setProtected"}) {
        EXPECT_TRUE(setters.contains(withText)) << withText;
    }
    expectOkAfterSetters<IFormatT<char>>(GetParam(), [](IBookT<char>& own) { return own.newFormat(); });
    expectOkAfterSetters<IFontT<char>>(GetParam(), [](IBookT<char>& own) { return own.newFont(); });
    expectOkAfterSetters<IRichStringT<char>>(GetParam(), [](IBookT<char>& own) { return own.newRichString(); });
}

// Whoever asks for one value of several need not take the others.
TEST_P(Operations, ThatGiveValuesTakeNullForThem) {
    auto* const sheet = book->addSheet("S");
    ASSERT_TRUE(sheet->writeNumber(0, 0, 1) && sheet->writeFormula(0, 1, "A1") && sheet->writeString(0, 2, "text"));
    ASSERT_TRUE(sheet->writeBool(0, 3, true) && sheet->addMerge(2, 3, 2, 3) && sheet->splitAt(1, 1));
    ASSERT_TRUE(sheet->addHyperlink("http://a/", 5, 6, 5, 6) && sheet->setPrintFitPages(2, 3));
    ASSERT_TRUE(sheet->setPrintAreaRange(0, 9, 0, 9) && sheet->setRepeatRows(0, 1) && sheet->setRepeatColumns(0, 1));
    ASSERT_TRUE(sheet->setNamedRangeByName("name", 1, 2, 1, 2)) << book->errorMessage();
    const auto says = [&](bool succeeded, const char* what) {
        EXPECT_TRUE(succeeded) << what;
        EXPECT_STREQ(book->errorMessage(), "ok") << what;
    };
    says(sheet->readNumber(0, 0, nullptr) == 1, "readNumber");
    says(sheet->readFormula(0, 1, nullptr) != nullptr, "readFormula");
    says(sheet->readString(0, 2, nullptr) != nullptr, "readString");
    says(sheet->readBool(0, 3, nullptr), "readBool");
    says(sheet->mergeAt(2, 2, nullptr, nullptr, nullptr, nullptr), "mergeAt");
    says(sheet->mergeByIndex(0, nullptr, nullptr, nullptr, nullptr), "mergeByIndex");
    says(sheet->splitPosition(nullptr, nullptr), "splitPosition");
    says(sheet->hyperlinkAt(0, nullptr, nullptr, nullptr, nullptr) != nullptr, "hyperlinkAt");
    says(sheet->printFitPages(nullptr, nullptr), "printFitPages");
    says(sheet->printAreaRange(nullptr, nullptr, nullptr, nullptr), "printAreaRange");
    says(sheet->repeatRows(nullptr, nullptr), "repeatRows");
    says(sheet->repeatColumns(nullptr, nullptr), "repeatColumns");
    says(sheet->namedRangeByName("name", nullptr, nullptr, nullptr, nullptr, -2, nullptr), "namedRangeByName");
    ASSERT_GT(sheet->namedRangeCount(), 0);
    says(sheet->namedRange(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) != nullptr, "namedRange");
    sheet->topLeftCell(nullptr, nullptr);
    sheet->parseCellAddress("$B$3", nullptr, nullptr, nullptr, nullptr);
    says(true, "parseCellAddress");
}

template <class Object>
void callEach(Object* object, const Numbers& numbers) {
    for (const auto& operation : operationsOf<Object>()) operation.call(*object, numbers);
}

// Whatever numbers come with null texts, the book stays one that is saved and loaded.
TEST_P(Operations, TakeAnyNumbers) {
    constexpr int least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    const Numbers patterns[] = {{-1},    {most},  {least},    {0, most},   {most, 0},
                                {-1, 3}, {3, -1}, {0, 65535}, {2, 5, most}};
    for (const Numbers& numbers : patterns) {
        SCOPED_TRACE(testing::PrintToString(numbers));
        book = createBook(GetParam());
        book->setLocale("UTF-8");
        for (const char* const name : {"A", "B"}) {
            auto* const sheet = book->addSheet(name);
            for (int i = 0; i < 12; ++i) sheet->writeNumber(i, i % 5, i);
            sheet->addMerge(2, 3, 2, 3);
            sheet->setNamedRangeByName("n", 1, 2, 1, 2);
            callEach(sheet, numbers);
            if (auto* const filter = sheet->filterObject()) {
                filter->setFilterRange(0, 9, 0, 3);
                if (auto* const column = filter->filterColumn(0)) callEach(column, numbers);
                callEach(filter, numbers);
                sheet->applyFilter();
            }
            callEach(sheet, numbers);
        }
        callEach(book->newFormat(), numbers);
        callEach(book->newFont(), numbers);
        ASSERT_NE(reloaded()->getSheet(0), nullptr);
        callEach(book.get(), numbers);  // a load that fails leaves nothing to save
    }
}

/// The lists of operations.h are complete.
template <class Object>
void compareWithHeader(const std::string& header) {
    const std::string text = fileText("engine/api/" + header);
    const std::string interface = text.substr(0, text.find("virtual ~"));
    std::set<std::string> declared, listed;
    const std::regex operation(R"(virtual [^;(]*?(\w+)\()");
    for (std::sregex_iterator at(interface.begin(), interface.end(), operation), end; at != end; ++at) {
        declared.insert((*at)[1]);
    }
    for (const auto& each : operationsOf<Object>()) listed.insert(each.name);
    declared.erase("release");
    EXPECT_EQ(listed, declared) << header;
}

TEST(OperationLists, AreThoseOfTheInterfaces) {
    compareWithHeader<IBookT<char>>("ibook.h");
    compareWithHeader<ISheetT<char>>("isheet.h");
    compareWithHeader<IFormatT<char>>("iformat.h");
    compareWithHeader<IFontT<char>>("ifont.h");
    compareWithHeader<IRichStringT<char>>("irichstring.h");
    compareWithHeader<IAutoFilterT<char>>("iautofilter.h");
    compareWithHeader<IFilterColumnT<char>>("ifiltercolumn.h");
}

}  // namespace
}  // namespace vellum
