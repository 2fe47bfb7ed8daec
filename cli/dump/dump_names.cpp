#include "cli/dump/dump_names.h"

namespace cli {

namespace {

using Name = vellum::IBookNames::Name;

const char* jsonBool(bool value) {
    return value ? "true" : "false";
}

void area(const Name& name, JsonLines& out) {
    if (name.sheet < 0) {
        out.raw("null");
        return;
    }
    out.raw(R"({"sheet":)").integer(name.sheet).raw(R"(,"cells":[)").integer(name.rowFirst).raw(",");
    out.integer(name.colFirst).raw(",").integer(name.rowLast).raw(",").integer(name.colLast).raw("]}");
}

void line(const Name& name, JsonLines& out) {
    out.raw(R"({"name":{"text":)").text(name.text).raw(R"(,"scope":)");
    name.scope < 0 ? out.raw("null") : out.integer(name.scope);
    out.raw(R"(,"hidden":)").raw(jsonBool(name.hidden)).raw(R"(,"builtIn":)").raw(jsonBool(name.builtIn));
    out.raw(R"(,"area":)");
    area(name, out);
    out.raw(R"(,"formula":)");
    name.formula ? out.text(*name.formula) : out.raw("null");
    out.raw("}}").endLine();
}

}  // namespace

void dumpNames(vellum::IBookT<char>& book, JsonLines& out) {
    auto* const names = dynamic_cast<vellum::IBookNames*>(&book);
    const int total = names ? names->nameTotal() : 0;
    for (int i = 0; i < total; ++i) {
        Name name;
        if (names->nameAt(i, name)) line(name, out);
    }
}

}  // namespace cli
