// From declarations to variables.
#pragma once
#include <functional>
#include <memory>

#include "refhost/operations/context.h"
#include "refhost/script/script.h"
#include "refhost/values/variable.h"

namespace refhost {

/// Finds a declared variable; the parser made sure that it exists.
using VariableLookup = std::function<Variable&(const std::string&)>;

/// Makes the variable of a declaration, with its value where it has one. Throws ScriptError when an index of its value
/// is not in a static set, or an index set is uninitialised.
std::unique_ptr<Variable> makeVariable(const DeclareStatement& declaration, Position at, Context& context,
                                       const VariableLookup& lookup);

}  // namespace refhost
