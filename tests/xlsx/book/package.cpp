#include "tests/xlsx/book/package.h"

#include <gtest/gtest.h>

#include "engine/factories/factories.h"
#include "zip/zip_reader.h"

namespace vellum {
namespace {

const std::string transitionalMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const std::string strictMain = "http://purl.oclc.org/ooxml/spreadsheetml/main";
const std::string relationshipTypes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string contentTypeHead = "application/vnd.openxmlformats-officedocument.spreadsheetml.";

std::string sheetXml(int number) {
    return "<worksheet xmlns=\"" + transitionalMain + "\"><sheetData><row r=\"1\"><c r=\"A1\"><v>" +
           std::to_string(number) + "</v></c></row></sheetData></worksheet>";
}

}  // namespace

BookPtr newBook() {
    return BookPtr(vlCreateXMLBook<char>());
}

std::string packed(const Parts& parts) {
    zip::ZipReader archive;
    archive.createInMemory();
    for (const auto& [name, content] : parts) archive.addEntry(name, content.data(), content.size());
    archive.finish();
    char* data = nullptr;
    std::size_t size = 0;
    archive.takeBuffer(&data, &size);
    const std::string bytes(data, size);
    std::free(data);
    return bytes;
}

std::map<std::string, std::string> unpacked(const std::string& archive) {
    std::map<std::string, std::string> parts;
    zip::ZipReader reader;
    reader.openForRead(archive.data(), archive.size());
    for (std::size_t i = 0; i < reader.entryCount(); ++i) {
        const zip::ZipMemoryBuffer bytes = reader.extract(i);
        EXPECT_TRUE(parts.emplace(reader.entryName(i), std::string(bytes.data(), bytes.size())).second);
    }
    return parts;
}

std::string workbookXml(int sheetCount, const std::string& inside, bool strict) {
    std::string xml = "<workbook xmlns=\"" + (strict ? strictMain : transitionalMain) + "\" xmlns:r=\"" +
                      (strict ? "http://purl.oclc.org/ooxml/officeDocument/relationships" : relationshipTypes) +
                      "\"><sheets>";
    for (int i = 1; i <= sheetCount; ++i) {
        const std::string number = std::to_string(i);
        xml += "<sheet name=\"S" + number + "\" sheetId=\"" + number + "\" r:id=\"rId" + number + "\"/>";
    }
    return xml + "</sheets>" + inside + "</workbook>";
}

Parts samplePackage(int sheetCount, const std::map<std::string, std::string>& changed) {
    std::string types =
        R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
        R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
        R"(<Default Extension="xml" ContentType="application/xml"/>)"
        R"(<Override PartName="/xl/workbook.xml" ContentType=")" +
        contentTypeHead + "sheet.main+xml\"/>";
    std::string relationships =
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    const std::string relationshipsHead = relationships;
    Parts sheets;
    for (int i = 1; i <= sheetCount; ++i) {
        const std::string name = "worksheets/sheet" + std::to_string(i) + ".xml";
        types += "<Override PartName=\"/xl/" + name + "\" ContentType=\"" + contentTypeHead + "worksheet+xml\"/>";
        relationships += "<Relationship Id=\"rId" + std::to_string(i) + "\" Type=\"" + relationshipTypes +
                         "/worksheet\" Target=\"" + name + "\"/>";
        sheets.emplace_back("xl/" + name, sheetXml(i));
    }
    Parts parts{{"[Content_Types].xml", types + "</Types>"},
                {"_rels/.rels", relationshipsHead + "<Relationship Id=\"rId1\" Type=\"" + relationshipTypes +
                                    "/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>"},
                {"xl/_rels/workbook.xml.rels", relationships + "</Relationships>"},
                {"xl/workbook.xml", workbookXml(sheetCount)}};
    parts.insert(parts.end(), sheets.begin(), sheets.end());
    for (const auto& [name, content] : changed) {
        std::erase_if(parts, [&](const auto& part) { return content.empty() && part.first == name; });
        bool known = content.empty();
        for (auto& part : parts) {
            if (part.first == name) part.second = content, known = true;
        }
        if (!known) parts.emplace_back(name, content);
    }
    return parts;
}

std::string samplePackageBytes(int sheetCount, const std::map<std::string, std::string>& changed) {
    return packed(samplePackage(sheetCount, changed));
}

std::map<std::string, std::string> savedParts(IBookT<char>& book) {
    const char* data = nullptr;
    std::size_t size = 0;
    EXPECT_TRUE(book.saveMemory(&data, &size)) << book.errorMessage();
    return unpacked(std::string(data, size));
}

bool load(IBookT<char>& book, const std::string& bytes) {
    return book.loadMemory(bytes.data(), bytes.size());
}

}  // namespace vellum
