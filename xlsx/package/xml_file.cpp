#include "xlsx/package/xml_file.h"

#include <ostream>

#include "bindery/binderyparse/reader.h"
#include "bindery/values/error.h"
#include "bindery/writer/xml_writer.h"
#include "engine/failure/vlerror.h"
#include "xlsx/package/messages.h"

namespace vellum {
namespace {

void raise(int code) {
    if (code != bindery::no_error) throw vlerror(bindery::errorText(code));
}

}  // namespace

void XmlFileBase::read(const PartBytes& part) {
    std::vector<char> fromFile;
    std::string_view bytes = part.memory;
    if (part.path) {
        fromFile = BinaryFile::readWhole(*part.path);
        bytes = {fromFile.data(), fromFile.size()};
    }
    if (bytes.empty()) throw vlerror(xlsx::msg::dataEmpty);
    bindery::c_keeping_reader<bindery::c_xml_reader_memory> reader(bytes);
    raise(unmarshalRoot(reader));
}

void XmlFileBase::writeToStream(std::ostream& out) {
    beforeWrite();
    bindery::c_keeping_writer writer([&out](std::string_view piece) {
        out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
        return out.good();
    });
    const int code = marshalRoot(writer);
    if (writer.sinkFailed()) return;  // the stream tells
    raise(code);
}

void XmlFileBase::writeToPath(std::string& path) {
    if (!path.empty()) return writeToFile(path);
    beforeWrite();
    bindery::c_keeping_writer writer;
    raise(marshalRoot(writer));
    path = writer.take();
}

}  // namespace vellum
