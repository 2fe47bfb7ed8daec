#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace vellum {

template <class CharT>
struct Release {
    void operator()(IBookT<CharT>* book) const { book->release(); }
};
template <class CharT>
using BookPtr = std::unique_ptr<IBookT<CharT>, Release<CharT>>;

/// Which engine a test asks. Skipped where the engine is not linked.
enum class Engine { binary, openXml };

template <class CharT = char>
BookPtr<CharT> createBook(Engine engine) {
    return BookPtr<CharT>(engine == Engine::binary ? vlCreateBook<CharT>() : vlCreateXMLBook<CharT>());
}

inline void PrintTo(Engine engine, std::ostream* out) {
    *out << (engine == Engine::binary ? "xls" : "xlsx");
}

class EachEngine : public testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        book = createBook(GetParam());
        if (!book) FAIL() << "this engine is not linked";
        ASSERT_TRUE(book->setLocale("UTF-8"));
    }

    bool isBinary() const { return GetParam() == Engine::binary; }
    int lastPossibleRow() const { return isBinary() ? 65535 : 1048575; }
    int lastPossibleCol() const { return isBinary() ? 255 : 16383; }
    std::string error() const { return book->errorMessage(); }

    /// The book as it comes back from a save.
    BookPtr<char> reloaded() {
        const char* data = nullptr;
        std::size_t size = 0;
        EXPECT_TRUE(book->saveMemory(&data, &size)) << error();
        const std::vector<char> bytes(data, data + size);
        BookPtr<char> loaded = createBook(GetParam());
        loaded->setLocale("UTF-8");
        EXPECT_TRUE(loaded->loadMemory(bytes.data(), bytes.size())) << loaded->errorMessage();
        return loaded;
    }

    BookPtr<char> book;
};

#define INSTANTIATE_FOR_EACH_ENGINE(Suite)                                                \
    INSTANTIATE_TEST_SUITE_P(Of, Suite, testing::Values(Engine::binary, Engine::openXml), \
                             [](const auto& engine) { return engine.param == Engine::binary ? "xls" : "xlsx"; })

}  // namespace vellum
