#include "fixture.h"

namespace vellum::test {
namespace {

std::uint32_t u32(const Bytes& bytes, std::size_t at) {
    return loadLe<std::uint32_t>(bytes.data() + at);
}

TEST(CompoundClose, AShortStreamIsPaddedToTheCutoff) {
    Saving saving;
    saving.xls.writeBytes(pattern(100));
    const Bytes file = saving.finish();
    // Header, 8 sectors of stream, F = 1 + 1 + 1, one sector of directory.
    ASSERT_EQ(file.size(), 512U * (1 + 8 + 3 + 1));
    EXPECT_EQ(Bytes(file.begin(), file.begin() + 76),
              hex("D0CF11E0A1B11AE1 00000000000000000000000000000000 3E00 0300 FEFF 0900 0600 000000000000 00000000"
                  "03000000 0B000000 00000000 00100000 FEFFFFFF 00000000 FEFFFFFF 00000000"));
    EXPECT_EQ(u32(file, 76), 8U);
    EXPECT_EQ(u32(file, 84), 10U);
    EXPECT_EQ(u32(file, 88), freeSector);
    const std::size_t fat = 512 * 9;
    for (std::uint32_t s = 0; s < 13; ++s) {
        const std::uint32_t expected = s < 7 ? s + 1 : s == 7 ? endOfChain : s < 11 ? fatSector : endOfChain;
        EXPECT_EQ(u32(file, fat + 4 * s), s < 12 ? expected : freeSector) << "sector " << s;
    }
    const std::size_t entry = 512 * 12 + 128;
    EXPECT_EQ(u32(file, entry + 116), 0U);
    EXPECT_EQ(u32(file, entry + 120), 4096U);
    Bytes main = Loaded(file).main();
    main.resize(100);
    EXPECT_EQ(main, pattern(100));
}

// The sums that the layout is made of, for streams that need no, one and two sectors of DIFAT.
TEST(CompoundClose, SizesOfTheTables) {
    const struct {
        std::uint32_t sectors, fat, difat;
    } cases[] = {
        {8, 3, 0}, {13000, 104, 0}, {13695, 109, 0}, {13696, 110, 1}, {29695, 235, 1}, {29696, 236, 1}, {29824, 237, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.sectors);
        Saving saving;
        const Bytes content = pattern(std::size_t{c.sectors} * 512);
        saving.xls.writeBytes(content);
        const Bytes file = saving.finish();
        EXPECT_EQ(u32(file, 44), c.fat);
        EXPECT_EQ(u32(file, 72), c.difat);
        EXPECT_EQ(u32(file, 68), c.difat == 0 ? endOfChain : c.sectors);
        EXPECT_EQ(u32(file, 48), c.sectors + c.difat + c.fat);
        ASSERT_EQ(file.size(), 512U * (1 + c.sectors + c.difat + c.fat + 1));
        for (std::uint32_t i = 0; i < c.difat; ++i) {
            const std::size_t sector = 512 * (c.sectors + 1 + i);
            EXPECT_EQ(u32(file, sector), c.sectors + c.difat + 109 + i * 127);
            EXPECT_EQ(u32(file, sector + 508), i + 1 < c.difat ? c.sectors + i + 1 : endOfChain);
        }
        Loaded loaded(file);
        EXPECT_TRUE(loaded.main() == content);
        loaded.xls.extractKeptStreams();
    }
}

TEST(CompoundClose, LoadAndSaveKeepsStreamsDirectoryAndMiniStream) {
    for (const unsigned shift : {9U, 12U}) {
        SCOPED_TRACE(shift);
        auto entries = usualEntries();
        entries.push_back({L"Storage", DirEntry::storage, {}, freeSector, freeSector, 5});
        entries.push_back({L"Inner", DirEntry::stream, pattern(40000, 5)});
        entries.push_back({L"Empty", DirEntry::stream, {}});
        Bytes bytes = makeFile(entries, shift).bytes;
        for (int round = 0; round < 2; ++round) {
            Loaded loaded(bytes);
            loaded.main();
            loaded.xls.extractKeptStreams();
            const auto before = loaded.xls.directory();
            MemoryStream out;
            loaded.xls.reset(false);
            loaded.xls.setStream(&out);
            loaded.xls.writeBytes(pattern(9000, 7));
            loaded.xls.close();
            const auto* at = reinterpret_cast<const std::byte*>(out.written().data());
            bytes.assign(at, at + out.written().size());
            EXPECT_EQ(loadLe<std::uint16_t>(bytes.data() + 30), 9);

            Loaded again(bytes);
            Bytes main = again.main();
            main.resize(9000);
            EXPECT_TRUE(main == pattern(9000, 7));
            ASSERT_GE(again.xls.directory().size(), before.size());
            for (std::size_t i = 0; i < entries.size(); ++i) {
                SCOPED_TRACE(i);
                const DirEntry& entry = again.xls.directory()[i];
                EXPECT_EQ(entry.name(), entries[i].name);
                EXPECT_EQ(entry.childID, entries[i].child);
                EXPECT_EQ(entry.leftSiblingID, entries[i].left);
                EXPECT_EQ(entry.color, before[i].color);
                if (i < 2 || entries[i].bytes.empty()) continue;
                EXPECT_EQ(entry.streamSize, entries[i].bytes.size());
                again.xls.openStream(entry);
                Bytes stream = again.main();
                stream.resize(entries[i].bytes.size());
                EXPECT_TRUE(stream == entries[i].bytes);
            }
        }
    }
}

TEST(CompoundClose, AStreamThatFailsAnywhereSaysSo) {
    const Bytes whole = [] {
        Saving saving;
        saving.xls.writeBytes(pattern(5000));
        return saving.finish();
    }();
    for (std::size_t limit = 0; limit < whole.size(); limit += 97) {
        MemoryStream stream(limit);
        Xls xls;
        xls.setStream(&stream);
        const std::string text = textOf([&] {
            xls.writeBytes(pattern(5000));
            xls.close();
        });
        EXPECT_TRUE(text == "stream error, perhaps it's too small writing buffer" || text == "stream error") << limit;
    }
    Xls nowhere;
    EXPECT_EQ(textOf([&] { nowhere.currentWritePosition(); }), "can't get the current write position");
}

TEST(CompoundClose, AKeptStreamInFrontOfNothingIsRefused) {
    Loaded loaded(makeFile(usualEntries()).bytes);
    loaded.xls.extractKeptStreams();
    MemoryStream out;
    loaded.xls.reset(false);
    loaded.xls.setStream(&out);
    EXPECT_EQ(textOf([&] { loaded.xls.close(); }), "startingSectorLocation is out of range");
}

}  // namespace
}  // namespace vellum::test
