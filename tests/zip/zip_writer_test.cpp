#include "zip/zip_writer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "zip/zip_output_stream.h"
#include "zip/zip_reader.h"

namespace zip {
namespace {

std::string text(const ZipMemoryBuffer& buffer) {
    return std::string(buffer.data(), buffer.size());
}

std::string noise(std::size_t size) {
    std::mt19937 random(static_cast<unsigned>(size));
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

TEST(ZipWriter, FileReadsBackAsWritten) {
    const auto folder = std::filesystem::temp_directory_path() / ("zip_writer_" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const std::string path = folder / "out.zip";
    ZipWriter writer;
    ASSERT_TRUE(writer.createFile(path));
    ASSERT_TRUE(writer.openEntry("xl/sheet.xml"));
    EXPECT_FALSE(writer.openEntry("second while the first is open"));
    {
        ZipOutputStream out(writer);
        for (int i = 0; i < 20000; ++i) out << "<c r=\"" << i << "\"/>";
        out.write(noise(70000).data(), 70000);
        EXPECT_TRUE(out.good());
    }
    EXPECT_TRUE(writer.closeEntry());
    EXPECT_TRUE(writer.openEntry("leer/\xC3\xA4.bin"));
    EXPECT_TRUE(writer.close());
    EXPECT_FALSE(writer.openEntry("after the end"));

    // The archive that is open is finished before another one begins.
    ASSERT_TRUE(writer.createFile(folder / "first.zip"));
    ASSERT_TRUE(writer.openEntry("a"));
    ASSERT_TRUE(writer.createFile(folder / "second.zip"));
    EXPECT_TRUE(writer.close());
    ZipReader first;
    first.openForRead(folder / "first.zip");
    EXPECT_EQ(first.entryName(0), "a");

    ZipReader reader;
    reader.openForRead(path);
    ASSERT_EQ(reader.entryCount(), 2u);
    const std::string sheet = text(reader.extract(0));
    EXPECT_EQ(sheet.substr(0, 24), "<c r=\"0\"/><c r=\"1\"/><c r");
    EXPECT_EQ(sheet.substr(sheet.size() - 70000), noise(70000));
    EXPECT_EQ(reader.entryName(1), "leer/\xC3\xA4.bin");
    EXPECT_EQ(reader.extract(1).size(), 0u);
    reader.extractToFile(0, folder / "sheet.xml");
    EXPECT_EQ(std::filesystem::file_size(folder / "sheet.xml"), sheet.size());
    std::filesystem::remove_all(folder);
}

TEST(ZipWriter, MemoryArchiveReadsBackAsWritten) {
    const struct {
        std::string name, content;
        std::uint16_t flags = 0;  // 2048: the name is UTF-8
    } entries[] = {{"[Content_Types].xml", "<Types/>"},
                   {"empty", ""},
                   {"noise", noise(300000)},
                   {"\xC3\xA4", "UTF-8", 2048},
                   {"\x84", "an older coding"}};
    ZipReader built;
    built.createInMemory();
    for (const auto& entry : entries) built.addEntry(entry.name, entry.content.data(), entry.content.size());
    built.finish();
    char* data;
    std::size_t size;
    built.takeBuffer(&data, &size);

    ZipReader reader;
    reader.openForRead(data, size);
    ASSERT_EQ(reader.entryCount(), std::size(entries));
    for (std::size_t i = 0; i < std::size(entries); ++i) {
        EXPECT_EQ(reader.entryName(i), entries[i].name);
        EXPECT_EQ(reader.entry(i).flags & 2048, entries[i].flags) << entries[i].name;
        EXPECT_EQ(text(reader.extract(i)), entries[i].content);
    }
    char* missing = data;
    std::size_t missingSize = 1;
    reader.extractToMemory(99, &missing, &missingSize);
    EXPECT_EQ(missing, nullptr);
    EXPECT_EQ(missingSize, 0u);
    std::free(data);
}

TEST(ZipWriter, SaysWhenTheDiskIsFull) {
    ZipWriter writer;
    if (!writer.createFile("/dev/full")) return;
    const bool opened = writer.openEntry("a");
    const bool written = opened && writer.writeEntry(noise(1 << 20).data(), 1 << 20);
    EXPECT_FALSE(writer.close() && written);
}

}  // namespace
}  // namespace zip
