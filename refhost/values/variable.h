// A named thing of a model: a scalar, set, list or array with its storage.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "refhost/values/array.h"
#include "refhost/values/list.h"
#include "refhost/values/object.h"
#include "refhost/values/set.h"

namespace refhost {

enum class Form { scalar, set, list, array };

/// Owns what it names. A set, list or array without its container is uninitialised.
struct Variable {
    /// A scalar of any type, at zero: 0, false, a null text, no date, an empty union, a record of zeros.
    static std::unique_ptr<Variable> scalar(const TypeRegistry& types, std::string name, HostType type);
    static std::unique_ptr<Variable> ofSet(std::string name, std::unique_ptr<Set> set);
    static std::unique_ptr<Variable> ofList(std::string name, std::unique_ptr<List> list);
    static std::unique_ptr<Variable> ofArray(std::string name, std::unique_ptr<Array> array,
                                             std::vector<std::unique_ptr<Set>> ownSets = {});
    /// An uninitialised container. `word` is what word() would answer for it, without field list.
    static std::unique_ptr<Variable> uninitialised(std::string name, Form form, HostType word);

    /// Type word of the variable as an item of a statement, without the place of a field list.
    HostType word() const;
    /// Value slot of the variable as an item of a statement.
    HostValue slot();
    HostType elementType() const { return word() & hostTypeMask; }

    std::string name;
    Form form = Form::scalar;
    HostType declaredWord = hostTypeAny;
    HostValue value{};  // of a scalar; an object type has its object in it
    ObjectPtr object;   // owner of that object
    std::unique_ptr<Set> set;
    std::unique_ptr<List> list;
    std::vector<std::unique_ptr<Set>> indexSets;  // those of the array's sets that have no name of their own
    std::unique_ptr<Array> array;
    std::vector<std::string> indexNames;  // of an array, for people: the sets' names, or what they hold
};

}  // namespace refhost
