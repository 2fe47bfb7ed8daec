// A chart, as it came.
#pragma once
#include <memory>

#include "drawing/records/obj_base.h"

namespace vellum {

/// All records of a substream from its Bof to the EOF that balances it: a chart that is embedded, or a sheet that is
/// no worksheet.
class ChartSheet final : public ObjBase {
public:
    static constexpr std::uint16_t id = record_id::Bof;

    /// An identifier of 0 throws. A stream that ends early ends the chart.
    std::size_t read(Xls& in, std::size_t recordSize) override;
    /// For what of it is changed after all.
    [[nodiscard]] std::span<std::byte> wireToChange() { return _wire; }
    [[nodiscard]] std::unique_ptr<ObjBase> clone() const override { return std::make_unique<ChartSheet>(*this); }
};

}  // namespace vellum
