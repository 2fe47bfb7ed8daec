#include "refhost/values/variable.h"

namespace refhost {

std::unique_ptr<Variable> Variable::scalar(const TypeRegistry& types, std::string name, HostType type) {
    auto made = std::make_unique<Variable>();
    made->name = std::move(name);
    made->declaredWord = type & hostTypeMask;
    made->object = createObject(types, type);
    made->value.object = made->object.get();
    return made;
}

std::unique_ptr<Variable> Variable::ofSet(std::string name, std::unique_ptr<Set> set) {
    auto made = uninitialised(std::move(name), Form::set, hostClassSet | set->flags());
    made->set = std::move(set);
    return made;
}

std::unique_ptr<Variable> Variable::ofList(std::string name, std::unique_ptr<List> list) {
    auto made = uninitialised(std::move(name), Form::list,
                              hostClassList | (list->elementWord() & (hostTypeMask | hostFlagDynamic)));
    made->list = std::move(list);
    return made;
}

std::unique_ptr<Variable> Variable::ofArray(std::string name, std::unique_ptr<Array> array,
                                            std::vector<std::unique_ptr<Set>> ownSets) {
    auto made = uninitialised(std::move(name), Form::array, hostClassArray | array->flags());
    made->indexSets = std::move(ownSets);
    made->array = std::move(array);
    return made;
}

std::unique_ptr<Variable> Variable::uninitialised(std::string name, Form form, HostType word) {
    auto made = std::make_unique<Variable>();
    made->name = std::move(name);
    made->form = form;
    made->declaredWord = word;
    return made;
}

HostType Variable::word() const {
    if (set) return hostClassSet | set->flags();  // a set loses its dynamic flag when it is finished
    return declaredWord;
}

HostValue Variable::slot() {
    HostValue slot{};
    switch (form) {
        case Form::scalar:
            slot.object = object ? static_cast<void*>(object.get()) : &value;
            break;
        case Form::set:
            slot.object = set.get();
            break;
        case Form::list:
            slot.object = list.get();
            break;
        case Form::array:
            slot.object = array.get();
            break;
    }
    return slot;
}

}  // namespace refhost
