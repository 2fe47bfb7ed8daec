// An object made by the host for the module, which deletes it when it goes out of use.
#pragma once
#include "host/interface/host.h"

namespace quillet {

class OwnedObject {
public:
    /// Takes over `object`, which may be null.
    OwnedObject(HostContext* context, HostType type, void* object) : _context(context), _type(type), _object(object) {}
    /// Creates an object of the type; null when the host cannot.
    OwnedObject(HostContext* context, HostType type)
        : OwnedObject(context, type, hostApi().hostCreateObject(context, type, 0)) {}
    ~OwnedObject() {
        if (_object) hostApi().hostDeleteObject(_context, _type, _object);
    }
    OwnedObject(const OwnedObject&) = delete;
    OwnedObject& operator=(const OwnedObject&) = delete;
    void* get() const { return _object; }

private:
    HostContext* _context;
    HostType _type;
    void* _object;
};

}  // namespace quillet
