#include "fixture.h"

namespace vellum::test {
namespace {

TEST(CompoundLoad, StreamsOfBothKindsAndBothSectorSizes) {
    for (const unsigned shift : {9U, 12U}) {
        for (const std::size_t size : {1U, 64U, 300U, 4095U, 4096U, 5000U, 20000U}) {
            SCOPED_TRACE(testing::Message() << "shift " << shift << " size " << size);
            auto entries = usualEntries();
            entries[1].bytes = pattern(size);
            Loaded file(makeFile(entries, shift).bytes);
            const Bytes main = file.main();
            ASSERT_GE(main.size(), size);
            EXPECT_EQ(Bytes(main.begin(), main.begin() + static_cast<std::ptrdiff_t>(size)), pattern(size));
            EXPECT_TRUE(file.xls.atEnd());
            file.xls.extractKeptStreams();
        }
    }
}

using Damage = std::function<void(File&)>;
const struct {
    const char* text;
    Damage damage;
} damages[] = {
    {"readHeader: file is corrupt (size < 512 bytes)", [](File& f) { f.cut(511); }},
    {"It is not a xls file. Use the vlCreateXMLBook() for a xlsx file.",
     [](File& f) { f.patch(0, std::uint32_t{0x04034B50}); }},
    {"Xls::readHeader(): _sectorSize can't be 0", [](File& f) { f.patch(30, std::uint16_t{32}); }},
    {"Xls::readHeader(): _miniSectorSize can't be 0", [](File& f) { f.patch(32, std::uint16_t{77}); }},
    {"Xls::readHeader(): file is corrupt (_sectorSize must be 128 or more and hold a mini sector)",
     [](File& f) { f.patch(30, std::uint16_t{6}); }},
    {"Xls::readHeader(): file is corrupt (_sectorSize must be 128 or more and hold a mini sector)",
     [](File& f) { f.patch(32, std::uint16_t{10}); }},
    {"loadDifat: file is corrupt [1]", [](File& f) { f.patch(68, std::uint32_t{1000}).patch(72, std::uint32_t{1}); }},
    {"loadDifat: file is corrupt [2]",
     [](File& f) {
         f.patch(68, static_cast<std::uint32_t>(f.bytes.size() / 512 - 2)).patch(72, std::uint32_t{1});
         f.cut(f.bytes.size() - 4);
     }},
    {"Xls::loadDifat(): difat chain contains more sectors than _header.numDifatSectors (1)",
     [](File& f) { f.patch(68, f.starts[3]).patch(72, std::uint32_t{1}).patch(f.at(f.starts[3]) + 508, 5U); }},
    {"Xls::loadDifat(): difat chain sectors (1) not equal _header.numDifatSectors (2)",
     [](File& f) { f.patch(68, f.starts[3]).patch(72, std::uint32_t{2}).patch(f.at(f.starts[3]) + 508, endOfChain); }},
    {"Xls::loadFat(): extract fat sectors (1) not equal _header.numFatSectors (2)",
     [](File& f) { f.patch(44, std::uint32_t{2}); }},
    {"loadFat: file is corrupt", [](File& f) { f.patch(76, std::uint32_t{1000}); }},
    {"loadMiniFat: error in fat", [](File& f) { f.patch(f.fatAt(f.miniFat), f.miniFat); }},
    {"error in loading minifat", [](File& f) { f.patch(f.fatAt(f.miniFat), f.miniStream); }},
    {"loadMiniFat: file is corrupt", [](File& f) { f.patch(60, std::uint32_t{100}); }},
    {"Xls::loadMiniFat(): file is corrupt", [](File& f) { f.patch(60, std::uint32_t{128}); }},
    {"Xls::loadDir(): sector #128 is not found in _fat", [](File& f) { f.patch(48, std::uint32_t{128}); }},
    {"loadDir: error in fat [1]", [](File& f) { f.patch(f.fatAt(f.dir), f.dir); }},
    {"loadDir: file is corrupt [1]",
     [](File& f) { f.patch(f.fatAt(f.dir), f.miniFat).patch(f.fatAt(f.miniFat), f.dir).patch(60, endOfChain); }},
    {"loadDir: file is corrupt [2]", [](File& f) { f.patch(f.fatAt(f.dir), 100U).patch(f.fatAt(100), endOfChain); }},
    {"Xls::read(): EncryptionInfo section is not found", [](File& f) { f.patch(f.entryAt(1), std::uint16_t{'X'}); }},
    {"Xls::read(): stream is empty", [](File& f) { f.patch(f.entryAt(1) + 116, endOfChain); }},
    {"Xls::read(): sector is out of fat", [](File& f) { f.patch(f.entryAt(1) + 116, 128U); }},
    // A free sector to the very end of the table: no sector in use follows.
    {"Xls::read(): sector is out of fat", [](File& f) { f.patch(f.entryAt(1) + 116, 127U); }},
    // In the middle of the workbook, and of a kept stream.
    {"Xls::read(): sector is out of fat", [](File& f) { f.patch(f.fatAt(f.starts[1] + 3), 4000U); }},
    {"Xls::read(): sector is out of fat", [](File& f) { f.patch(f.fatAt(f.starts[3] + 3), freeSector); }},
    {"Xls::extractKeptStreams(): file is corrupt",
     [](File& f) {
         f.patch(f.entryAt(0) + 120, 5000U)
             .patch(f.entryAt(0) + 116, f.starts[3])
             .patch(f.entryAt(2) + 116, f.starts[3])
             .patch(f.entryAt(2) + 120, 6000U);
     }},
};

TEST(CompoundLoad, TextsOfDamage) {
    for (const auto& c : damages) {
        File file = makeFile(usualEntries());
        c.damage(file);
        EXPECT_EQ(loadText(file.bytes), c.text);
    }
    EXPECT_EQ(loadText(makeFile(usualEntries()).bytes), "");
}

TEST(CompoundLoad, AShortWorkbookLiesInTheMiniStream) {
    // A chain may lead out of its table, and into what lies behind the mini stream.
    auto entries = usualEntries();
    entries[1].bytes = pattern(300);
    for (const std::uint32_t next : {1000U, 120U}) {
        File file = makeFile(entries);
        file.patch(file.at(file.miniFat) + 4, next);
        EXPECT_EQ(loadText(file.bytes), "Xls::read(): sector is out of fat") << next;
    }
    EXPECT_EQ(loadText(makeFile(entries).bytes), "");
}

TEST(CompoundLoad, NoCutAndNoFalseByteOfTheTablesDoesMoreThanThrow) {
    const File sound = makeFile(usualEntries());
    for (std::size_t size = 0; size < sound.bytes.size(); size += 61) loadText(File(sound).cut(size).bytes);
    for (std::size_t at = 0; at < sound.at(sound.miniStream); ++at) {
        for (const unsigned value : {0U, 1U, 0x7FU, 0xFEU, 0xFFU}) {
            loadText(File(sound).patch(at, static_cast<std::uint8_t>(value)).bytes);
        }
    }
}

TEST(CompoundLoad, MainStreamByName) {
    const Bytes right = pattern(5000, 9), wrong = pattern(5000, 8);
    const struct {
        const char* what;
        std::vector<Entry> entries;
    } cases[] = {
        {"older name", {{L"Root Entry", 5, {}, freeSector, freeSector, 1}, {L"Book", 2, right}}},
        {"capitals", {{L"Root Entry", 5, {}, freeSector, freeSector, 1}, {L"WORKBOOK", 2, right}}},
        {"both names",
         {{L"Root Entry", 5, {}, freeSector, freeSector, 1}, {L"Book", 2, wrong, 2}, {L"Workbook", 2, right}}},
        {"one in an embedded object, first in the list",
         {{L"Root Entry", 5, {}, freeSector, freeSector, 3},
          {L"Workbook", 2, wrong},
          {L"MBD0001", 1, {}, freeSector, freeSector, 1},
          {L"Book", 2, right, freeSector, 2}}},
        {"no tree at all", {{L"Root Entry", 5, {}}, {L"Other", 2, wrong}, {L"Workbook", 2, right}}},
        {"a tree in a ring",
         {{L"Root Entry", 5, {}, freeSector, freeSector, 1}, {L"A", 1, {}, 2, 1}, {L"Workbook", 2, right, 1, 2}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bytes main = Loaded(makeFile(c.entries).bytes).main();
        main.resize(right.size());
        EXPECT_TRUE(main == right);
    }
}

TEST(CompoundLoad, StartAtAFreeOrFatSectorMovesForward) {
    for (const std::uint32_t start : {0U, 1U}) {  // the FAT's own sector; a free one
        File file = makeFile(usualEntries());
        if (start == 1) file.patch(file.fatAt(file.starts[1] - 1), freeSector);
        file.patch(file.entryAt(1) + 116, start == 0 ? 0U : file.starts[1] - 1);
        Loaded loaded(file.bytes);
        Bytes main = loaded.main();
        if (start == 0) continue;  // begins at the directory: no text, but no workbook either
        main.resize(5000);
        EXPECT_TRUE(main == pattern(5000));
    }
}

TEST(CompoundLoad, LastSectorMayPassTheEndOfTheFile) {
    auto entries = usualEntries();
    entries.resize(2);
    entries[1].left = entries[1].right = freeSector;
    File file = makeFile(entries);
    const Bytes main = Loaded(file.cut(file.at(file.starts[1]) + 5000).bytes).main();
    EXPECT_TRUE(main == pattern(5000));
}

TEST(CompoundLoad, AChainThatReturnsToItselfEnds) {
    File file = makeFile(usualEntries());
    file.patch(file.fatAt(file.starts[1] + 5), file.starts[1]);
    Loaded loaded(file.bytes);
    EXPECT_LE(loaded.main().size(), file.bytes.size() + 512);
    EXPECT_TRUE(loaded.xls.atEnd());
}

TEST(CompoundLoad, EncryptedPackage) {
    std::vector<Entry> entries = {{L"Root Entry", 5, {}, freeSector, freeSector, 1},
                                  {L"EncryptionInfo", 2, pattern(200), freeSector, 2},
                                  {L"EncryptedPackage", 2, pattern(7000, 4)}};
    Loaded file(makeFile(entries).bytes);
    EXPECT_TRUE(file.xls.isEncryptedPackage());
    EXPECT_EQ(file.xls.openEncryptedPackage(), 7000U);
    Bytes main = file.main();
    main.resize(7000);
    EXPECT_TRUE(main == pattern(7000, 4));

    entries[2].name = L"Other";
    Loaded without(makeFile(entries).bytes);
    EXPECT_EQ(textOf([&] { without.xls.openEncryptedPackage(); }),
              "Xls::read(): EncryptedPackage section is not found");
    entries[2] = {L"EncryptedPackage", 2, {}};
    Loaded empty(makeFile(entries).bytes);
    EXPECT_EQ(textOf([&] { empty.xls.openEncryptedPackage(); }), "Xls::read(): encryptedPackage stream is empty");
}

TEST(DirEntry, Names) {
    EXPECT_EQ(textOf([] { DirEntry(nullptr, 2, 0); }), "DirEntry::DirEntry(): incorrect name");
    EXPECT_EQ(textOf([] { DirEntry(std::wstring(32, L'a').c_str(), 2, 0); }),
              "DirEntry::DirEntry(): newName is too big (length must be less 32)");
    const DirEntry entry(std::wstring(31, L'a').c_str(), 2, 0);
    EXPECT_EQ(entry.length, 64);
    EXPECT_TRUE(entry.isNamed(std::wstring(31, L'A')));
    EXPECT_FALSE(entry.isNamed(std::wstring(30, L'A')));
    EXPECT_FALSE(entry.isNamed(std::wstring(32, L'A')));
}

}  // namespace
}  // namespace vellum::test
