// Entries that are read while they are inflated.
#include "zip/entry_stream.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "tests/zip/faults.h"
#include "zip/zip_error.h"
#include "zip/zip_memory_buffer.h"
#include "zip/zip_reader.h"
#include "zip/zip_source.h"
#include "zip/zip_writer.h"

namespace zip {
namespace {

std::string cells(std::size_t size) {
    std::string bytes;
    for (unsigned row = 1; bytes.size() < size; ++row)
        bytes += "<c><v>" + std::to_string(row * 2654435761U) + "</v></c>";
    bytes.resize(size);
    return bytes;
}

std::string archiveOf(const std::string& content) {
    ZipMemoryBuffer buffer;
    ZipWriter writer;
    writer.createInBuffer(buffer);
    writer.openEntry("a");
    writer.writeEntry(content.data(), content.size());
    writer.close();
    return {buffer.data(), buffer.size()};
}

/// All that comes, or the text of the failure.
std::string streamed(const std::string& archive, ZipEntry entry, unsigned threads) {
    const ZipSource source(archive.data(), archive.size());
    std::string bytes;
    try {
        EntryStream stream(source, entry, threads);
        for (auto piece = stream.next(); !piece.empty(); piece = stream.next()) {
            bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
        }
        EXPECT_TRUE(stream.next().empty());
    } catch (const ZipError& error) {
        return error.what();
    }
    return bytes;
}

TEST(EntryStream, GivesWhatIsInTheEntry) {
    for (const std::size_t size : {0U, 1U, 262143U, 262144U, 262145U, 3000000U}) {
        const std::string content = cells(size);
        const std::string archive = archiveOf(content);
        const ZipSource source(archive.data(), archive.size());
        const ZipEntry entry = readCentralDirectory(source)[0];
        for (const unsigned threads : {1U, 2U, 8U}) EXPECT_EQ(streamed(archive, entry, threads), content) << size;
        const testing::FaultAhead fault(testing::Fault::thread, 0, true);
        EXPECT_EQ(streamed(archive, entry, 2), content) << size;
    }
}

TEST(EntryStream, RefusesWhatIsNotSo) {
    const std::string content = cells(2000000);
    std::string archive = archiveOf(content);
    const ZipSource source(archive.data(), archive.size());
    const ZipEntry entry = readCentralDirectory(source)[0];
    ZipEntry longer = entry, shorter = entry, cut = entry, other = entry;
    ++longer.uncompressedSize;
    --shorter.uncompressedSize;
    cut.compressedSize -= 100;
    ++other.crc;
    std::string torn = archive;
    for (std::size_t at = torn.size() / 2; at < torn.size() / 2 + 200; ++at) torn[at] = '\x55';
    for (const unsigned threads : {1U, 2U}) {
        EXPECT_EQ(streamed(archive, longer, threads), "incorrect file size in archive");
        EXPECT_EQ(streamed(archive, shorter, threads), "incorrect file size in archive");
        EXPECT_EQ(streamed(archive, cut, threads), "Zlib library error (buffer error).");
        EXPECT_EQ(streamed(archive, other, threads), "Crc is mismatched.");
        EXPECT_LT(streamed(torn, entry, threads).size(), 100U);
    }
}

TEST(EntryStream, IsLeftAtAnyPlace) {
    const std::string archive = archiveOf(cells(3000000));
    const ZipSource source(archive.data(), archive.size());
    const ZipEntry entry = readCentralDirectory(source)[0];
    for (int pieces = 0; pieces < 8; ++pieces) {
        EntryStream stream(source, entry, 2);
        for (int i = 0; i < pieces; ++i) EXPECT_FALSE(stream.next().empty());
    }
}

TEST(EntryStream, IsForLargeDeflatedEntries) {
    for (const std::size_t size : {1000U, 2000000U}) {
        const std::string archive = archiveOf(cells(size));
        ZipReader reader;
        reader.openForRead(archive.data(), archive.size());
        EXPECT_EQ(reader.stream(0) != nullptr, size > 1000);
    }
}

}  // namespace
}  // namespace zip
