// The extension module behind the package `quillet`.
#include "hosts/python/statements/container.h"
#include "hosts/python/statements/session_core.h"
#include "hosts/python/values/dates.h"
#include "hosts/python/workbook/book_handle.h"

PYBIND11_MODULE(_quillet, module) {
    module.doc() = "What the package quillet is made of; not to be used by itself.";
    pyhost::loadDates();
    pyhost::bindContainers(module);
    pyhost::bindSessions(module);
    pyhost::bindFormats(module);
    pyhost::bindSheets(module);
    pyhost::bindBooks(module);
}
