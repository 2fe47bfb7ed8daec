#include <clocale>

#include "biff/records/continue_writer.h"
#include "biff/records/ext_string.h"
#include "biff/records/unicode_string.h"
#include "fixture.h"

namespace vellum::test {
namespace {

Bytes wideBytes(std::size_t characters, wchar_t c) {
    Bytes bytes;
    for (std::size_t i = 0; i < characters; ++i) {
        bytes.push_back(static_cast<std::byte>(c));
        bytes.push_back(static_cast<std::byte>(c >> 8));
    }
    return bytes;
}

TEST(XLUnicodeString, WidthChangesAtAContinue) {
    // 10,000 characters: 4110 of two bytes, then 5890 of one.
    const Bytes first = joined({hex("10 27 01"), wideBytes(4110, L'\x4E2D')});
    Stream in(
        joined({record(516, first), record(60, joined({hex("00"), Bytes(5890, std::byte{0xE9})})), record(10, {})}));
    StringPool pool;
    std::uint16_t budget = in->nextRecord()->size;
    const auto string = XLUnicodeString::read(*in, pool, TextForm::withFlags, false, budget);
    EXPECT_EQ(string.view(), std::wstring(4110, L'\x4E2D') + std::wstring(5890, L'\xE9'));
    EXPECT_EQ(budget, 0);
    EXPECT_EQ(string.flags, 1);
    EXPECT_EQ(in->nextRecord()->id, 10);
}

TEST(XLUnicodeString, FormsInBodies) {
    const struct {
        const char* bytes;
        TextForm form;
        bool shortCount;
        std::wstring text;
        const char* saved;
    } cases[] = {
        {"03 00 00 61 62 63", TextForm::withFlags, false, L"abc", "03 00 00 61 62 63"},
        {"02 00 01 61 00 2D 4E", TextForm::withFlags, false, L"a\x4E2D", "02 00 01 61 00 2D 4E"},
        {"00 00", TextForm::withFlags, false, L"", "00 00 00"},
        {"00 00 01", TextForm::withFlags, false, L"", "00 00 01"},
        // Of an older file: saved in the later form.
        {"02 61 E9", TextForm::noFlags, true, L"a\xE9", "02 00 00 61 E9"},
        {"02 00 61 E9", TextForm::noFlags, false, L"a\xE9", "02 00 00 61 E9"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bytes);
        StringPool pool;
        const Bytes bytes = hex(c.bytes);
        Cursor in(bytes);
        const auto string = XLUnicodeString::read(in, pool, c.form, c.shortCount, "Format");
        EXPECT_EQ(string.view(), c.text);
        Sink out;
        string.write(out);
        EXPECT_EQ(Bytes(out.bytes().begin(), out.bytes().end()), hex(c.saved));
        EXPECT_EQ(string.wireSize(), out.size());

        Stream stream(bytes);
        auto budget = static_cast<std::uint16_t>(bytes.size());
        EXPECT_EQ(XLUnicodeString::read(*stream, pool, c.form, c.shortCount, budget).view(), c.text);
        EXPECT_EQ(budget, 0);
        for (std::size_t n = 0; n < bytes.size(); ++n) {
            Cursor cut(std::span<const std::byte>(bytes).first(n));
            const std::string text = textOf([&] { XLUnicodeString::read(cut, pool, c.form, c.shortCount, "Format"); });
            const bool allOfAnEmptyOne = c.text.empty() && n >= 2;
            EXPECT_EQ(text, allOfAnEmptyOne ? "" : "Format size is incorrect") << n;
        }
    }
}

TEST(XLUnicodeString, AnotherRecordWhereTheTextGoesOn) {
    Stream in(joined({record(516, hex("05 00 00 61 62")), record(517, hex("00 63 64 65"))}));
    StringPool pool;
    std::uint16_t budget = in->nextRecord()->size;
    EXPECT_EQ(textOf([&] { XLUnicodeString::read(*in, pool, TextForm::withFlags, false, budget); }),
              "error in XLUnicodeString record #1");
}

TEST(XLUnicodeString, LongTextsReadBackAsWritten) {
    for (const wchar_t c : {L'a', L'\x416'}) {
        for (const std::size_t length : {0U, 4110U, 4111U, 8220U, 8221U, 8222U, 16443U, 16444U, 32767U, 65535U}) {
            SCOPED_TRACE(testing::Message() << length << " of " << int(c));
            const std::wstring text(length, c);
            XLUnicodeString string{static_cast<std::uint16_t>(length), static_cast<std::uint8_t>(c > 255), false, false,
                                   text.c_str()};
            Stream in(written([&](Xls& xls) {
                ContinueWriter out(xls, 519);
                string.write(out);
                out.finish();
                xls.writeRecord(10, {});
            }));
            StringPool pool;
            std::uint16_t budget = in->nextRecord()->size;
            EXPECT_LE(budget, 8224);
            EXPECT_TRUE(XLUnicodeString::read(*in, pool, TextForm::withFlags, false, budget).view() == text);
            EXPECT_EQ(in->nextRecord()->id, 10);
        }
    }
}

TEST(Strings, LimitsOfTheSetters) {
    StringPool pool;
    ShortXLUnicodeString small;
    XLUnicodeString big;
    small.set(std::string(255, 'a').c_str(), pool, true);
    EXPECT_EQ(small.cch, 255);
    EXPECT_EQ(small.flags, 1);  // two bytes, even for plain letters
    EXPECT_EQ(textOf([&] { small.set(std::string(256, 'a').c_str(), pool, true); }),
              "ShortXLUnicodeString: string is too long");
    // Measured in bytes before it is converted: 200 characters of two bytes are too many.
    std::string accents;
    for (int i = 0; i < 200; ++i) accents += "\xC3\xA9";
    EXPECT_EQ(textOf([&] { small.set(accents.c_str(), pool, true); }), "ShortXLUnicodeString: string is too long");
    small.set(accents.substr(0, 254).c_str(), pool, true);
    EXPECT_EQ(small.cch, 127);
    small.set(std::wstring(255, L'\xE9').c_str(), pool, true);
    EXPECT_EQ(small.cch, 255);
    big.set(std::wstring(65535, L'x').c_str(), pool, true);
    EXPECT_EQ(big.cch, 65535);
    EXPECT_EQ(textOf([&] { big.set(std::wstring(65536, L'x').c_str(), pool, true); }), "string is too long");
    EXPECT_EQ(textOf([&] { big.set("a\xFF", pool, true); }), "Invalid UTF-8");
    big.set(static_cast<const char*>(nullptr), pool, true);
    EXPECT_EQ(big.view(), L"");
    big.set(L"a\x1F600", pool, true);
    Sink out;
    big.write(out);
    EXPECT_EQ(Bytes(out.bytes().begin(), out.bytes().end()), hex("02 00 01 61 00 00 F6"));  // low 16 bits
    big.set(std::wstring(256, L'x').c_str(), pool, true);
    big.byteCount = true;
    EXPECT_EQ(textOf([&] { big.write(out); }), "string is too long");
}

TEST(ExtString, PiecesAtEveryRecordBoundary) {
    // Text, two runs and 5 bytes of phonetic data, as one record and cut in two at each place the format allows.
    const Bytes head = hex("04 00 0D 02 00 05 00 00 00");
    const Bytes wide = hex("61 00 62 00 2D 4E 64 00");
    const Bytes tail = hex("01 00 05 00 03 00 06 00 AA BB CC DD EE");
    const auto check = [](Stream& in) {
        StringPool pool;
        std::uint16_t budget = in->nextRecord()->size;
        const ExtString s = ExtString::read(*in, pool, budget);
        EXPECT_EQ(s.view(),
                  L"ab\x4E2D"
                  L"d");
        ASSERT_EQ(s.runs().size(), 2U);
        EXPECT_EQ(s.runs()[1], (ExtStringRun{3, 6}));
        ASSERT_TRUE(s.hasPhonetic());
        EXPECT_EQ(s.format->phonetic->bytes[4], std::byte{0xEE});
        EXPECT_EQ(in->nextRecord()->id, 255);
        EXPECT_FALSE(sameString(s, s));  // phonetic data is never shared
    };
    const Bytes end = record(255, {});
    Stream whole(joined({record(252, joined({head, wide, tail})), end}));
    check(whole);
    for (std::size_t cut = 0; cut <= 8; cut += 2) {
        SCOPED_TRACE(cut);
        const auto at = wide.begin() + static_cast<std::ptrdiff_t>(cut);
        Stream in(
            joined({record(252, joined({head, Bytes(wide.begin(), at)})),
                    cut < 8 ? record(60, joined({hex("01"), Bytes(at, wide.end()), tail})) : record(60, tail), end}));
        check(in);
    }
    for (std::size_t cut = 1; cut < tail.size(); ++cut) {
        SCOPED_TRACE(cut);
        const auto at = tail.begin() + static_cast<std::ptrdiff_t>(cut);
        Stream in(joined(
            {record(252, joined({head, wide, Bytes(tail.begin(), at)})), record(60, Bytes(at, tail.end())), end}));
        check(in);
    }
}

TEST(ExtString, WrittenTablesReadBack) {
    StringPool pool;
    std::vector<ExtString> strings;
    const auto add = [&](std::size_t length, wchar_t c) -> ExtString& {
        ExtString s;
        s.text = pool.copy(std::wstring(length, c));
        s.length = static_cast<std::uint32_t>(length);
        s.flags = c > 255 ? 1 : 0;
        return strings.emplace_back(s);
    };
    for (std::size_t i = 0; i < 3000; ++i) add(i % 40, i % 3 == 0 ? L'\x4E2D' : L'z');
    add(20000, L'\x4E2D');  // three records
    add(30001, L'z');
    for (int i = 0; i < 3000; ++i) add(3, L'r').addRun(L"un", 6, pool);
    Stream in(written([&](Xls& xls) {
        ContinueWriter out(xls, 252);
        for (const ExtString& s : strings) s.write(out);
        out.finish();
        xls.writeRecord(10, {});
    }));
    std::uint16_t budget = in->nextRecord()->size;
    for (const ExtString& s : strings) ASSERT_TRUE(sameString(ExtString::read(*in, pool, budget), s));
    EXPECT_EQ(budget, 0);
    EXPECT_EQ(in->nextRecord()->id, 10);
}

TEST(ExtString, Equality) {
    StringPool pool;
    const auto text = [&](const wchar_t* t) {
        ExtString s;
        s.text = t;
        s.length = static_cast<std::uint32_t>(std::wcslen(t));
        return s;
    };
    ExtString rich = text(L"ab"), other = text(L"ab");
    EXPECT_TRUE(sameString(rich, other));
    rich.addRun(L"c", 5, pool);
    EXPECT_FALSE(sameString(rich, text(L"abc")));  // same text, but plain
    other.addRun(L"c", 6, pool);
    EXPECT_FALSE(sameString(rich, other));
    EXPECT_TRUE(sameString(text(L""), ExtString()));
}

TEST(ExtString, WidthChangesWithinATable) {  // the example of docs/binary-stream.md
    Stream in(hex("FC 00 0D 00  01 00 00 00 01 00 00 00  04 00 00 61 62  3C 00 05 00  01 2D 4E 64 00"));
    StringPool pool;
    std::uint16_t budget = in->nextRecord()->size;
    EXPECT_EQ(in->readInt32(budget), 1U);
    EXPECT_EQ(in->readInt32(budget), 1U);
    const ExtString s = ExtString::read(*in, pool, budget);
    EXPECT_EQ(s.view(),
              L"ab\x4E2D"
              L"d");
    EXPECT_EQ(s.flags, 1);  // only two bytes a character hold all of it
    EXPECT_EQ(budget, 0);
}

TEST(ExtString, TooLittleForItsHead) {
    Stream in(record(252, hex("01 00")));
    StringPool pool;
    std::uint16_t budget = in->nextRecord()->size;
    EXPECT_EQ(textOf([&] { ExtString::read(*in, pool, budget); }), "can't read ExtString: size is incorrect");
}

}  // namespace
}  // namespace vellum::test
