// Compound files for tests, laid out by hand and not by the code under test, and streams over bytes.
#pragma once
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "biff/container/memory_stream.h"
#include "biff/container/xls.h"
#include "engine/failure/vlerror.h"

namespace vellum::test {

using Bytes = std::vector<std::byte>;

inline Bytes pattern(std::size_t size, unsigned seed = 1) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::byte>(i * 7 + seed * 31 + i / 251);
    return bytes;
}

inline Bytes hex(const std::string& text) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += text[i] == ' ' ? 1 : 2) {
        if (text[i] != ' ') bytes.push_back(static_cast<std::byte>(std::stoi(text.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

inline Bytes joined(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

inline Bytes record(std::uint16_t id, const Bytes& body) {
    Bytes bytes(4);
    storeLe(bytes.data(), id);
    storeLe(bytes.data() + 2, static_cast<std::uint16_t>(body.size()));
    return joined({bytes, body});
}

/// What the work throws; "" when it throws nothing.
inline std::string textOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& e) {
        return e.what();
    }
    return "";
}

/// One entry of a directory in list order, the root first. IDs are positions in the list.
struct Entry {
    std::wstring name;
    std::uint8_t type = DirEntry::stream;
    Bytes bytes;
    std::uint32_t left = freeSector, right = freeSector, child = freeSector;
};

/// Sectors: the FAT (0), the directory (from `dir`), the mini FAT and the mini stream if there is one, then the
/// streams of 4096 bytes and more in list order.
struct File {
    Bytes bytes;
    std::size_t sectorSize = 0;
    std::uint32_t dir = 1, miniFat = endOfChain, miniStream = endOfChain;
    std::vector<std::uint32_t> starts;  // by entry

    std::size_t at(std::uint32_t sector) const { return (sector + 1) * sectorSize; }
    std::size_t fatAt(std::uint32_t sector) const { return at(0) + sector * 4; }
    std::size_t entryAt(std::size_t entry) const { return at(dir) + entry * 128; }
    template <class T>
    File& patch(std::size_t offset, T value) {
        storeLe(bytes.data() + offset, value);
        return *this;
    }
    File& cut(std::size_t size) {
        bytes.resize(size);
        return *this;
    }
};

/// The directory's entries, at the front of `data`.
inline void fillDirectory(const std::vector<Entry>& entries, const File& file, std::size_t miniSize, Bytes& data) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Entry& e = entries[i];
        std::byte* to = data.data() + i * 128;
        for (std::size_t c = 0; c < e.name.size(); ++c) storeLe(to + 2 * c, static_cast<std::uint16_t>(e.name[c]));
        storeLe(to + 64, static_cast<std::uint16_t>(2 * e.name.size() + 2));
        storeLe(to + 66, e.type);
        storeLe(to + 67, std::uint8_t{1});
        storeLe(to + 68, e.left);
        storeLe(to + 72, e.right);
        storeLe(to + 76, e.child);
        storeLe(to + 116, file.starts[i]);
        storeLe(to + 120, static_cast<std::uint32_t>(i == 0 ? miniSize : e.bytes.size()));
    }
}

inline Bytes headerOf(const File& file, unsigned shift, bool hasMini) {
    Bytes header(file.sectorSize);
    const auto magic = hex("D0CF11E0A1B11AE1");
    std::copy(magic.begin(), magic.end(), header.begin());
    storeLe(header.data() + 24, std::uint16_t{62});
    storeLe(header.data() + 26, static_cast<std::uint16_t>(shift == 9 ? 3 : 4));
    storeLe(header.data() + 28, std::uint16_t{0xFFFE});
    storeLe(header.data() + 30, static_cast<std::uint16_t>(shift));
    storeLe(header.data() + 32, std::uint16_t{6});
    storeLe(header.data() + 44, std::uint32_t{1});
    storeLe(header.data() + 48, file.dir);
    storeLe(header.data() + 56, std::uint32_t{4096});
    storeLe(header.data() + 60, file.miniFat);
    storeLe(header.data() + 64, std::uint32_t{hasMini ? 1U : 0U});
    storeLe(header.data() + 68, endOfChain);
    for (std::size_t i = 0; i < 109; ++i) storeLe(header.data() + 76 + 4 * i, i == 0 ? std::uint32_t{0} : freeSector);
    return header;
}

inline File makeFile(const std::vector<Entry>& entries, unsigned shift = 9) {
    File file;
    file.sectorSize = std::size_t{1} << shift;
    std::vector<std::uint32_t> fat(file.sectorSize / 4, freeSector), miniFat;
    std::uint32_t next = 1;
    Bytes data;  // from sector 1 on
    const auto place = [&](const Bytes& bytes) {
        const std::uint32_t start = next;
        data.insert(data.end(), bytes.begin(), bytes.end());
        data.resize((data.size() + file.sectorSize - 1) / file.sectorSize * file.sectorSize);
        next = static_cast<std::uint32_t>(data.size() / file.sectorSize) + 1;
        for (std::uint32_t s = start; s < next; ++s) fat[s] = s + 1 < next ? s + 1 : endOfChain;
        return start;
    };
    fat[0] = fatSector;
    place(Bytes(entries.size() * 128));  // the directory, filled below
    Bytes mini;
    file.starts.assign(entries.size(), endOfChain);
    for (std::size_t i = 1; i < entries.size(); ++i) {
        const Bytes& bytes = entries[i].bytes;
        if (bytes.empty() || bytes.size() >= 4096) continue;
        file.starts[i] = static_cast<std::uint32_t>(miniFat.size());
        mini.insert(mini.end(), bytes.begin(), bytes.end());
        mini.resize((mini.size() + 63) / 64 * 64);
        while (miniFat.size() < mini.size() / 64) miniFat.push_back(static_cast<std::uint32_t>(miniFat.size()) + 1);
        miniFat.back() = endOfChain;
    }
    if (!mini.empty()) {
        miniFat.resize((miniFat.size() + file.sectorSize / 4 - 1) / (file.sectorSize / 4) * (file.sectorSize / 4),
                       freeSector);
        const auto* at = reinterpret_cast<const std::byte*>(miniFat.data());
        file.miniFat = place(Bytes(at, at + miniFat.size() * 4));
        file.starts[0] = file.miniStream = place(mini);
    }
    for (std::size_t i = 1; i < entries.size(); ++i) {
        if (entries[i].bytes.size() >= 4096) file.starts[i] = place(entries[i].bytes);
    }
    fillDirectory(entries, file, mini.size(), data);
    const auto* fatBytes = reinterpret_cast<const std::byte*>(fat.data());
    file.bytes = joined({headerOf(file, shift, !mini.empty()), Bytes(fatBytes, fatBytes + file.sectorSize), data});
    return file;
}

/// A workbook stream, a small and a big stream beside it.
inline std::vector<Entry> usualEntries() {
    return {{L"Root Entry", DirEntry::root, {}, freeSector, freeSector, 1},
            {L"Workbook", DirEntry::stream, pattern(5000), 2, 3},
            {L"Small", DirEntry::stream, pattern(300, 2)},
            {L"Big", DirEntry::stream, pattern(6000, 3)}};
}

/// An open file; all of the main stream's bytes as its reader gets them.
struct Loaded {
    explicit Loaded(const Bytes& bytes) : stream(std::span<const std::byte>(bytes)) {
        xls.setStream(&stream);
        xls.measure();
        std::uint64_t counter = 0;
        xls.read(counter);
    }
    Bytes main() {
        Bytes all(xls.remaining());
        all.resize(xls.readBytes(all.data(), all.size()));
        return all;
    }

    MemoryStream stream;
    Xls xls;
};

/// What a load throws, with the whole stream read and the kept streams taken.
inline std::string loadText(const Bytes& bytes) {
    return textOf([&] {
        Loaded file(bytes);
        file.main();
        if (!file.xls.atEnd()) file.xls.skip(1);
        file.xls.extractKeptStreams();
    });
}

/// A stream of the given bytes, as `Xls` reads it: the chain of a main stream that ends with the bytes.
struct Stream {
    explicit Stream(Bytes bytes) {
        // Padded to whole sectors, as any stream is; the records' reader stops where the fixture says.
        size = bytes.size();
        if (bytes.size() < 4096) bytes.resize(4096);
        auto entries = usualEntries();
        entries[1].bytes = std::move(bytes);
        entries.resize(2);
        entries[1].left = entries[1].right = freeSector;
        file = makeFile(entries, 16);
        loaded = std::make_unique<Loaded>(file.bytes);
    }
    Xls& operator*() { return loaded->xls; }
    Xls* operator->() { return &loaded->xls; }

    std::size_t size;
    File file;
    std::unique_ptr<Loaded> loaded;
};

/// A book being written to memory.
struct Saving {
    Saving() { xls.setStream(&stream); }
    Bytes finish() {
        xls.close();
        const auto* at = reinterpret_cast<const std::byte*>(stream.written().data());
        return Bytes(at, at + stream.written().size());
    }

    MemoryStream stream;
    Xls xls;
};

/// The main stream that the work writes, with its padding; read back.
inline Bytes written(const std::function<void(Xls&)>& work) {
    Saving saving;
    work(saving.xls);
    return Loaded(saving.finish()).main();
}

}  // namespace vellum::test
