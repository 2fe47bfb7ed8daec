// A script, understood: its statements with all names and types resolved.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "refhost/script/script_error.h"
#include "refhost/values/types.h"
#include "refhost/values/variable.h"

namespace refhost {

/// A value as written. Numbers carry their sign.
struct Literal {
    enum Kind { null, integer, real, text, boolean, name, range, braces, brackets, parens };
    Kind kind = null;
    Position at;
    std::int64_t whole = 0;               // of an integer; first of a range
    std::int64_t last = 0;                // of a range
    double number = 0;                    // of an integer or real
    bool flag = false;                    // of a boolean
    std::string word;                     // of a text or name
    std::vector<Literal> items;           // in brackets of any kind
    std::vector<Literal> values;          // in braces: the values of entries, whose keys are `items`
    std::vector<std::string> fieldNames;  // in parens, where fields are named
};

/// An index set of an array: a declared one, or one of its own.
struct IndexSpec {
    std::string setName;  // empty: a set of its own
    HostType elementType = hostTypeAny;
    bool dynamic = true, range = false;
    int first = 1, last = 0;  // of a range
};

/// What a declaration makes.
struct VariableSpec {
    Form form = Form::scalar;
    HostType elementType = hostTypeAny;
    bool dynamic = false;
    bool ofArrays = false;           // list of array
    bool range = false;              // of a set
    int first = 1, last = 0;         // of a range
    std::vector<IndexSpec> indices;  // of an array
};

struct DeclareStatement {
    std::string name;
    VariableSpec spec;
    std::optional<Literal> value;
};
struct ItemSpec {
    std::string name, label;
};
struct TransferStatement {
    bool write = false;
    std::string source;
    std::vector<ItemSpec> items;
};
struct OpenStatement {
    std::string source;
    bool update = false;
};
struct CloseStatement {
    std::string source;
};
struct ContextStatement {
    int number = 1;
};
struct PrintStatement {
    std::string name;
};
struct ParamStatement {
    enum Kind { realFormat, finish, deny };
    Kind kind = realFormat;
    std::string text;
    bool flag = false;
};

struct Statement {
    Position at;
    std::variant<DeclareStatement, TransferStatement, OpenStatement, CloseStatement, ContextStatement, PrintStatement,
                 ParamStatement>
        what;
};

/// Reads a whole script. Declared record types and aliases enter `types`. Throws ScriptError at the first place that
/// cannot be understood: syntax, names that are not declared, values that do not fit their type.
std::vector<Statement> parseScript(std::string_view script, TypeRegistry& types);

}  // namespace refhost
