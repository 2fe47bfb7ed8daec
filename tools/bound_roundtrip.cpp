// bound_roundtrip IN OUT: binds every file of the folder IN as the part that its root element says, and writes it
// anew into OUT. A line for each: name, root element ("-" when no class binds it), code and where it failed.
// compare_parts.py drives it over packages.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "bindery/binderyparse/reader.h"
#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/values/error.h"
#include "bindery/writer/xml_writer.h"
#include "ooxml/generated/ctrlProps/ctrlProps.h"
#include "ooxml/generated/dml-main-strict/dml-main-strict.h"
#include "ooxml/generated/dml-main/dml-main.h"
#include "ooxml/generated/dml-spreadsheetDrawing/dml-spreadsheetDrawing.h"
#include "ooxml/generated/opc-contentTypes/opc-contentTypes.h"
#include "ooxml/generated/opc-relationships/opc-relationships.h"
#include "ooxml/generated/sml-comments/sml-comments.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "ooxml/generated/strictDrawing/strictDrawing.h"

namespace {

using Reader = bindery::c_keeping_reader<bindery::c_xml_reader_memory>;

constexpr const bindery::RootInfo* roots[] = {&sheet::c_workbook::root,
                                              &sheet::c_worksheet::root,
                                              &sheet::c_styleSheet::root,
                                              &sheet::c_sst::root,
                                              &sheet::c_table::root,
                                              &comments::c_comments::root,
                                              &strict::c_workbook::root,
                                              &strict::c_worksheet::root,
                                              &strict::c_styleSheet::root,
                                              &strict::c_sst::root,
                                              &strict::c_table::root,
                                              &strict::c_comments::root,
                                              &dml_main::c_theme::root,
                                              &dml_main_strict::c_theme::root,
                                              &drawing::c_wsDr::root,
                                              &strictdrawing::c_wsDr::root,
                                              &contentypes::c_Types::root,
                                              &relationships::c_Relationships::root,
                                              &ctrlProps::c_formControlPr::root};

std::string_view uriOf(const bindery::RootInfo& root) {
    for (const auto& entry : root.namespaces)
        if (entry.id == root.ns) return entry.uri;
    return {};
}

const bindery::RootInfo* rootOf(std::string_view bytes) {
    Reader reader(bytes);
    if (reader.nextRoot() != bindery::token_start_tag) return nullptr;
    for (const auto* root : roots)
        if (reader.elementLocal() == root->name && reader.uriOf(reader.elementNamespace()) == uriOf(*root)) return root;
    return nullptr;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void bind(const std::filesystem::path& from, const std::filesystem::path& to) {
    const std::string bytes = contentOf(from);
    std::cout << from.filename().string() << '\t';
    const bindery::RootInfo* const root = rootOf(bytes);
    if (root == nullptr) {
        std::cout << "-\n";
        return;
    }
    std::cout << root->name << '\t';
    const std::unique_ptr<bindery::c_node> object(root->type->create());
    Reader reader(bytes);
    if (const int code = bindery::unmarshalRoot(reader, *object, *root)) {
        const bindery::c_error& e = reader.error();
        std::cout << code << '\t' << bindery::errorText(code) << " at " << e.item << ", line " << e.xmlLine << " ("
                  << e.file << ':' << e.line << ")\n";
        return;
    }
    bindery::c_xml_writer writer;
    if (const int code = bindery::marshalRoot(writer, *object, *root)) {
        std::cout << code << "\twriting: " << bindery::errorText(code) << " at " << writer.error().item << '\n';
        return;
    }
    std::ofstream(to, std::ios::binary) << writer.take();
    std::cout << "0\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: bound_roundtrip IN OUT\n";
        return 2;
    }
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        bind(entry.path(), std::filesystem::path(argv[2]) / entry.path().filename());
    return 0;
}
