#include "biff/features/protection.h"

#include "biff/container/record_codec.h"

namespace vellum::biff {

// In the order of writing.
const Protection::Member Protection::members[4] = {
    {record_id::Protect, "Protect", &Protection::_protect},
    {record_id::ScenarioProtect, "ScenarioProtect", &Protection::_scenario},
    {record_id::ObjProtect, "ObjProtect", &Protection::_object},
    {record_id::Password, "Password", &Protection::_password},
};

bool Protection::read(RecordHeader header, Xls& in) {
    for (const Member& member : members) {
        if (member.id != header.id) continue;
        if (header.size < sizeof(std::uint16_t)) throwBadSize(member.name);
        this->*member.value = in.body(header.size).get<std::uint16_t>();
        return true;
    }
    return false;
}

void Protection::write(Xls& out) const {
    for (const Member& member : members) {
        const Word& value = this->*member.value;
        if (value) out.out().putAll(member.id, std::uint16_t{sizeof *value}, *value);
    }
}

void Protection::set(bool enable, std::optional<std::uint16_t> passwordHash) {
    _protect = _scenario = _object = enable ? 1 : 0;
    if (passwordHash) _password = *passwordHash;
}

void Protection::setOptions(std::uint32_t options) {
    if (!isOn()) return;
    _scenario = (options & scenariosAllowed) != 0 ? 0 : 1;
    _object = (options & objectsAllowed) != 0 ? 0 : 1;
}

}  // namespace vellum::biff
