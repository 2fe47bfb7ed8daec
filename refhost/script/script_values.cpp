#include "refhost/script/script_values.h"

#include <utility>

#include "refhost/operations/host.h"
#include "refhost/operations/host_operations.h"

namespace refhost {
namespace {

/// A value with the object that it points to, if any.
struct MadeValue {
    HostValue slot{};
    ObjectPtr object;
};

class Maker {
public:
    Maker(Context& context, const VariableLookup& lookup)
        : _context(context), _types(context.host.types), _lookup(lookup) {}

    std::unique_ptr<Variable> make(const DeclareStatement& declaration, Position at) {
        const VariableSpec& spec = declaration.spec;
        const bool isNull = declaration.value && declaration.value->kind == Literal::null;
        std::unique_ptr<Variable> made = empty(declaration.name, spec, at, isNull);
        if (!declaration.value || (isNull && spec.form != Form::scalar)) return made;
        switch (spec.form) {
            case Form::scalar:
                fillScalar(*made, *declaration.value);
                break;
            case Form::set:
                fillSet(*made->set, spec, *declaration.value);
                break;
            case Form::list:
                fillList(*made->list, spec, *declaration.value);
                break;
            case Form::array:
                fillArray(*made->array, *declaration.value);
                break;
        }
        return made;
    }

private:
    std::unique_ptr<Variable> empty(const std::string& name, const VariableSpec& spec, Position at, bool isNull) {
        const HostType dynamic = spec.dynamic ? HostType{hostFlagDynamic} : 0u;
        switch (spec.form) {
            case Form::set: {
                const HostType flags = spec.range ? 0u : HostType{hostFlagExplicit};
                if (isNull)
                    return Variable::uninitialised(name, spec.form, hostClassSet | spec.elementType | dynamic | flags);
                return Variable::ofSet(name, spec.range
                                                 ? std::make_unique<Set>(_types, spec.first, spec.last, spec.dynamic)
                                                 : std::make_unique<Set>(_types, spec.elementType, spec.dynamic));
            }
            case Form::list: {
                const HostType word = spec.ofArrays                     ? HostType{hostClassArray}
                                      : spec.elementType == hostTypeAny ? HostType{hostClassUnion}
                                                                        : spec.elementType;
                if (isNull) return Variable::uninitialised(name, spec.form, hostClassList | spec.elementType | dynamic);
                return Variable::ofList(name, std::make_unique<List>(_types, word, spec.dynamic));
            }
            case Form::array: {
                if (isNull)
                    return Variable::uninitialised(name, spec.form, hostClassArray | spec.elementType | dynamic);
                std::vector<std::unique_ptr<Set>> own;
                std::vector<Set*> sets;
                for (const IndexSpec& index : spec.indices) sets.push_back(indexSet(index, at, own));
                auto made = Variable::ofArray(
                    name, std::make_unique<Array>(_types, sets, spec.elementType, spec.dynamic), std::move(own));
                for (const IndexSpec& index : spec.indices)
                    made->indexNames.push_back(index.setName.empty() ? _types.find(index.elementType)->name
                                                                     : index.setName);
                return made;
            }
            case Form::scalar:
                break;
        }
        return Variable::scalar(_types, name, spec.elementType);
    }

    Set* indexSet(const IndexSpec& index, Position at, std::vector<std::unique_ptr<Set>>& own) {
        if (!index.setName.empty()) {
            Set* set = _lookup(index.setName).set.get();
            if (!set) throw ScriptError(at, "the index set '" + index.setName + "' is uninitialised");
            return set;
        }
        own.push_back(index.range ? std::make_unique<Set>(_types, index.first, index.last, index.dynamic)
                                  : std::make_unique<Set>(_types, index.elementType, index.dynamic));
        return own.back().get();
    }

    MadeValue value(const Literal& literal, HostType type) {
        const TypeInfo& info = *_types.resolved(type);
        MadeValue made;
        if (literal.kind == Literal::name) return named(_lookup(literal.word), info, type);
        if (!isBaseType(info.number)) {
            made.object = object(literal, info, type);
            made.slot.object = made.object.get();
            return made;
        }
        if (info.number == hostTypeInteger) made.slot.integer = static_cast<std::int32_t>(literal.whole);
        if (info.number == hostTypeReal) made.slot.real = literal.number;
        if (info.number == hostTypeBoolean) made.slot.integer = literal.flag;
        if (info.number == hostTypeText && literal.kind == Literal::text) made.slot.text = text(literal);
        return made;
    }

    const char* text(const Literal& literal) { return _context.texts.intern(literal.word); }

    /// The value of a declared scalar, for a value of its own type or of any.
    MadeValue named(const Variable& variable, const TypeInfo& info, HostType type) {
        MadeValue made;
        const HostType from = variable.elementType();
        if (info.number == hostTypeAny && from != hostTypeAny) {
            auto any = std::make_unique<UnionObject>(type);
            if (isBaseType(from))
                any->set(from, variable.value);
            else
                any->set(cloneObject(_types, *variable.object));
            made.object = std::move(any);
        } else if (variable.object) {
            made.object = cloneObject(_types, *variable.object, type);
        } else {
            made.slot = variable.value;
        }
        if (made.object) made.slot.object = made.object.get();
        return made;
    }

    ObjectPtr object(const Literal& literal, const TypeInfo& info, HostType type) {
        ObjectPtr made = createObject(_types, type);
        if (info.number == typeDate) {
            objectFromText(_context, *made, literal.kind == Literal::text ? literal.word.c_str() : "");
        } else if (info.classWord == hostClassUnion) {
            fillUnion(static_cast<UnionObject&>(*made), literal);
        } else {
            auto& record = static_cast<RecordObject&>(*made);
            for (std::size_t i = 0; i < record.fields.size(); ++i) {
                MadeValue field = value(literal.items[i], info.fields[i].type);
                if (field.object) delete static_cast<Object*>(std::exchange(record.fields[i].object, nullptr));
                record.fields[i] = field.slot;
                (void)field.object.release();  // the record owns it through the slot
            }
        }
        return made;
    }

    void fillUnion(UnionObject& any, const Literal& literal) {
        HostValue slot{};
        HostType kind = hostTypeAny;
        switch (literal.kind) {
            case Literal::integer:
                if (literal.whole >= INT32_MIN && literal.whole <= INT32_MAX) {
                    kind = hostTypeInteger;
                    slot.integer = static_cast<std::int32_t>(literal.whole);
                    break;
                }
                [[fallthrough]];
            case Literal::real:
                kind = hostTypeReal;
                slot.real = literal.number;
                break;
            case Literal::text:
                kind = hostTypeText;
                slot.text = text(literal);
                break;
            case Literal::boolean:
                kind = hostTypeBoolean;
                slot.integer = literal.flag;
                break;
            default:
                break;
        }
        any.set(kind, slot);
    }

    void fillScalar(Variable& variable, const Literal& literal) {
        MadeValue made = value(literal, variable.elementType());
        variable.object = std::move(made.object);
        variable.value = made.slot;
    }

    void fillSet(Set& set, const VariableSpec& spec, const Literal& literal) {
        HostValue bound{};
        if (literal.kind == Literal::range) {
            if (!set.isRange() && literal.last - literal.whole > 1000000)
                throw ScriptError(literal.at, "this is too long for a set that is no range");
            for (std::int64_t i = literal.whole; i <= literal.last;
                 i = set.isRange() && i < literal.last ? literal.last : i + 1) {
                bound.integer = static_cast<std::int32_t>(i);
                set.addInitial(bound);
            }
        }
        for (const Literal& item : literal.items)
            if (!set.addInitial(value(item, spec.elementType).slot))
                throw ScriptError(item.at, "this does not fit in the set");
    }

    void fillList(List& list, const VariableSpec& spec, const Literal& literal) {
        for (const Literal& item : literal.items) {
            if (item.kind == Literal::name) {
                Variable& variable = _lookup(item.word);
                if (variable.form != Form::scalar || spec.ofArrays) {
                    appendVariable(list, variable, item);
                    continue;
                }
            }
            const MadeValue made = value(item, spec.elementType);
            if (!list.append(spec.elementType, made.slot)) throw ScriptError(item.at, "this does not fit in the list");
        }
    }

    void appendVariable(List& list, Variable& variable, const Literal& item) {
        const HostValue slot = variable.form == Form::scalar ? variable.value : variable.slot();
        if (!list.append(variable.word(), slot)) throw ScriptError(item.at, "this does not fit in the list");
    }

    void fillArray(Array& array, const Literal& literal) {
        std::vector<int> tuple(static_cast<std::size_t>(array.dims()));
        for (std::size_t i = 0; i < literal.items.size(); ++i) {
            const Literal& key = literal.items[i];
            for (std::size_t d = 0; d < tuple.size(); ++d) {
                const Literal& index = key.kind == Literal::parens ? key.items[d] : key;
                Set& set = *array.sets()[d];
                const auto found = set.add(value(index, set.elementType()).slot);
                if (!found) throw ScriptError(index.at, "this index is not in its set");
                tuple[d] = *found;
            }
            HostValue* slot = array.slot(tuple.data());
            MadeValue made = value(literal.values[i], array.elementType());
            if (made.object) delete static_cast<Object*>(std::exchange(slot->object, nullptr));
            *slot = made.slot;
            (void)made.object.release();  // the array owns it through the slot
        }
    }

    Context& _context;
    TypeRegistry& _types;
    const VariableLookup& _lookup;
};

}  // namespace

std::unique_ptr<Variable> makeVariable(const DeclareStatement& declaration, Position at, Context& context,
                                       const VariableLookup& lookup) {
    return Maker(context, lookup).make(declaration, at);
}

}  // namespace refhost
