#include "cli/explain/facts/json_value.h"

#include "cli/explain/facts/sheet_view.h"
#include "host/values/column_types.h"
#include "refhost/operations/host.h"
#include "refhost/operations/host_operations.h"
#include "refhost/report/print_json.h"

namespace cli::explain {

std::string jsonText(std::string_view text) {
    std::string out;
    refhost::appendJsonText(out, text);
    return out;
}

std::string jsonValue(refhost::Context& context, HostType type, const HostValue& value) {
    const refhost::TypeRegistry& types = context.host.types;
    std::string out;
    if (type == hostTypeAny || quillet::isBaseType(type)) {
        refhost::appendJson(out, types, type, value);
        return out;
    }
    const char* const text = value.text != nullptr ? value.text : "";
    const refhost::ObjectPtr object = refhost::createObject(types, type);
    if (!object || !refhost::objectFromText(context, *object, text)) return jsonText(text);
    HostValue made = {.bits = 0};
    made.object = object.get();
    refhost::appendJson(out, types, type, made);
    return out;
}

std::string jsonHeld(refhost::Context& context, const quillet::RangeSpec& range, int row, int col) {
    HostValue value = {.bits = 0};
    switch (range.ops.cellKind(range.sheet, row, col)) {
        case quillet::cellNumber:
            value.real = range.ops.readReal(range.sheet, row, col, nullptr);
            return jsonValue(context, hostTypeReal, value);
        case quillet::cellText: {
            const char* const text = range.ops.readText(range.sheet, row, col, nullptr);
            return jsonText(text != nullptr ? text : "");
        }
        case quillet::cellBoolean:
            value.integer = range.ops.readBool(range.sheet, row, col, nullptr) != 0 ? 1 : 0;
            return jsonValue(context, hostTypeBoolean, value);
        case quillet::cellError:
            return jsonText(errorIn(range, row, col));
        default:
            return "null";
    }
}

}  // namespace cli::explain
