#include "zip/zip_reader.h"
#include "zip/zip_writer.h"

#include <bzlib.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <functional>
#include <string>

#include "zip/messages.h"
#include "zip/zip_error.h"

namespace zip {
namespace {

std::string little(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(i < 8 ? value >> (8 * i) : 0);
    return text;
}

/// An archive of one entry, laid out field by field, so that each can be made wrong.
struct Archive {
    std::string name = "a.txt";
    std::string stored = "hello";  // the bytes as stored
    std::string content = "hello";
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t compressedSize = 5, uncompressedSize = 5, headerOffset = 0;
    std::uint16_t endEntries = 1;
    std::string entryExtra, behindEntry, comment;
    bool zip64 = false;  // with the wider record of the end, and its locator
    std::uint64_t locatorOff = 0;
    std::string prefix;

    std::string bytes() const {
        const auto crc = static_cast<std::uint32_t>(
            crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size())));
        const std::string local = "PK\3\4" + little(20, 2) + little(flags, 2) + little(method, 2) + little(0, 4) +
                                  little(0, 12) + little(name.size(), 2) + little(0, 2) + name;
        const std::string central = "PK\1\2" + little(20, 2) + little(20, 2) + little(flags, 2) + little(method, 2) +
                                    little(0, 4) + little(crc, 4) + little(compressedSize, 4) +
                                    little(uncompressedSize, 4) + little(name.size(), 2) +
                                    little(entryExtra.size(), 2) + little(0, 2 + 2 + 2 + 4) + little(headerOffset, 4) +
                                    name + entryExtra + behindEntry;
        const std::size_t wideEnd = prefix.size() + local.size() + stored.size() + central.size();
        const std::string wide = "PK\6\6" + little(44, 8) + little(45, 2) + little(45, 2) + little(0, 8) +
                                 little(1, 8) + little(1, 8) + little(central.size(), 8) +
                                 little(local.size() + stored.size(), 8) + "PK\6\7" + little(0, 4) +
                                 little(wideEnd + locatorOff, 8) + little(1, 4);
        const std::string end = (zip64 ? wide : "") + "PK\5\6" + little(0, 4) + little(endEntries, 2) +
                                little(endEntries, 2) + little(central.size(), 4) +
                                little(local.size() + stored.size(), 4) + little(comment.size(), 2) + comment;
        return prefix + local + stored + central + end;
    }

    void store(const std::string& bytes) {
        stored = bytes;
        compressedSize = static_cast<std::uint32_t>(bytes.size());
    }
};

std::string bzip2(const std::string& text) {
    std::string out(text.size() + 1000, '\0');
    unsigned size = static_cast<unsigned>(out.size());
    BZ2_bzBuffToBuffCompress(out.data(), &size, const_cast<char*>(text.data()), static_cast<unsigned>(text.size()), 1,
                             0, 0);
    return out.substr(0, size);
}

std::string deflated(const std::string& text) {
    std::string out(compressBound(text.size()) + 10, '\0');
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return out;
}

/// Content of the first entry, or the text of the error.
std::string firstEntry(const std::string& bytes) {
    try {
        ZipReader reader;
        reader.openForRead(bytes.data(), bytes.size());
        const ZipMemoryBuffer content = reader.extract(0);
        return std::string(content.data(), content.size());
    } catch (const ZipError& error) {
        return error.what();
    }
}

const std::string longText = std::string(100000, 'x') + "y";

const struct {
    const char* what;
    std::function<void(Archive&)> change;
    std::string content;
} takesEveryFormOfEntryCases[] = {
    {"stored", [](Archive&) {}, "hello"},
    {"with a comment", [](Archive& a) { a.comment = "PK\5\6 not the end"; }, "hello"},
    {"with the end of another archive in its comment",
     [](Archive& a) {
         a.comment = "PK\5\6" + little(0, 4) + little(1, 2) + little(1, 2) + little(50, 4) + little(0, 4) +
                     little(0, 2) + " and more";
     },
     "hello"},
    {"with the end of an empty archive in its comment", [](Archive& a) { a.comment = "PK\5\6" + little(0, 18); },
     "hello"},
    {"behind a foreign head", [](Archive& a) { a.prefix = "#!/bin/sh\n"; }, "hello"},
    {"with a data descriptor", [](Archive& a) { a.flags = 8; }, "hello"},
    {"deflate",
     [](Archive& a) {
         a.method = 8;
         a.content = longText;
         a.store(deflated(longText));
         a.uncompressedSize = static_cast<std::uint32_t>(longText.size());
     },
     longText},
    {"bzip2",
     [](Archive& a) {
         a.method = 12;
         a.content = longText;
         a.store(bzip2(longText));
         a.uncompressedSize = static_cast<std::uint32_t>(longText.size());
     },
     longText},
    {"empty",
     [](Archive& a) {
         a.content = "";
         a.store("");
         a.uncompressedSize = 0;
     },
     ""},
    {"empty, without the stream of its method",
     [](Archive& a) {
         a.method = 8;
         a.content = "";
         a.store("");
         a.uncompressedSize = 0;
     },
     ""},
    {"Zip64 sizes",
     [](Archive& a) {
         a.uncompressedSize = a.compressedSize = 0xFFFFFFFF;
         a.entryExtra =
             little(0x5455, 2) + little(1, 2) + "x" + little(1, 2) + little(16, 2) + little(5, 8) + little(5, 8);
     },
     "hello"},
    {"Zip64 directory",
     [](Archive& a) {
         a.zip64 = true;
         a.endEntries = 0xFFFF;
     },
     "hello"},
};

TEST(ZipReader, TakesEveryFormOfEntry) {
    for (const auto& c : takesEveryFormOfEntryCases) {
        Archive archive;
        c.change(archive);
        EXPECT_EQ(firstEntry(archive.bytes()), c.content) << c.what;
    }
}

const struct {
    const char* what;
    std::function<void(Archive&)> change;
    const char* text;
} refusesWhatIsNotSoCases[] = {
    {"encrypted", [](Archive& a) { a.flags = 1; }, msg::wrongPassword},
    {"wrong content", [](Archive& a) { a.stored = "hallo"; }, msg::crcMismatch},
    {"size not known", [](Archive& a) { a.uncompressedSize = 0xFFFFFFFF; }, msg::incorrectSize},
    {"more data than the file has", [](Archive& a) { a.compressedSize = a.uncompressedSize = 4000; }, msg::damaged},
    {"more entries than the directory has", [](Archive& a) { a.endEntries = 2; }, msg::damaged},
    {"entry count of a bomb", [](Archive& a) { a.endEntries = 0xFFFE; }, msg::damaged},
    {"Zip64 marker without its record", [](Archive& a) { a.endEntries = 0xFFFF; }, msg::noZip64Directory},
    {"Zip64 locator that points at none",
     [](Archive& a) {
         a.zip64 = true;
         a.endEntries = 0xFFFF;
         a.locatorOff = static_cast<std::uint64_t>(-1);
     },
     msg::noZip64Directory},
    {"Zip64 locator that points behind the end",
     [](Archive& a) {
         a.zip64 = true;
         a.endEntries = 0xFFFF;
         a.locatorOff = 1000;
     },
     msg::noZip64Directory},
    {"Zip64 directory behind a foreign head",
     [](Archive& a) {
         a.zip64 = true;
         a.endEntries = 0xFFFF;
         a.prefix = "#!/bin/sh\n";
     },
     msg::bytesBeforeZip64},
    {"two entries over the same data",
     [](Archive& a) {
         const Archive one;
         const std::string bytes = one.bytes();
         a.behindEntry = bytes.substr(40, 51);
         a.endEntries = 2;
     },
     msg::damaged},
    {"local header elsewhere", [](Archive& a) { a.headerOffset = 3; }, msg::damaged},
    {"unknown method", [](Archive& a) { a.method = 99; }, msg::damaged},
    {"stored with two sizes", [](Archive& a) { a.uncompressedSize = 6; }, msg::damaged},
    {"no deflate data", [](Archive& a) { a.method = 8; }, msg::zlibData},
    {"no bzip2 data", [](Archive& a) { a.method = 12; }, msg::bzipMagic},
    {"cut deflate data",
     [](Archive& a) {
         a.method = 8;
         a.store(deflated("hello").substr(0, 3));
     },
     msg::zlibBuffer},
    {"cut bzip2 data",
     [](Archive& a) {
         a.method = 12;
         a.store(bzip2("hello").substr(0, 20));
     },
     msg::bzipEof},
    {"bzip2 data with another sum",
     [](Archive& a) {
         a.method = 12;
         std::string data = bzip2("hello");
         data[10] = static_cast<char>(data[10] ^ 1);
         a.store(data);
     },
     msg::bzipData},
    {"more data than recorded",
     [](Archive& a) {
         a.method = 8;
         a.store(deflated("hello, world"));
     },
     msg::incorrectSize},
    {"fewer data than recorded",
     [](Archive& a) {
         a.method = 8;
         a.store(deflated("hell"));
     },
     msg::incorrectSize},
    {"a size that deflate cannot reach",
     [](Archive& a) {
         a.method = 8;
         a.uncompressedSize = 900000000;
     },
     msg::damaged},
    {"a bomb",
     [](Archive& a) {
         a.method = 8;
         a.uncompressedSize = 3000000000;
     },
     msg::incorrectSize},
};

TEST(ZipReader, RefusesWhatIsNotSo) {
    for (const auto& c : refusesWhatIsNotSoCases) {
        Archive archive;
        c.change(archive);
        EXPECT_EQ(firstEntry(archive.bytes()), c.text) << c.what;
    }
}

TEST(ZipReader, AddsOnlyToAnArchiveOfItsOwn) {
    ZipReader reader;
    const auto text = [](auto&& call) -> std::string {
        try {
            call();
        } catch (const ZipError& e) {
            return e.what();
        }
        return "";
    };
    EXPECT_EQ(text([&] { reader.addEntry("a", "x", 1); }), msg::internalError);
    EXPECT_EQ(text([&] { reader.finish(); }), msg::internalError);
}

// Each entry is below what is refused alone; together they would be inflated to more than any workbook.
TEST(ZipReader, RefusesWhatExpandsTooFarInAll) {
    ZipMemoryBuffer buffer;
    ZipWriter writer;
    writer.createInBuffer(buffer);
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        writer.openEntry(name);
        writer.writeEntry(name, 1);
        writer.closeEntry();
    }
    writer.close();
    for (const int size : {0x20, 0x3F}) {  // 2.5 and nearly 5 GiB
        std::string bytes(buffer.data(), buffer.size());
        for (std::size_t at = bytes.find("PK\1\2"); at != std::string::npos; at = bytes.find("PK\1\2", at + 4)) {
            bytes[at + 27] = static_cast<char>(size);
        }
        ZipReader reader;
        if (size == 0x20) {
            EXPECT_NO_THROW(reader.openForRead(bytes.data(), bytes.size()));
        } else {
            EXPECT_THROW(reader.openForRead(bytes.data(), bytes.size()), ZipError);
        }
    }
}

// The count is at its maximum, as it is where the wider record of the end has the true one.
TEST(ZipReader, TakesAsManyEntriesAsFitWithoutZip64) {
    constexpr unsigned count = 0xFFFF;
    std::string bytes, directory;
    for (unsigned i = 0; i < count; ++i) {
        const std::string name = std::to_string(i);
        const std::string common = little(20, 2) + little(0, 2 + 2 + 4 + 12) + little(name.size(), 2) + little(0, 2);
        directory += "PK\1\2" + little(20, 2) + common + little(0, 2 + 2 + 2 + 4) + little(bytes.size(), 4) + name;
        bytes += "PK\3\4" + common + name;
    }
    const std::size_t offset = bytes.size();
    bytes += directory + "PK\5\6" + little(0, 4) + little(count, 2) + little(count, 2) + little(directory.size(), 4) +
             little(offset, 4) + little(0, 2);
    ZipReader reader;
    reader.openForRead(bytes.data(), bytes.size());
    ASSERT_EQ(reader.entryCount(), count);
    EXPECT_EQ(reader.entryName(count - 1), "65534");
}

TEST(ZipReader, ANameEndsAtAZero) {
    Archive archive;
    archive.name = std::string("a\0b", 3);
    const std::string bytes = archive.bytes();
    ZipReader reader;
    reader.openForRead(bytes.data(), bytes.size());
    EXPECT_EQ(reader.entryName(0), "a");
}

TEST(ZipReader, RefusesEveryCutOfAnArchive) {
    const std::string bytes = Archive().bytes();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_EQ(firstEntry(bytes.substr(0, size)), msg::noCentralDirectory) << size;
    }
}

TEST(ZipReader, NamesTheReasonOfAFileError) {
    ZipReader reader;
    try {
        reader.openForRead("no/such/file.zip");
        FAIL();
    } catch (const ZipError& error) {
        EXPECT_STREQ(error.what(), "A file error occurred (No such file or directory.).");
    }
}

}  // namespace
}  // namespace zip
