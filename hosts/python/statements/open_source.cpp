#include "hosts/python/statements/open_source.h"

#include <utility>

#include "hosts/python/values/texts.h"

namespace pyhost {

Reports::Reports(refhost::Context& context)
    : messages(std::exchange(context.messages, {})),
      driver(std::exchange(context.driverReports, {})),
      own(std::exchange(context.ownReports, {})) {}

py::tuple Reports::asTuple() const {
    py::list texts, reports, ownTexts;
    for (const std::string& text : messages) texts.append(pythonText(std::string_view(text)));
    for (const refhost::DriverReport& report : driver)
        reports.append(py::make_tuple(report.code, pythonText(std::string_view(report.text))));
    for (const std::string& text : own) ownTexts.append(pythonText(std::string_view(text)));
    return py::make_tuple(texts, reports, ownTexts);
}

refhost::SourceName namedSource(refhost::Context& context, const std::string& source) {
    refhost::SourceName name = refhost::splitSource(context.host.module(), source);
    if (name.driver == nullptr)
        context.ownReports.push_back(name.prefix.empty() ? "'" + name.name + "' names no driver, as in csv:" + name.name
                                                         : "there is no driver '" + name.prefix + "'");
    return name;
}

py::tuple OpenSource::open(const SessionCorePtr& core, int number, const py::str& source, bool update) {
    const std::string text(textOf(source));
    refhost::Context& context = core->host().context(number);
    const refhost::Driver* driver = nullptr;
    void* handle = nullptr;
    Reports reports;
    {
        const std::unique_lock lock = core->locked(number);
        const py::gil_scoped_release unlocked;
        const refhost::SourceName name = namedSource(context, text);
        driver = name.driver;
        if (driver != nullptr) handle = refhost::openSource(context, *driver, name.name, update);
        reports = Reports(context);
    }
    py::object opened = py::none();
    if (handle != nullptr)
        opened = py::cast(std::shared_ptr<OpenSource>(new OpenSource(core, number, *driver, handle)));
    return py::make_tuple(opened) + reports.asTuple();
}

OpenSource::~OpenSource() {
    if (_handle == nullptr) return;
    const std::unique_lock lock = _core->locked(_context);
    closeUnlocked();
    Reports(_core->host().context(_context));
}

int OpenSource::closeUnlocked() {
    void* const handle = std::exchange(_handle, nullptr);
    const py::gil_scoped_release unlocked;
    return _driver.close(_core->host().context(_context).handle(), handle);
}

py::tuple OpenSource::close() {
    if (_handle == nullptr) throw py::value_error("this source is closed");
    int status = 0;
    Reports reports;
    {
        const std::unique_lock lock = _core->locked(_context);
        if (_handle == nullptr) throw py::value_error("this source is closed");
        status = closeUnlocked();
        reports = Reports(_core->host().context(_context));
    }
    return py::make_tuple(status) + reports.asTuple();
}

}  // namespace pyhost
