// The two halves of the host's table of operations.
#pragma once
#include "host/interface/host_api.h"
#include "refhost/operations/context.h"
#include "refhost/values/object.h"

namespace refhost {

void fillValueOperations(HostApi& api);
void fillContainerOperations(HostApi& api);

/// Text of a value as hostValueToText gives it. A null object gives the empty text, a record -1.
int valueToText(const Context& context, HostType type, HostValue value, char* buffer, int size);
/// Sets an object from a text (null counts as empty), a union to the text itself. False when the text does not fit the
/// type; the object is unchanged then.
bool objectFromText(Context& context, Object& object, const char* text);

}  // namespace refhost
