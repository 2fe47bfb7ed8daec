// What stands behind the pieces of a sheet's drawing.
#pragma once
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

/// One of the records of a shape, with all that continues it. The bytes are written back as they were read.
class ObjBase {
public:
    virtual ~ObjBase() = default;
    /// From behind a header that was just taken and says `recordSize`. Answers the bytes taken.
    virtual std::size_t read(Xls& in, std::size_t recordSize) = 0;
    /// Bytes of all its records with their headers.
    [[nodiscard]] virtual std::size_t size() const { return _wire.size(); }
    virtual std::size_t write(Xls& out) const;
    [[nodiscard]] virtual std::unique_ptr<ObjBase> clone() const = 0;

    [[nodiscard]] std::span<const std::byte> wire() const { return _wire; }

protected:
    ObjBase() = default;
    ObjBase(const ObjBase&) = default;
    ObjBase& operator=(const ObjBase&) = default;

    /// Keeps the header that was taken last and the body behind it; answers that.
    std::span<const std::byte> keepRecord(Xls& in, RecordHeader header);

    std::vector<std::byte> _wire;
};

namespace drawing {

/// A record that has lost what it belongs to.
class StrayRecord final : public ObjBase {
public:
    explicit StrayRecord(std::uint16_t id) : _id(id) {}
    std::size_t read(Xls& in, std::size_t recordSize) override;
    [[nodiscard]] std::unique_ptr<ObjBase> clone() const override { return std::make_unique<StrayRecord>(*this); }

private:
    std::uint16_t _id;
};

}  // namespace drawing
}  // namespace vellum
