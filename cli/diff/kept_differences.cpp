#include "cli/diff/kept_differences.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <span>

#include "biff/container/xls.h"
#include "engine/facts/digest.h"
#include "engine/text/conversions.h"
#include "zip/zip_reader.h"

namespace cli {
namespace {

using Book = vellum::IBookT<char>;

/// What is kept under a name.
struct Kept {
    std::size_t size = 0;
    vellum::Digest digest = {};  // of its bytes, where they can be asked for

    bool operator==(const Kept&) const = default;
};
using KeptList = std::map<std::string, Kept>;

KeptList keptOf(Book& book) {
    KeptList found;
    auto* const kept = dynamic_cast<vellum::IBookKept*>(&book);
    const int total = kept != nullptr ? kept->keptTotal() : 0;
    for (int i = 0; i < total; ++i) {
        std::size_t size = 0;
        if (const char* const name = kept->keptAt(i, &size)) found[name].size = size;
    }
    return found;
}

void addPartDigests(const std::string& path, KeptList& list) {
    zip::ZipReader archive;
    archive.openForRead(path);
    for (std::size_t i = 0; i < archive.entryCount(); ++i) {
        const auto found = list.find(archive.entryName(i));
        if (found == list.end()) continue;
        const auto bytes = archive.extract(i);
        found->second.digest = vellum::md5(std::as_bytes(std::span(bytes.data(), bytes.size())));
    }
}

/// All streams but the workbook's own; equal names are numbered.
void addStreams(const std::string& path, KeptList& list) {
    std::fstream file(path, std::ios::in | std::ios::binary);
    vellum::Xls container;
    container.setStream(&file);
    container.measure();
    std::uint64_t counter = 0;
    container.read(counter);
    const vellum::DirEntry* const main = container.findMainStream();
    std::erase_if(list, [](const auto& each) {
        return each.first.starts_with("stream ") || each.first.starts_with("small streams");
    });
    for (const vellum::DirEntry& entry : container.directory()) {
        if (entry.type != vellum::DirEntry::stream || &entry == main) continue;
        std::string name = "stream " + vellum::toNarrow(entry.name(), true);
        for (int i = 2; list.contains(name); ++i)
            name = "stream " + vellum::toNarrow(entry.name(), true) + " (" + std::to_string(i) + ")";
        container.openStream(entry);
        std::vector<std::byte> bytes(std::min<std::size_t>(entry.streamSize, container.remaining()));
        bytes.resize(container.readBytes(bytes.data(), bytes.size()));
        list[name] = {bytes.size(), vellum::md5(bytes)};
    }
}

KeptList listOf(const std::string& path, Book& book) {
    KeptList found = keptOf(book);
    try {
        book.binaryVersion() == 0 ? addPartDigests(path, found) : addStreams(path, found);
    } catch (const std::exception&) {  // names and sizes remain
    }
    return found;
}

std::string bytesText(const Kept& kept) {
    return std::to_string(kept.size) + " bytes";
}

}  // namespace

void addKeptDifferences(const std::string& firstPath, Book& first, const std::string& secondPath, Book& second,
                        Differences& out) {
    const KeptList before = listOf(firstPath, first), after = listOf(secondPath, second);
    for (const auto& [name, kept] : before) {
        const auto found = after.find(name);
        if (found == after.end()) {
            out.push_back({"", name, "kept removed", 1, bytesText(kept), ""});
        } else if (!(found->second == kept)) {
            out.push_back({"", name, "kept changed", 1, bytesText(kept), bytesText(found->second)});
        }
    }
    for (const auto& [name, kept] : after) {
        if (!before.contains(name)) out.push_back({"", name, "kept added", 1, "", bytesText(kept)});
    }
}

}  // namespace cli
