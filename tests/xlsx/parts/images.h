// Small images, and packages that hold drawings.
#pragma once
#include <unistd.h>

#include <fstream>
#include <map>
#include <string>

#include "tests/xlsx/book/package.h"

namespace vellum::test {

using namespace std::string_literals;

inline std::string bigEndian(unsigned value) {
    std::string out;
    for (const int shift : {24, 16, 8, 0}) out += static_cast<char>(value >> shift);
    return out;
}
inline std::string pngOf(unsigned width, unsigned height, unsigned pixelsPerMetre = 0) {
    std::string png = "\x89PNG\r\n\x1A\n\0\0\0\xDIHDR"s + bigEndian(width) + bigEndian(height) + "\x8\x6\0\0\0crc!"s;
    if (pixelsPerMetre) {
        png += "\0\0\0\x9pHYs"s + bigEndian(pixelsPerMetre) + bigEndian(pixelsPerMetre) + "\x1"s + "crc!";
    }
    return png + "\0\0\0\0IEND\xAE\x42\x60\x82"s;
}
inline const std::string jpeg40x30 = "\xFF\xD8\xFF\xC0\0\xB\x8\0\x1E\0\x28\x1\x1\x11\0\xFF\xD9"s;
inline const std::string gif5x2 = "GIF89a\x5\0\x2\0;"s;
inline const std::string bmp3x4 = "BM"s + std::string(12, '\0') + "\x28\0\0\0\x3\0\0\0\x4\0\0\0\x1\0\x18\0"s;
inline const std::string wmf96x48 = "\xD7\xCD\xC6\x9A\0\0\0\0\0\0\xA0\x5\xD0\x2\xA0\x5\0\0\0\0\0\0\x1\0\x9\0"s;
inline const std::string bareWmf = "\x1\0\x9\0\0\x3"s;
inline const std::string emf8x9 = "\x1\0\0\0\x58\0\0\0\0\0\0\0\0\0\0\0\x7\0\0\0\x8\0\0\0"s + std::string(16, '\0');
inline const std::string tiff7x6 = "II*\0\x8\0\0\0\x2\0\0\x1\x3\0\x1\0\0\0\x7\0\0\0\x1\x1\x3\0\x1\0\0\0\x6\0\0\0"s;

inline int addPicture(IBookT<char>& book, const std::string& bytes) {
    return book.addPictureData(bytes.data(), bytes.size());
}

inline std::string fileOf(const std::string& name, const std::string& bytes) {
    // Tests of both dialects may run at once.
    const std::string path = testing::TempDir() + std::to_string(getpid()) + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

struct Namespaces {
    std::string sheet, drawing, main, relationships;
};
inline Namespaces namespacesOf(bool strict) {
    if (strict) {
        return {"http://purl.oclc.org/ooxml/spreadsheetml/main",
                "http://purl.oclc.org/ooxml/drawingml/spreadsheetDrawing", "http://purl.oclc.org/ooxml/drawingml/main",
                "http://purl.oclc.org/ooxml/officeDocument/relationships"};
    }
    return {"http://schemas.openxmlformats.org/spreadsheetml/2006/main",
            "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing",
            "http://schemas.openxmlformats.org/drawingml/2006/main",
            "http://schemas.openxmlformats.org/officeDocument/2006/relationships"};
}

/// A package whose first sheet has what `inSheet` says, and these parts; `relationships` are those of the sheet:
/// "type target" by Id. A part's content type is that of its name's ending, "drawing" and so on.
class ObjectPackage {
public:
    explicit ObjectPackage(bool strict = false) : ns(namespacesOf(strict)), _strict(strict) {}

    Namespaces ns;
    std::string inSheet;
    std::map<std::string, std::string> sheetRelationships;
    std::map<std::string, std::string> parts;
    std::map<std::string, std::string> overrides;

    void addDrawing(const std::string& anchors, const std::map<std::string, std::string>& relationships = {}) {
        inSheet += "<drawing r:id=\"rId1\"/>";
        sheetRelationships["rId1"] = "drawing ../drawings/drawing1.xml";
        parts["xl/drawings/drawing1.xml"] =
            "<xdr:wsDr xmlns:xdr=\"" + ns.drawing + "\" xmlns:a=\"" + ns.main + "\" xmlns:r=\"" + ns.relationships +
            "\" xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">" + anchors + "</xdr:wsDr>";
        overrides["/xl/drawings/drawing1.xml"] = "application/vnd.openxmlformats-officedocument.drawing+xml";
        if (!relationships.empty()) parts["xl/drawings/_rels/drawing1.xml.rels"] = rels(relationships);
    }
    void addComments(const std::string& content) {
        sheetRelationships["rId7"] = "comments ../comments1.xml";
        parts["xl/comments1.xml"] = "<comments xmlns=\"" + ns.sheet + "\">" + content + "</comments>";
        overrides["/xl/comments1.xml"] = "application/vnd.openxmlformats-officedocument.spreadsheetml.comments+xml";
    }
    void addControl(int number, const std::string& attributes, const std::string& content = {}) {
        const std::string name = "ctrlProp" + std::to_string(number) + ".xml";
        sheetRelationships["rId" + std::to_string(20 + number)] = "ctrlProp ../ctrlProps/" + name;
        parts["xl/ctrlProps/" + name] =
            "<formControlPr xmlns=\"http://schemas.microsoft.com/office/spreadsheetml/2009/9/main\" " + attributes +
            ">" + content + "</formControlPr>";
        overrides["/xl/ctrlProps/" + name] = "application/vnd.ms-excel.controlproperties+xml";
    }

    std::string bytes() const {
        auto changed = parts;
        changed["xl/worksheets/sheet1.xml"] =
            "<worksheet xmlns=\"" + ns.sheet + "\" xmlns:r=\"" + ns.relationships +
            "\" xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\"><sheetData/>" + inSheet +
            "</worksheet>";
        changed["xl/workbook.xml"] = workbookXml(1, {}, _strict);
        if (!sheetRelationships.empty()) changed["xl/worksheets/_rels/sheet1.xml.rels"] = rels(sheetRelationships);
        for (const auto& [name, content] : samplePackage(1)) {
            if (name != "[Content_Types].xml") continue;
            std::string types = content.substr(0, content.size() - 8) +
                                R"(<Default Extension="png" ContentType="image/png"/>)"
                                R"(<Default Extension="svg" ContentType="image/svg+xml"/>)";
            for (const auto& [part, type] : overrides) {
                types += "<Override PartName=\"" + part + "\" ContentType=\"" + type + "\"/>";
            }
            changed[name] = types + "</Types>";
        }
        return packed(samplePackage(1, changed));
    }

    std::string rels(const std::map<std::string, std::string>& relationships) const {
        std::string xml = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
        for (const auto& [id, typeAndTarget] : relationships) {
            const std::size_t blank = typeAndTarget.find(' ');
            xml += "<Relationship Id=\"" + id + "\" Type=\"" + ns.relationships + "/" + typeAndTarget.substr(0, blank) +
                   "\" Target=\"" + typeAndTarget.substr(blank + 1) + "\"/>";
        }
        return xml + "</Relationships>";
    }

    /// The book, loaded, with its texts in UTF-8.
    BookPtr book() const {
        BookPtr loaded = newBook();
        const std::string archive = bytes();
        EXPECT_TRUE(load(*loaded, archive)) << loaded->errorMessage();
        loaded->setLocale("UTF-8");
        return loaded;
    }

private:
    bool _strict;
};

inline std::string marker(const std::string& name, int col, int colOff, int row, int rowOff) {
    const auto element = [](const char* tag, int value) {
        return "<xdr:"s + tag + ">" + std::to_string(value) + "</xdr:" + tag + ">";
    };
    return "<xdr:" + name + ">" + element("col", col) + element("colOff", colOff) + element("row", row) +
           element("rowOff", rowOff) + "</xdr:" + name + ">";
}
inline std::string extent(long cx, long cy) {
    return "<xdr:ext cx=\"" + std::to_string(cx) + "\" cy=\"" + std::to_string(cy) + "\"/>";
}
inline std::string pic(const std::string& blip = "r:embed=\"rId1\"") {
    return "<xdr:pic><xdr:nvPicPr><xdr:cNvPr id=\"2\" name=\"p\"/><xdr:cNvPicPr/></xdr:nvPicPr><xdr:blipFill><a:blip " +
           blip + "/></xdr:blipFill><xdr:spPr/></xdr:pic><xdr:clientData/>";
}
inline std::string twoCell(const std::string& object, int row = 0, int col = 0) {
    return "<xdr:twoCellAnchor>" + marker("from", col, 0, row, 0) + marker("to", col + 1, 0, row + 1, 0) + object +
           "</xdr:twoCellAnchor>";
}
inline const std::string plainShape = "<xdr:sp/><xdr:clientData/>";

}  // namespace vellum::test
