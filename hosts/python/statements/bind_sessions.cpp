// Statements of a session, with the interpreter's lock released while they run.

#include <malloc.h>

#include <numeric>
#include <utility>

#include "hosts/python/statements/container.h"
#include "hosts/python/statements/open_source.h"
#include "hosts/python/values/texts.h"
#include "refhost/operations/statement.h"

namespace pyhost {
namespace {

using Labelled = std::pair<std::optional<std::string>, ContainerPtr>;

/// Containers as they are during a statement.
class Entered {
public:
    Entered(const std::vector<Labelled>& items, bool writing) : _items(items) {
        for (const auto& [label, container] : items) {
            if (writing) {
                container->read();
                continue;
            }
            changeAll(*container);
        }
        for (const auto& [label, container] : items) _transfer.push_back({&container->enter(), label});
    }
    ~Entered() {
        for (const auto& [label, container] : _items) container->leave();
    }
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;
    const std::vector<refhost::TransferItem>& items() const { return _transfer; }

private:
    /// Refuses what something still looks at: the container, its index sets, and what a list of arrays holds.
    static void changeAll(const Container& container) {
        container.change();
        for (const ContainerPtr& set : container.sets()) set->change();
        for (const ContainerPtr& item : container.items()) changeAll(*item);
    }

    const std::vector<Labelled>& _items;
    std::vector<refhost::TransferItem> _transfer;
};

std::vector<Labelled> itemsOf(const SessionCore& core, const py::iterable& items, bool writing) {
    std::vector<Labelled> made;
    for (const py::handle item : items) {
        const auto [label, container] = py::cast<std::pair<py::object, ContainerPtr>>(item);
        if (container->core().get() != &core && !writing) throw py::value_error("this belongs to another session");
        made.emplace_back(std::nullopt, container);
        if (!label.is_none()) made.back().first = textOf(label);
    }
    return made;
}

/// What a large file took is given back to the system before Python makes objects of what was read.
void giveBackMemory(const std::vector<int>& counts) {
#ifdef __GLIBC__
    constexpr std::int64_t many = 100'000;  // values: reading them takes longer by far
    if (std::accumulate(counts.begin(), counts.end(), std::int64_t{0}) >= many) malloc_trim(0);
#else
    static_cast<void>(counts);
#endif
}

/// (status, counts, close, messages, driver reports, the host's own reports)
py::tuple transfer(const SessionCorePtr& core, int number, const py::str& source, bool writing,
                   const py::iterable& described) {
    const std::string sourceText(textOf(source));
    const std::vector<Labelled> items = itemsOf(*core, described, writing);
    refhost::Context& context = core->host().context(number);
    refhost::TransferResult result;
    Reports reports;
    {
        const std::unique_lock lock = core->locked(number);
        const Entered entered(items, writing);
        const py::gil_scoped_release unlocked;
        const refhost::SourceName name = namedSource(context, sourceText);
        if (name.driver != nullptr)
            result = refhost::transfer(context, *name.driver, name.name,
                                       writing ? refhost::Direction::write : refhost::Direction::read, entered.items());
        else if (!writing)
            result.counts.resize(items.size());
        reports = Reports(context);
        if (!writing) giveBackMemory(result.counts);
    }
    py::object close = py::none();
    if (result.close) close = py::int_(*result.close);
    return py::make_tuple(result.status, result.counts, close) + reports.asTuple();
}

void setParameters(SessionCore& core, int number, const std::optional<py::str>& realFormat, std::optional<bool> finish,
                   const std::vector<py::str>& denied) {
    std::optional<std::string> format;
    if (realFormat) format = textOf(*realFormat);
    std::vector<std::string> rules;
    for (const py::str& rule : denied) rules.emplace_back(textOf(rule));
    refhost::Context& context = core.host().context(number);
    const std::unique_lock lock = core.locked(number);
    if (format) context.realFormat = *format;
    if (finish) context.finishSets = *finish;
    for (const std::string& rule : rules) context.deny(rule);
}

py::dict drivers(SessionCore& core) {
    py::dict made;
    for (const refhost::Driver& driver : core.host().module().drivers()) made[py::str(driver.name)] = driver.usage;
    return made;
}

}  // namespace

void bindSessions(py::module_& module) {
    py::register_exception<refhost::ModuleError>(module, "ModuleError", PyExc_ImportError);
    py::class_<SessionCore, SessionCorePtr>(module, "SessionCore", "The host behind a session.")
        .def(py::init<const std::string&, const std::string&, const std::string&>())
        .def("transfer", transfer)
        .def("open", OpenSource::open)
        .def("set_parameters", setParameters)
        .def("add_record", &SessionCore::addRecord)
        .def("add_alias", [](SessionCore& core, const std::string& name,
                             HostType type) { return core.host().types.addAlias(name, type); })
        .def_property_readonly("drivers", drivers)
        .def_property_readonly("version", [](SessionCore& core) { return core.host().module().version(); });
    py::class_<OpenSource, std::shared_ptr<OpenSource>>(module, "OpenSource", "A file that is held open.")
        .def("close", &OpenSource::close)
        .def_property_readonly("is_open", &OpenSource::isOpen);
    module.attr("TYPE_ANY") = int{hostTypeAny};
    module.attr("TYPE_INTEGER") = int{hostTypeInteger};
    module.attr("TYPE_REAL") = int{hostTypeReal};
    module.attr("TYPE_TEXT") = int{hostTypeText};
    module.attr("TYPE_BOOLEAN") = int{hostTypeBoolean};
    module.attr("TYPE_DATE") = refhost::typeDate;
    module.attr("TYPE_DATE_INDEX") = SessionCore::dateIndexType;
    module.attr("TYPE_ANY_INDEX") = SessionCore::anyIndexType;
    module.attr("WORD_ARRAY") = int{hostClassArray};
    module.attr("WORD_UNION") = int{hostClassUnion};
    module.attr("FLAG_DYNAMIC") = int{hostFlagDynamic};
    module.attr("FLAG_EXPLICIT") = int{hostFlagExplicit};
    module.attr("CLASS_SET") = int{hostClassSet};
    module.attr("CLASS_LIST") = int{hostClassList};
    module.attr("CLASS_ARRAY") = int{hostClassArray};
}

}  // namespace pyhost
