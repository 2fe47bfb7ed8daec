#include "refhost/run/script_run.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "refhost/report/progress.h"
#include "refhost/script/script_values.h"

namespace refhost {

RunStatus runScript(Host& host, std::string_view script, const RunOptions& options, std::ostream& out,
                    std::ostream& err) {
    std::vector<Statement> statements;
    try {
        statements = parseScript(script, host.types);
    } catch (const ScriptError& e) {
        if (!options.name.empty()) err << options.name << ": ";
        err << "line " << e.at.line << ", column " << e.at.column << ": " << e.what() << "\n";
        return runNotUnderstood;
    }
    const auto reporter = options.json ? jsonReporter(host.types, out, err) : peopleReporter(host.types, out, err);
    Interpreter interpreter(host, *reporter, options.progress ? &err : nullptr);
    interpreter.tellStale(options.stale);
    bool ok = true;
    for (const Statement& statement : statements) ok = interpreter.run(statement) && ok;
    ok = interpreter.closeAll() && ok;
    if (!out.flush()) {
        err << "cannot write the results\n";
        ok = false;
    }
    return ok ? runOk : runFailed;
}

Interpreter::~Interpreter() {
    closeAll();
}

bool Interpreter::run(const Statement& statement) {
    try {
        return std::visit([&](const auto& what) { return run(statement.at, what); }, statement.what);
    } catch (const ScriptError& e) {
        _reporter.failed(e.at, e.what());
    } catch (const std::exception& e) {
        _reporter.failed(statement.at, e.what());
    }
    return false;
}

Report Interpreter::taken(Context& from) {
    return {std::exchange(from.messages, {}), std::exchange(from.driverReports, {}), std::exchange(from.ownReports, {}),
            _stale ? _stale() : std::nullopt, std::exchange(from.fresh, std::nullopt)};
}

const Driver* Interpreter::driverOf(const SourceName& name, Context& context) const {
    if (!name.driver)
        context.ownReports.push_back(name.prefix.empty() ? "'" + name.name + "' names no driver, as in csv:" + name.name
                                                         : "there is no driver '" + name.prefix + "'");
    return name.driver;
}

bool Interpreter::run(Position at, const DeclareStatement& statement) {
    const VariableLookup lookup = [&](const std::string& name) -> Variable& { return *_variables.at(name); };
    std::unique_ptr<Variable>& variable = _variables[statement.name];
    try {
        variable = makeVariable(statement, at, context(), lookup);
    } catch (const std::exception&) {
        DeclareStatement bare{statement.name, statement.spec, {}};  // later statements find it without its value
        bare.value.emplace();
        bare.value->kind = Literal::null;
        if (statement.spec.form == Form::scalar) bare.value.reset();
        variable = makeVariable(bare, at, context(), lookup);
        throw;
    }
    return true;
}

bool Interpreter::run(Position at, const TransferStatement& statement) {
    const SourceName name = splitSource(_host.module(), statement.source);
    TransferResult result;
    if (const Driver* driver = driverOf(name, context())) {
        std::vector<TransferItem> items;
        for (const ItemSpec& item : statement.items) items.push_back({_variables.at(item.name).get(), item.label});
        const Progress progress(_progress, at.line, context());
        result = transfer(context(), *driver, name.name, statement.write ? Direction::write : Direction::read, items);
    } else if (!statement.write) {
        result.counts.resize(statement.items.size());
    }
    _reporter.transferred(at, statement, result, taken());
    return result.ok();
}

bool Interpreter::run(Position at, const OpenStatement& statement) {
    const SourceName name = splitSource(_host.module(), statement.source);
    const Driver* driver = driverOf(name, context());
    void* handle = nullptr;
    if (driver) {
        const Progress progress(_progress, at.line, context());
        handle = openSource(context(), *driver, name.name, statement.update);
    }
    if (handle)
        _open.push_back({&context(), driver, statement.source, handle, std::exchange(context().workbookToChange, {})});
    _reporter.sourceDone(at, "open", statement.source, handle ? 0 : -1, taken());
    return handle != nullptr;
}

bool Interpreter::run(Position at, const CloseStatement& statement) {
    // The last one opened, should the script have opened it twice.
    const auto found = std::find_if(_open.rbegin(), _open.rend(), [&](const OpenSource& open) {
        return open.context == &context() && open.source == statement.source;
    });
    int status = -1;
    bool fresh = true;
    if (found == _open.rend()) {
        context().ownReports.push_back("'" + statement.source + "' is not open");
    } else {
        const Progress progress(_progress, at.line, context());
        status = found->driver->close(context().handle(), found->handle);
        const std::string changed = std::move(found->changed);
        _open.erase(std::next(found).base());
        if (status == 0) fresh = refresh(context(), changed);
    }
    _reporter.sourceDone(at, "close", statement.source, status, taken());
    return status == 0 && fresh;
}

bool Interpreter::run(Position, const ContextStatement& statement) {
    _context = statement.number;
    return true;
}

bool Interpreter::run(Position, const PrintStatement& statement) {
    _reporter.printed(*_variables.at(statement.name));
    return true;
}

bool Interpreter::run(Position, const ParamStatement& statement) {
    switch (statement.kind) {
        case ParamStatement::realFormat:
            context().realFormat = statement.text;
            break;
        case ParamStatement::finish:
            context().finishSets = statement.flag;
            break;
        case ParamStatement::deny:
            context().deny(statement.text);
            break;
    }
    return true;
}

Variable* Interpreter::variable(const std::string& name) {
    const auto found = _variables.find(name);
    return found == _variables.end() ? nullptr : found->second.get();
}

bool Interpreter::closeAll() {
    bool ok = true;
    while (!_open.empty()) {
        const OpenSource last = std::move(_open.back());
        _open.pop_back();
        if (last.driver->close(last.context->handle(), last.handle) != 0) {
            _reporter.failed({}, "'" + last.source + "' could not be closed");
            ok = false;
        } else if (_host.afterSave && !last.changed.empty()) {
            ok = refresh(*last.context, last.changed) && ok;
            _reporter.sourceDone({}, "close", last.source, 0, taken(*last.context));
        }
    }
    return ok;
}

}  // namespace refhost
