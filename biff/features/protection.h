// The locks of a sheet.
#pragma once
#include <cstdint>
#include <optional>

#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

namespace biff {

/// Protect, ScenarioProtect, ObjProtect and Password, each of which a sheet may have or not.
class Protection {
public:
    // Bits of the options, set: allowed although the sheet is protected.
    static constexpr std::uint32_t scenariosAllowed = 1, objectsAllowed = 2;

    /// Takes the record if it is one of the four. The first word counts. Throws "Protect size is incorrect" and its
    /// like.
    bool read(RecordHeader header, Xls& in);
    void write(Xls& out) const;

    [[nodiscard]] bool isOn() const { return _protect.value_or(0) != 0; }
    /// Scenarios and objects go with the sheet. Without a hash the password stays.
    void set(bool enable, std::optional<std::uint16_t> passwordHash);
    /// Scenarios and objects by the options; those of a sheet that is not protected stay free.
    void setOptions(std::uint32_t options);

private:
    using Word = std::optional<std::uint16_t>;
    struct Member {
        std::uint16_t id;
        const char* name;
        Word Protection::*value;
    };
    static const Member members[4];

    Word _protect, _scenario, _object, _password;
};

}  // namespace biff
}  // namespace vellum
