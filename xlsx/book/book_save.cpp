// Saving the book as a package.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unordered_set>

#include "bindery/values/error.h"
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "engine/text/file_save.h"
#include "engine/text/text_hash.h"
#include "xlsx/book/book.h"
#include "xlsx/package/content_type_names.h"
#include "xlsx/package/content_types.h"
#include "xlsx/package/messages.h"
#include "xlsx/package/numeric_locale.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"
#include "zip/zip_memory_buffer.h"
#include "zip/zip_output_stream.h"
#include "zip/zip_reader.h"
#include "zip/zip_writer.h"

namespace vellum {
namespace {

/// Makes a file beside the target, by a name that nobody else has. `mkstemp` cannot serve, since it chooses six
/// characters of its own, capitals and digits among them, and the form of these names is fixed; it is done as there:
/// O_EXCL follows no link and takes no file that is there, the file is its owner's alone, and a name that is taken is
/// followed by another.
std::string temporaryBeside(std::string_view target) {
    const std::size_t slash = target.find_last_of("/\\");
    std::string name(slash == std::string_view::npos ? std::string_view() : target.substr(0, slash + 1));
    name += "vellum-";
    std::random_device random;
    for (int tries = 0; tries < 100; ++tries) {
        std::string whole = name;
        for (int i = 0; i < 16; ++i) whole += static_cast<char>('a' + random() % 26);
        whole += ".tmp";
        const int made = ::open(whole.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (made >= 0) {
            ::close(made);
            return whole;
        }
        if (errno != EEXIST) break;
    }
    throw vlerror(xlsx::msg::cannotOpenZipStream);
}

/// Writes a part by way of a temporary file, which is gone afterwards whatever happens.
void copyThroughFile(XFile& part, std::string temporary, zip::ZipWriter& writer) {
    struct Removed {
        const std::string& path;
        ~Removed() {
            std::error_code ignored;
            std::filesystem::remove(path, ignored);
        }
    } const removed{temporary};
    part.writeToPath(temporary);
    std::ifstream in(temporary, std::ios::binary);
    if (!in) throw vlerror(xlsx::msg::cannotOpenZipStream);
    char buffer[65536];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
        if (!writer.writeEntry(buffer, static_cast<std::size_t>(in.gcount())))
            throw vlerror(xlsx::msg::cannotWriteZipStream);
    }
}

void writeStraight(XFile& part, zip::ZipWriter& writer) {
    zip::ZipOutputStream out(writer);
    part.writeToStream(out);
    out.flush();
    if (!out) throw vlerror(xlsx::msg::cannotWriteZipStream);
}

}  // namespace

template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::FreeBuffer::operator()(char* bytes) const {
    std::free(bytes);
}

/// What both forms of saving do before anything is written.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::prepareSave() {
    if (_outline) throw vlerror(xlsx::msg::cannotSaveOutline);
    requireContentTypes();
    if (sheetCount() == 0) throw vlerror(bindery::errorText(bindery::occurs_on_marshal));
    dropCalcChain();
    auto& workbook = this->_root;
    ensureCalcPr().fullCalcOnLoad(true);
    if (!workbook.isset_bookViews() || workbook.bookViews().workbookView().size() == 0) {
        workbook.bookViews().workbookView().append();
    }
    dropDangling();
    _sheetFacts = {};
}

/// The chain is not kept up to date; readers rebuild it.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::dropCalcChain() {
    const auto drop = [this](const std::string& path) {
        const auto found = _parts.find(path);
        if (found != _parts.end() && dynamic_cast<BinaryFile*>(found->second.get())) _parts.erase(found);
    };
    drop(_folder + "/calcChain.xml");
    if (!_relationships) return;
    _relationships->removeIf([&](const auto& element) {
        const bool isChain = element.Type().ends_with("relationships/calcChain");
        if (isChain) drop(absoluteTarget(_folder, element.Target()));
        return isChain || element.Target() == "calcChain.xml";
    });
}

/// After a partial load, worksheets that were left out are still named, as is the chain of calculation: readers refuse
/// a package with such names. A part that is there by another spelling of its name is no such case.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::dropDangling() {
    std::unordered_set<std::string, TextHash> names;
    for (const auto& [path, part] : _parts) names.insert(comparablePath("", path));
    if (_relationships) {
        _relationships->removeIf([&](const auto& element) {
            const bool isSheet = element.Type() == std::string(rel::transitional) + "worksheet" ||
                                 element.Type() == std::string(rel::strict) + "worksheet";
            return isSheet && element.TargetMode() != "External" &&
                   !findPart(absoluteTarget(_folder, element.Target())) &&
                   !names.contains(comparablePath(_folder, element.Target()));
        });
    }
    _contentTypes->removeOverridesBut(
        [&](const std::string& name) { return names.contains(comparablePath("", name)); });
}

template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::setMainTypeByName(std::string_view path) {
    constexpr struct {
        std::string_view ending;
        std::string_view type;
    } types[] = {{".xlsx", type::workbook},
                 {".xltx", type::workbookTemplate},
                 {".xlsm", type::macroWorkbook},
                 {".xltm", type::macroTemplate}};
    if (path.size() <= 5) return;
    for (const auto& known : types) {
        if (sameIgnoringCase(path.substr(path.size() - 5), known.ending)) {
            _contentTypes->setOverride(_mainPath, known.type);
        }
    }
}

/// All parts in the order of the map, the content types first.
template <class CharT, class Tag>
template <class Visit>
void XMLBookImplT<CharT, Tag>::eachPartToSave(Visit&& visit) {
    visit(ContentTypes::pathInPackage, static_cast<XFile&>(*_contentTypes));
    for (const auto& [path, part] : _parts) {
        if (path != ContentTypes::pathInPackage) visit(std::string_view(path), partOf(part));
    }
}

template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::saveNamed(const std::string& path, bool useTemp) {
    FileToSave file(path);
    if (!file.isOpen()) throw vlerror(xlsx::msg::cannotWrite);
    zip::ZipMemoryBuffer archive;
    zip::ZipWriter writer;
    if (!writer.createInBuffer(archive)) throw vlerror(xlsx::msg::cannotWrite);
    eachPartToSave([&](std::string_view name, XFile& part) {
        if (!writer.openEntry(std::string(name.substr(1)))) throw vlerror(xlsx::msg::cannotOpenZipStream);
        if (useTemp) {
            copyThroughFile(part, temporaryBeside(path), writer);
        } else {
            writeStraight(part, writer);
        }
        if (!writer.closeEntry()) throw vlerror(xlsx::msg::cannotWriteZipStream);
    });
    if (!writer.close()) throw vlerror(xlsx::msg::cannotCloseFile);
    if (!file.write({archive.data(), archive.size()})) throw vlerror(xlsx::msg::cannotWriteZipStream);
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::saveFile(const CharT* path, bool useTemp) {
    return guarded(this->_lastError, false, [&] {
        if (!path) throw vlerror(xlsx::msg::saveNameNull);
        prepareSave();
        const NumericLocale numericLocale;
        const std::string name = narrowPath(path);
        setMainTypeByName(name);
        saveNamed(name, useTemp);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::saveMemory(const char** data, std::size_t* size) {
    return guarded(this->_lastError, false, [&] {
        prepareSave();
        const NumericLocale numericLocale;
        zip::ZipReader archive;
        archive.createInMemory();
        eachPartToSave([&](std::string_view name, XFile& part) {
            std::string bytes;
            part.writeToPath(bytes);
            archive.addEntry(std::string(name.substr(1)), bytes.data(), bytes.size());
        });
        archive.finish();
        _saveBuffer.reset();
        char* buffer;
        std::size_t length;
        archive.takeBuffer(&buffer, &length);
        _saveBuffer.reset(buffer);
        if (data) *data = buffer;
        if (size) *size = length;
        return true;
    });
}

}  // namespace vellum
