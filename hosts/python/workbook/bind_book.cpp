// Workbooks as Python sees them.
#include <pybind11/stl.h>

#include "hosts/python/values/texts.h"
#include "hosts/python/workbook/book_handle.h"

namespace pyhost {
namespace {

std::string plain(const py::str& text) {
    return std::string(textOf(text));
}

BookPtr load(const py::object& source, bool binary) {
    if (py::isinstance<py::bytes>(source)) return BookHandle::loadBytes(source, binary);
    return BookHandle::loadFile(plain(source), binary);
}

py::list sheetNames(BookHandle& self) {
    Book& book = self.use();
    py::list names;
    for (int i = 0; i < book.sheetCount(); ++i) names.append(pythonText(book.sheetNameAt(i)));
    return names;
}

/// Dictionaries of text, scope, hidden, builtin, sheet, area and formula.
py::list names(BookHandle& self) {
    auto* const known = dynamic_cast<vellum::IBookNames*>(&self.use());
    py::list made;
    const int count = known == nullptr ? 0 : known->nameTotal();
    for (int i = 0; i < count; ++i) {
        vellum::IBookNames::Name name;
        if (!known->nameAt(i, name)) continue;
        py::object area = py::none(), formula = py::none();
        if (name.sheet >= 0) area = py::make_tuple(name.rowFirst, name.rowLast, name.colFirst, name.colLast);
        if (name.formula) formula = pythonText(std::string_view(*name.formula));
        made.append(py::make_tuple(pythonText(std::string_view(name.text)), name.scope, name.hidden, name.builtIn,
                                   name.sheet, area, formula));
    }
    return made;
}

/// (kind, bytes)
py::tuple picture(BookHandle& self, int index) {
    const char* data = nullptr;
    std::size_t size = 0;
    const int kind = self.use().pictureAt(index, &data, &size);
    self.check(kind != vellum::pictureUnknown || data != nullptr);
    return py::make_tuple(kind, py::bytes(data, size));
}

int addPicture(BookHandle& self, const py::object& source) {
    int id = -1;
    if (py::isinstance<py::bytes>(source)) {
        const std::string_view view = py::reinterpret_borrow<py::bytes>(source);
        id = self.use().addPictureData(view.data(), view.size());
    } else {
        id = self.use().addPictureFile(plain(source).c_str());
    }
    self.check(id >= 0);
    return id;
}

int packColor(BookHandle& self, int red, int green, int blue) {
    self.speakRgb();
    const int color = self.use().packColor(red, green, blue);
    self.check(color != vellum::noColor);
    return color;
}

py::tuple unpackColor(BookHandle& self, int color) {
    int red = 0, green = 0, blue = 0;
    self.check(self.use().unpackColor(color, &red, &green, &blue));
    return py::make_tuple(red, green, blue);
}

FormatHandle newFormat(BookHandle& self, FormatHandle* like) {
    self.speakRgb();
    Format* const source = like == nullptr ? nullptr : like->of(self);
    Format* const made = self.use().newFormat(source);
    self.check(made != nullptr);
    return {self.shared_from_this(), made};
}

int numberFormat(BookHandle& self, const py::str& text) {
    const int id = self.use().newCustomNumFormat(plain(text).c_str());
    self.check(id != 0);
    return id;
}

}  // namespace

void bindBooks(py::module_& module) {
    py::register_exception<BookError>(module, "BookError");
    py::class_<BookHandle, BookPtr>(module, "BookHandle", "A workbook of the engine.")
        .def(py::init<bool>())
        .def_static("load", load)
        .def("save", [](BookHandle& self, const py::str& path) { self.saveFile(plain(path)); })
        .def("save_bytes", &BookHandle::saveBytes)
        .def("close", &BookHandle::close)
        .def("sheet", &BookHandle::sheetAt)
        .def("sheet_names", sheetNames)
        .def("sheet_kind", [](BookHandle& self, int index) { return self.use().sheetKindAt(index); })
        .def("add_sheet",
             [](BookHandle& self, int index, const py::str& name, const std::shared_ptr<SheetHandle>& source) {
                 return self.addSheet(index, plain(name), source);
             })
        .def("remove_sheet", &BookHandle::removeSheet)
        .def("move_sheet", [](BookHandle& self, int from, int to) { self.check(self.use().moveSheet(from, to)); })
        .def("active_sheet", [](BookHandle& self) { return self.use().activeSheetIndex(); })
        .def("set_active_sheet", [](BookHandle& self, int index) { self.check(self.use().setActiveSheetIndex(index)); })
        .def("names", names)
        .def("picture_count", [](BookHandle& self) { return self.use().pictureTotal(); })
        .def("picture", picture)
        .def("add_picture", addPicture)
        .def("new_format", newFormat)
        .def("number_format", numberFormat)
        .def("number_format_text",
             [](BookHandle& self, int id) { return pythonText(self.use().customNumFormatText(id)); })
        .def("pack_color", packColor)
        .def("unpack_color", unpackColor)
        .def_property_readonly("date1904", [](BookHandle& self) { return self.use().isDate1904(); })
        .def_property_readonly("is_closed", &BookHandle::isClosed)
        .def_property_readonly("is_binary", &BookHandle::isBinary);
}

}  // namespace pyhost
