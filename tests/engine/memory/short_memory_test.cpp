// Memory that runs short at any allocation of loading, changing and saving: an operation fails with its failure value
// and a text, the process goes on, and what is left of the book can be used. Each case is a process of its own.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "engine/api/ibook_tries.h"
#include "engine/api/ifont.h"
#include "engine/api/iformat.h"
#include "engine/api/irichstring.h"
#include "tests/engine/both/engines.h"
#include "tests/engine/memory/failing_allocator.h"

namespace vellum {
namespace {

using Bytes = std::vector<char>;

// How a case ended; anything else is a signal, or an assertion of the allocator's.
enum Outcome : int { untouched = 10, refused, silent, spoiled, escaped, triedAgain };

// Text, numbers, formats, formulas and features: something of each structure.
bool change(IBookT<char>& book) {
    ISheetT<char>* const sheet = book.getSheet(0);
    if (sheet == nullptr) return false;
    bool done = true;
    for (int row = 0; row < 40; ++row) {
        char text[64];  // the test itself allocates nothing
        std::snprintf(text, sizeof text, "a text of some length, number %d", row % 30);
        done = sheet->writeString(row, 0, text) && sheet->writeNumber(row, 1, row * 0.37) && done;
    }
    IFormatT<char>* const format = book.newFormat();
    IFontT<char>* const font = book.newFont();
    done = format != nullptr && font != nullptr && font->setName("Courier New") && format->setFont(font) && done;
    const int number = book.newCustomNumFormat("0.0 \"units\"");
    if (format != nullptr) format->setNumFormat(number);
    done = number != 0 && sheet->writeNumber(3, 3, 5, format) && done;
    done = sheet->writeFormula(4, 3, "SUM(B1:B9)*2+IF(A1=\"x\",1,2)") && done;
    done = sheet->setRow(5, 30) && sheet->setColumn(1, 2, 20) && sheet->addMerge(10, 12, 4, 6) && done;
    done = sheet->addHyperlink("http://a.test/", 2, 2, 2, 2) && sheet->setNamedRangeByName("area", 0, 9, 0, 1) && done;
    done = sheet->setHeaderText("&Ltop", 0.5) && sheet->insertRows(1, 2) && sheet->copyCell(0, 0, 9, 9) && done;
    ISheetT<char>* const copy = book.addSheet("Copy", sheet);
    IRichStringT<char>* const rich = book.newRichString();
    done = copy != nullptr && rich != nullptr && rich->addRun("some ", font) && rich->addRun("text", font) &&
           sheet->writeRichText(20, 0, rich) && done;
    return done;
}

BookPtr<char> newBook(Engine engine) {
    BookPtr<char> book = createBook(engine);
    book->setLocale("UTF-8");
    return book;
}

Bytes savedBytes(IBookT<char>& book) {
    const char* data = nullptr;
    std::size_t size = 0;
    return book.saveMemory(&data, &size) ? Bytes(data, data + size) : Bytes();
}

bool loads(Engine engine, const Bytes& file) {
    const BookPtr<char> book = newBook(engine);
    return book->loadMemory(file.data(), file.size()) && book->getSheet(0) != nullptr;
}

/// A step of a book's life that is run with an allocation failing.
struct Step {
    const char* name;
    bool (*run)(IBookT<char>& book, const Bytes& file);
    bool needsLoad;
};
const Step steps[] = {
    {"load", [](IBookT<char>& book, const Bytes& file) { return book.loadMemory(file.data(), file.size()); }, false},
    {"change", [](IBookT<char>& book, const Bytes&) { return change(book); }, true},
    {"save", [](IBookT<char>& book, const Bytes&) { return book.saveMemory(nullptr, nullptr); }, true},
};

class ShortMemory : public testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        const BookPtr<char> book = newBook(GetParam());
        ASSERT_NE(book->addSheet("S"), nullptr);
        ASSERT_TRUE(change(*book)) << book->errorMessage();
        file = savedBytes(*book);
        ASSERT_TRUE(loads(GetParam(), file));
    }

    /// In a child: the step with its `number`-th allocation failing, and whether the book is sound afterwards.
    int runCase(const Step& step, long number) const {
        const BookPtr<char> book = newBook(GetParam());
        if (step.needsLoad && !book->loadMemory(file.data(), file.size())) return spoiled;
        failing::failAt(number);
        const bool done = step.run(*book, file);
        const bool reached = failing::allocations() >= number;
        failing::failAt(0);
        if (!reached) return done ? untouched : spoiled;
        if (!done && !step.needsLoad && book->sheetCount() != 0) return spoiled;  // half a book
        if (!done && std::strcmp(step.name, "change") != 0 && std::strcmp(book->errorMessage(), "ok") == 0)
            return silent;
        // Want of memory tells nothing of a file's dialect.
        auto* const tries = dynamic_cast<IBookTries*>(book.get());
        if (!done && !step.needsLoad && tries != nullptr && *tries->firstTryText() != '\0') return triedAgain;
        // A file can be loaded again; what is there can be written, and is a workbook.
        if (!done && !step.needsLoad && !book->loadMemory(file.data(), file.size())) return spoiled;
        book->getSheet(0)->readString(0, 0);
        if (!book->getSheet(0)->writeString(0, 0, "afterwards")) return spoiled;
        return loads(GetParam(), savedBytes(*book)) ? refused : spoiled;
    }

    int outcomeOf(const Step& step, long number) const {
        const pid_t child = fork();
        if (child == 0) {
            try {
                _exit(runCase(step, number));
            } catch (...) {
                _exit(escaped);
            }
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    long allocationsOf(const Step& step) const {
        const BookPtr<char> book = newBook(GetParam());
        if (step.needsLoad) book->loadMemory(file.data(), file.size());
        failing::failAt(0);
        step.run(*book, file);
        return failing::allocations();
    }

    Bytes file;
};
INSTANTIATE_TEST_SUITE_P(Of, ShortMemory, testing::Values(Engine::binary, Engine::openXml),
                         [](const auto& engine) { return engine.param == Engine::binary ? "xls" : "xlsx"; });

// The first allocations one by one, of the others a sample.
TEST_P(ShortMemory, AnyAllocationMayFail) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    const long oneByOne = 20, samples = 40;  // a process takes long to begin
#else
    const long oneByOne = 60, samples = 140;
#endif
    for (const Step& step : steps) {
        const long total = allocationsOf(step);
        const long stride = std::max(1L, (total - oneByOne) / samples);
        std::string bad;
        for (long number = 1; number <= total; number += number < oneByOne ? 1 : stride) {
            const int outcome = outcomeOf(step, number);
            if (outcome == refused || outcome == untouched) continue;
            const char* const what = outcome == silent       ? "fails without a text"
                                     : outcome == spoiled    ? "leaves a book that cannot be used"
                                     : outcome == escaped    ? "leaves by an exception"
                                     : outcome == triedAgain ? "counts as the other dialect"
                                                             : "ends the process";
            bad += "\nallocation " + std::to_string(number) + " of " + std::to_string(total) + " " + what + " (" +
                   std::to_string(outcome) + ")";
        }
        EXPECT_EQ(bad, "") << step.name;
    }
}

// A small sheet of a binary file is kept as its bytes, and made again by whoever asks first.
TEST(ShortMemoryOfSmallSheets, WhoAsksFirstFailsAndTheNextOneDoesNot) {
    const BookPtr<char> made = newBook(Engine::binary);
    for (const char* const name : {"S", "T"}) ASSERT_TRUE(made->addSheet(name)->writeNumber(2, 3, 7));
    const Bytes file = savedBytes(*made);
    using Sheet = ISheetT<char>;
    const struct {
        const char* name;
        void (*ask)(IBookT<char>& book, Sheet& sheet);
    } cases[] = {
        {"cellFrom",
         [](IBookT<char>&, Sheet& sheet) {
             int row = 0, col = 0;
             dynamic_cast<ISheetCells&>(sheet).cellFrom(&row, &col);
         }},
        {"readNumber", [](IBookT<char>&, Sheet& sheet) { sheet.readNumber(2, 3); }},
        {"lastRow", [](IBookT<char>&, Sheet& sheet) { sheet.lastRow(); }},
        {"setZoomPercent", [](IBookT<char>&, Sheet& sheet) { sheet.setZoomPercent(50); }},
        {"removeSheet", [](IBookT<char>& book, Sheet&) { book.removeSheet(1); }},
        {"addSheet", [](IBookT<char>& book, Sheet& sheet) { book.addSheet("C", &sheet); }},
    };
    for (const auto& c : cases) {
        bool failed = false, done = false;
        for (long number = 1; !done; ++number) {
            SCOPED_TRACE(testing::Message() << c.name << ", allocation " << number);
            const BookPtr<char> book = newBook(Engine::binary);
            ASSERT_TRUE(book->loadMemory(file.data(), file.size()));
            Sheet& sheet = *book->getSheet(0);
            failing::failAt(number);
            bool escapes = false;
            try {
                c.ask(*book, sheet);
            } catch (...) {
                escapes = true;
            }
            done = failing::allocations() < number;
            failing::failAt(0);
            failed = failed || !done;
            ASSERT_FALSE(escapes);
            ASSERT_EQ(sheet.readNumber(2, 3), 7) << book->errorMessage();
            ASSERT_TRUE(loads(Engine::binary, savedBytes(*book)));
        }
        EXPECT_TRUE(failed) << c.name << " finds the sheet open";
    }
}

}  // namespace
}  // namespace vellum
