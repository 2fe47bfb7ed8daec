#include "refhost/report/print_json.h"

#include <cmath>
#include <cstring>
#include <utility>

#include "refhost/values/format_real.h"
#include "refhost/values/utf8.h"

namespace refhost {
namespace {

enum class Inside { plain, any };  // inside of any, a real is told from an integer

class JsonPrinter {
public:
    JsonPrinter(std::string& out, const TypeRegistry& types) : _out(out), _types(types) {}

    void variable(const Variable& variable) {
        switch (variable.form) {
            case Form::scalar:
                value(variable.elementType(), variable.value);
                break;
            case Form::set:
                set(variable.set.get());
                break;
            case Form::list:
                list(variable.list.get());
                break;
            case Form::array:
                array(variable.array.get());
                break;
        }
    }

    void value(HostType type, HostValue slot, Inside inside = Inside::plain) {
        switch (type) {
            case hostTypeInteger:
                _out += std::to_string(slot.integer);
                break;
            case hostTypeReal:
                real(slot.real, inside);
                break;
            case hostTypeText:
                appendJsonText(_out, slot.text);
                break;
            case hostTypeBoolean:
                _out += slot.integer ? "true" : "false";
                break;
            default:
                object(static_cast<const Object*>(slot.object));
        }
    }

private:
    void real(double number, Inside inside) {
        char text[32];
        const std::string_view shown(text, static_cast<std::size_t>(shortestReal(text, number)));
        if (!std::isfinite(number)) return appendJsonText(_out, shown);
        _out += shown;
        if (inside == Inside::any && shown.find_first_of(".e") == shown.npos) _out += ".0";
    }

    void object(const Object* object) {
        if (!object) {
            _out += "null";
            return;
        }
        switch (object->kind) {
            case ObjectKind::date: {
                char text[maxDateText];
                const int length = printDate(static_cast<const DateObject*>(object)->date, text);
                appendJsonText(_out, length > 0 ? text : nullptr);
                break;
            }
            case ObjectKind::anyUnion: {
                const auto* any = static_cast<const UnionObject*>(object);
                if (any->holds == hostTypeAny)
                    _out += "null";
                else
                    value(any->holds, any->value, Inside::any);
                break;
            }
            case ObjectKind::record: {
                const auto* record = static_cast<const RecordObject*>(object);
                _out += '{';
                for (std::size_t i = 0; i < record->fields.size(); ++i) {
                    if (i) _out += ',';
                    appendJsonText(_out, record->info.fields[i].name);
                    _out += ':';
                    value(record->info.fields[i].type, record->fields[i]);
                }
                _out += '}';
                break;
            }
        }
    }

    void set(const Set* set) {
        if (!set) {
            _out += "null";
            return;
        }
        _out += '[';
        for (std::int64_t index = set->first(); index <= set->last(); ++index) {
            if (index > set->first()) _out += ',';
            value(kindOf(set->elementType()), set->element(static_cast<int>(index)));
        }
        _out += ']';
    }

    void list(const List* list) {
        if (!list) {
            _out += "null";
            return;
        }
        _out += '[';
        const char* separator = "";
        for (const ListItem& item : list->items()) {
            _out += std::exchange(separator, ",");
            switch (item.type & hostClassMask) {
                case hostClassArray:
                    array(static_cast<Array*>(item.value.object));
                    break;
                case hostClassSet:
                    set(static_cast<const Set*>(item.value.object));
                    break;
                case hostClassList:
                    this->list(static_cast<const List*>(item.value.object));
                    break;
                default:
                    value(item.type, item.value);
            }
        }
        _out += ']';
    }

    void array(Array* array) {
        if (!array) {
            _out += "null";
            return;
        }
        _out += '[';
        std::vector<int> tuple(static_cast<std::size_t>(array->dims()));
        const char* separator = "";
        for (bool more = array->firstEntry(tuple.data()); more; more = array->nextEntry(tuple.data())) {
            _out += std::exchange(separator, ",");
            _out += "[[";
            for (std::size_t d = 0; d < tuple.size(); ++d) {
                if (d) _out += ',';
                const Set& set = *array->sets()[d];
                value(kindOf(set.elementType()), set.element(tuple[d]));
            }
            _out += "],";
            value(kindOf(array->elementType()), array->get(tuple.data()));
            _out += ']';
        }
        _out += ']';
    }

    HostType kindOf(HostType type) const { return _types.resolve(type); }

    std::string& _out;
    const TypeRegistry& _types;
};

}  // namespace

void appendJsonText(std::string& out, const char* text) {
    if (text)
        appendJsonText(out, std::string_view(text));
    else
        out += "null";
}

void appendJsonText(std::string& out, std::string_view text) {
    out += '"';
    for (std::size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += text[i++];
        } else if (c < 0x20 || c == 0x7f) {
            constexpr std::string_view plain = "\n\t\r", letters = "ntr";
            const std::size_t which = plain.find(text[i++]);
            if (which != plain.npos) {
                out += '\\';
                out += letters[which];
            } else {
                constexpr char hex[] = "0123456789abcdef";
                out += "\\u00";
                out += hex[c >> 4];
                out += hex[c & 15];
            }
        } else if (c < 0x80) {
            out += text[i++];
        } else if (const std::size_t length = utf8Length(text.substr(i))) {
            out += text.substr(i, length);
            i += length;
        } else {
            out += "\xEF\xBF\xBD";
            ++i;
        }
    }
    out += '"';
}

void appendJson(std::string& out, const TypeRegistry& types, HostType type, HostValue value) {
    JsonPrinter(out, types).value(type, value);
}

void appendJson(std::string& out, const TypeRegistry& types, const Variable& variable) {
    JsonPrinter(out, types).variable(variable);
}

}  // namespace refhost
