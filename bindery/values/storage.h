// The types in which values are held.
#pragma once
#include <string>
#include <type_traits>

#include "bindery/values/binary.h"
#include "bindery/values/datetime.h"
#include "bindery/values/value_spec.h"

namespace bindery {

/// Calls `f` with a `std::type_identity` of the type that holds values of a storage.
template <class F>
auto visitStorage(Storage storage, F&& f) {
    switch (storage) {
        case Storage::string:
            return f(std::type_identity<std::string>());
        case Storage::wstring:
            return f(std::type_identity<std::wstring>());
        case Storage::boolean:
            return f(std::type_identity<bool>());
        case Storage::integer:
            return f(std::type_identity<int>());
        case Storage::unsignedInteger:
            return f(std::type_identity<unsigned int>());
        case Storage::unsignedShort:
            return f(std::type_identity<unsigned short>());
        case Storage::unsignedChar:
            return f(std::type_identity<unsigned char>());
        case Storage::longInteger:
            return f(std::type_identity<long long>());
        case Storage::unsignedLong:
            return f(std::type_identity<unsigned long long>());
        case Storage::real:
            return f(std::type_identity<double>());
        case Storage::datetime:
            return f(std::type_identity<c_datetime>());
        case Storage::binary:
            return f(std::type_identity<c_binary>());
        default:
            return f(std::type_identity<c_empty>());
    }
}

}  // namespace bindery
