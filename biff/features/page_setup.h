// How a sheet is printed: paper, scale, margins, header and footer.
#pragma once
#include <array>
#include <cstdint>
#include <optional>

#include "biff/container/record_ids.h"
#include "biff/features/header_footer.h"

namespace vellum {

class Xls;

struct Setup {
    static constexpr std::uint16_t id = record_id::Setup;
    static constexpr const char* name = "Setup";

    static constexpr std::uint16_t portrait = 0x0002;
    static constexpr std::uint16_t noPrinterSettings =
        0x0004;  // paper, scale, resolution, copies, orientation: rubbish
    static constexpr std::uint16_t noOrientation = 0x0040;

    std::uint16_t iPaperSize = 0;
    std::uint16_t iScale = 100;  // percent
    std::uint16_t iPageStart = 1;
    std::uint16_t iFitWidth = 1, iFitHeight = 1;  // pages
    std::uint16_t flags = portrait | noPrinterSettings;
    std::uint16_t iRes = 0, iVRes = 0;
    double numHdr = 0.5, numFtr = 0.5;  // margins of header and footer, inches
    std::uint16_t iCopies = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("iPaperSize", r.iPaperSize);
        visit("iScale", r.iScale);
        visit("iPageStart", r.iPageStart);
        visit("iFitWidth", r.iFitWidth);
        visit("iFitHeight", r.iFitHeight);
        visit("flags", r.flags);
        visit("iRes", r.iRes);
        visit("iVRes", r.iVRes);
        visit("numHdr", r.numHdr);
        visit("numFtr", r.numFtr);
        visit("iCopies", r.iCopies);
    }

    [[nodiscard]] bool hasPrinterSettings() const { return (flags & noPrinterSettings) == 0; }
    [[nodiscard]] bool isLandscape() const { return hasPrinterSettings() && (flags & portrait) == 0; }
    [[nodiscard]] int scale() const { return hasPrinterSettings() ? iScale : 100; }
    void setLandscape(bool landscape);
    /// From now on the printer's fields count. Where they did not, they become those of a new sheet: most files hold
    /// the bits of a landscape page there.
    void usePrinterSettings();
};

namespace biff {

enum class Margin : std::uint8_t { left, right, top, bottom };

/// The records of a sheet's printing but for the printer's own data. On a sheet that was loaded those are written
/// that were there or have been set.
class PageSetup {
public:
    /// Of a new sheet, with all records that every new sheet has; `loaded`: of one that a file will fill, with none.
    enum class Origin : std::uint8_t { made, loaded };
    explicit PageSetup(Origin origin);

    /// Takes the record if it is one of these. Throws "Setup size is incorrect" and its like.
    bool read(RecordHeader header, Xls& in, bool biff5);
    /// Header, footer, centring and margins. The printer's own data stand between these and `writeSetup`.
    void writeFront(Xls& out) const;
    void writeSetup(Xls& out) const;

    PageText header, footer;
    [[nodiscard]] const Setup& setup() const { return _setup; }
    /// For a change.
    Setup& editSetup() {
        _hasSetup = true;
        return _setup;
    }
    /// The same, where the change is one of the fields that need the printer's settings.
    Setup& editPrinterSettings() {
        editSetup().usePrinterSettings();
        return _setup;
    }

    [[nodiscard]] bool centersHorizontally() const { return _hCenter.value_or(0) != 0; }
    [[nodiscard]] bool centersVertically() const { return _vCenter.value_or(0) != 0; }
    void setCentersHorizontally(bool center) { _hCenter = center ? 1 : 0; }
    void setCentersVertically(bool center) { _vCenter = center ? 1 : 0; }

    /// Inches; what an application takes where no record says otherwise.
    [[nodiscard]] double margin(Margin side) const;
    void setMargin(Margin side, double inches);

private:
    bool readMargin(RecordHeader header, Xls& in);

    Setup _setup;
    bool _hasSetup;
    std::uint8_t _marginsSet = 0;  // a bit for each side
    std::optional<std::uint16_t> _hCenter, _vCenter;
    std::array<double, 4> _margins{0.75, 0.75, 1.0, 1.0};
};

}  // namespace biff
}  // namespace vellum
