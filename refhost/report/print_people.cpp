#include "refhost/report/print_people.h"

#include <algorithm>
#include <map>

#include "refhost/report/text_table.h"
#include "refhost/values/format_real.h"

namespace refhost {
namespace {

constexpr std::size_t lineWidth = 100;
constexpr int maxGridColumns = 12;

class PeoplePrinter {
public:
    explicit PeoplePrinter(const TypeRegistry& types) : _types(types) {}

    std::string variable(const Variable& variable) {
        _out.clear();
        switch (variable.form) {
            case Form::scalar:
                scalar(variable);
                break;
            case Form::set:
                variable.set ? set(variable.name, *variable.set) : uninitialised(variable.name);
                break;
            case Form::list:
                variable.list ? list(variable.name, *variable.list) : uninitialised(variable.name);
                break;
            case Form::array:
                variable.array ? array(variable.name, *variable.array, variable.indexNames)
                               : uninitialised(variable.name);
                break;
        }
        return std::move(_out);
    }

private:
    void uninitialised(const std::string& name) { _out += name + ": uninitialised\n"; }

    std::string cell(HostType type, HostValue value) const {
        char number[40];
        switch (_types.resolve(type)) {
            case hostTypeInteger:
                return std::to_string(value.integer);
            case hostTypeReal:
                formatReal(number, sizeof number, "%.15g", value.real);
                return number;
            case hostTypeText:
                return value.text ? shownText(value.text) : "";
            case hostTypeBoolean:
                return value.integer ? "true" : "false";
            default:
                break;
        }
        const auto* object = static_cast<const Object*>(value.object);
        if (!object) return "";
        switch (object->kind) {
            case ObjectKind::date: {
                char text[maxDateText];
                printDate(static_cast<const DateObject*>(object)->date, text);
                return text;
            }
            case ObjectKind::anyUnion: {
                const auto* any = static_cast<const UnionObject*>(object);
                return any->holds == hostTypeAny ? "" : cell(any->holds, any->value);
            }
            case ObjectKind::record: {
                std::vector<std::string> row;
                recordCells(object, static_cast<const RecordObject*>(object)->info, row);
                std::string text = "(";
                for (const std::string& field : row) text += (text.size() > 1 ? ", " : "") + field;
                return text + ")";
            }
        }
        return "";
    }

    const TypeInfo* recordInfo(HostType type) const {
        const TypeInfo* info = _types.resolved(type);
        return info && info->classWord == hostClassRecord ? info : nullptr;
    }

    /// Names of a record's columns; nested fields as "outer.inner".
    void recordHeader(const TypeInfo& info, const std::string& prefix, std::vector<std::string>& header) const {
        for (const RecordField& field : info.fields) {
            if (const TypeInfo* nested = recordInfo(field.type))
                recordHeader(*nested, prefix + field.name + ".", header);
            else
                header.push_back(prefix + field.name);
        }
    }

    void recordCells(const Object* object, const TypeInfo& info, std::vector<std::string>& row) const {
        const auto* record = static_cast<const RecordObject*>(object);
        for (std::size_t i = 0; i < info.fields.size(); ++i) {
            const HostValue value = record ? record->fields[i] : HostValue{};
            if (const TypeInfo* nested = recordInfo(info.fields[i].type))
                recordCells(static_cast<const Object*>(value.object), *nested, row);
            else
                row.push_back(record ? cell(info.fields[i].type, value) : "");
        }
    }

    void valueHeader(HostType type, std::vector<std::string>& header) const {
        if (const TypeInfo* info = recordInfo(type))
            recordHeader(*info, "", header);
        else
            header.push_back("value");
    }

    void valueCells(HostType type, HostValue value, std::vector<std::string>& row) const {
        if (const TypeInfo* info = recordInfo(type))
            recordCells(static_cast<const Object*>(value.object), *info, row);
        else
            row.push_back(cell(type, value));
    }

    void scalar(const Variable& variable) {
        const HostType type = variable.elementType();
        if (recordInfo(type)) {
            TextTable table(headerOf(type));
            std::vector<std::string> row;
            valueCells(type, variable.value, row);
            table.add(std::move(row));
            _out += variable.name + "\n";
            return table.print(_out);
        }
        _out += variable.name + " = " + cell(type, variable.value) + "\n";
    }

    std::vector<std::string> headerOf(HostType type) const {
        std::vector<std::string> header;
        valueHeader(type, header);
        return header;
    }

    static std::string counted(std::size_t count, const char* thing) {
        return std::string(" (")
            .append(std::to_string(count))
            .append(" ")
            .append(thing)
            .append(count == 1 ? ")" : "s)");
    }

    /// Texts one after the other, wrapped.
    void wrapped(std::string head, const std::vector<std::string>& texts) {
        std::string line = head + ":";
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const std::string text = " " + texts[i] + (i + 1 < texts.size() ? "," : "");
            if (shownWidth(line) + shownWidth(text) > lineWidth && line != " ") {
                _out += line + "\n";
                line.assign(1, ' ');
            }
            line += text;
        }
        _out += line + "\n";
    }

    void set(const std::string& name, const Set& set) {
        const std::string head = name + counted(static_cast<std::size_t>(set.size()), "element");
        if (set.isRange()) {
            _out += head + (set.size() == 0
                                ? ": empty range\n"
                                : ": " + std::to_string(set.first()) + ".." + std::to_string(set.last()) + "\n");
            return;
        }
        if (recordInfo(set.elementType())) {
            TextTable table(headerOf(set.elementType()));
            for (int i = 1; i <= set.size(); ++i) {
                std::vector<std::string> row;
                valueCells(set.elementType(), set.element(i), row);
                table.add(std::move(row));
            }
            _out += head + "\n";
            return table.print(_out);
        }
        std::vector<std::string> texts;
        for (int i = 1; i <= set.size(); ++i) texts.push_back(cell(set.elementType(), set.element(i)));
        wrapped(head, texts);
    }

    void list(const std::string& name, const List& list) {
        const std::string head = name + counted(list.items().size(), "item");
        const HostType type = list.elementWord() & hostTypeMask;
        if (recordInfo(type)) {
            TextTable table(headerOf(type));
            for (const ListItem& item : list.items()) {
                std::vector<std::string> row;
                valueCells(type, item.value, row);
                table.add(std::move(row));
            }
            _out += head + "\n";
            return table.print(_out);
        }
        std::vector<std::string> texts;
        bool containers = false;
        for (const ListItem& item : list.items()) {
            containers = containers || (item.type & hostClassMask) != 0;
            if (!containers) texts.push_back(cell(item.type, item.value));
        }
        if (!containers) return wrapped(head, texts);
        _out += head + "\n";
        for (std::size_t i = 0; i < list.items().size(); ++i) {
            const ListItem& item = list.items()[i];
            const std::string label = name + "[" + std::to_string(i + 1) + "]";
            if (!item.value.object)
                uninitialised(label);
            else if ((item.type & hostClassMask) == hostClassArray)
                array(label, *static_cast<Array*>(item.value.object), {});
            else if ((item.type & hostClassMask) == hostClassSet)
                set(label, *static_cast<const Set*>(item.value.object));
            else if ((item.type & hostClassMask) == hostClassList)
                this->list(label, *static_cast<const List*>(item.value.object));
            else
                _out += label + " = " + cell(item.type, item.value) + "\n";
        }
    }

    std::string indexCell(const Array& array, std::size_t d, int index) const {
        return cell(array.sets()[d]->elementType(), array.sets()[d]->element(index));
    }

    void array(const std::string& name, Array& array, std::vector<std::string> names) {
        for (std::size_t d = names.size(); d < array.sets().size(); ++d)
            names.push_back(_types.find(array.sets()[d]->elementType())->name);
        _out += name + counted(static_cast<std::size_t>(array.count()), array.count() == 1 ? "entry" : "entrie") + "\n";
        if (array.count() == 0) return;
        if (array.dims() == 2 && !recordInfo(array.elementType()) && grid(array, names)) return;
        std::vector<std::string> header = names;
        valueHeader(array.elementType(), header);
        TextTable table(std::move(header));
        std::vector<int> tuple(static_cast<std::size_t>(array.dims()));
        for (bool more = array.firstEntry(tuple.data()); more; more = array.nextEntry(tuple.data())) {
            std::vector<std::string> row;
            for (std::size_t d = 0; d < tuple.size(); ++d) row.push_back(indexCell(array, d, tuple[d]));
            valueCells(array.elementType(), array.get(tuple.data()), row);
            table.add(std::move(row));
        }
        table.print(_out);
    }

    /// Rows by the first index, columns by the second. False when that is too wide for a line.
    bool grid(Array& array, const std::vector<std::string>& names) {
        std::map<int, std::size_t> columns;  // by second index
        int tuple[2];
        for (bool more = array.firstEntry(tuple); more; more = array.nextEntry(tuple)) {
            columns.emplace(tuple[1], 0);
            if (columns.size() > maxGridColumns) return false;
        }
        std::vector<std::string> header = {names[0]};
        for (auto& [index, column] : columns) {
            column = header.size();
            header.push_back(indexCell(array, 1, index));
        }
        TextTable table(header);
        std::vector<std::string> row;
        int rowIndex = 0;
        for (bool more = array.firstEntry(tuple); more; more = array.nextEntry(tuple)) {
            if (row.empty() || tuple[0] != rowIndex) {
                if (!row.empty()) table.add(std::move(row));
                row.assign(header.size(), "");
                row[0] = indexCell(array, 0, rowIndex = tuple[0]);
            }
            row[columns[tuple[1]]] = cell(array.elementType(), array.get(tuple));
        }
        table.add(std::move(row));
        if (table.width() > lineWidth) return false;
        table.print(_out);
        return true;
    }

    const TypeRegistry& _types;
    std::string _out;
};

}  // namespace

std::string printForPeople(const TypeRegistry& types, const Variable& variable) {
    return PeoplePrinter(types).variable(variable);
}

}  // namespace refhost
