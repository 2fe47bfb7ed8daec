#include "hosts/python/values/to_python.h"

#include "hosts/python/values/dates.h"
#include "hosts/python/values/texts.h"

namespace pyhost {

py::object ValueMaker::make(HostType type, HostValue value) {
    switch (_types.resolve(type)) {
        case hostTypeInteger:
            return py::int_(value.integer);
        case hostTypeReal:
            return py::float_(value.real);
        case hostTypeText:
            return makeText(value.text);
        case hostTypeBoolean:
            return py::bool_(value.integer != 0);
        default:
            return makeObject(static_cast<const refhost::Object*>(value.object));
    }
}

py::object ValueMaker::makeText(const char* text) {
    if (text == nullptr) return py::none();
    return _texts.find(reinterpret_cast<std::uintptr_t>(text), [&] { return pythonText(text); });
}

py::object ValueMaker::makeObject(const refhost::Object* object) {
    if (object == nullptr) return py::none();
    switch (object->kind) {
        case refhost::ObjectKind::date:
            return pythonDate(static_cast<const refhost::DateObject*>(object)->date);
        case refhost::ObjectKind::anyUnion: {
            const auto* any = static_cast<const refhost::UnionObject*>(object);
            if (any->holds == hostTypeAny) return py::none();
            return any->held() != nullptr ? makeObject(any->held()) : make(any->holds, any->value);
        }
        case refhost::ObjectKind::record:
            break;
    }
    const auto* record = static_cast<const refhost::RecordObject*>(object);
    py::tuple fields(record->fields.size());
    for (std::size_t i = 0; i < record->fields.size(); ++i)
        fields[i] = make(record->info.fields[i].type, record->fields[i]);
    return _classes(record->type)(*fields);
}

}  // namespace pyhost
