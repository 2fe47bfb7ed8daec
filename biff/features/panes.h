// Panes of a window, what is selected in each, and the size at which it shows its cells.
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "biff/container/record_ids.h"

namespace vellum {

class Xls;

/// Numerator and denominator of the size of cells on the screen.
struct Scl {
    static constexpr std::uint16_t id = record_id::Scl;
    static constexpr const char* name = "Scl";

    std::uint16_t numerator = 100, denominator = 100;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("numerator", r.numerator);
        visit("denominator", r.denominator);
    }
    [[nodiscard]] int percent() const { return denominator < 1 ? 0 : numerator * 100 / denominator; }
};

/// A window cut in two or four. In frozen panes `x` and `y` count columns and rows, else 1/20 points.
struct Pane {
    static constexpr std::uint16_t id = record_id::Pane;
    static constexpr const char* name = "Pane";

    enum Number : std::uint8_t { bottomRight, topRight, bottomLeft, topLeft };

    std::uint16_t x = 0, y = 0;
    std::uint16_t rwTop = 0, colLeft = 0;  // first ones below and right of the cut
    std::uint8_t pnnAct = topLeft;         // the active pane
    std::uint8_t reserved = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("x", r.x);
        visit("y", r.y);
        visit("rwTop", r.rwTop);
        visit("colLeft", r.colLeft);
        visit("pnnAct", r.pnnAct);
        visit("reserved", r.reserved);
    }
};

/// Cells of a selection.
struct RefU {
    std::uint16_t rowFirst = 0, rowLast = 0;
    std::uint8_t colFirst = 0, colLast = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("rowFirst", r.rowFirst);
        visit("rowLast", r.rowLast);
        visit("colFirst", r.colFirst);
        visit("colLast", r.colLast);
    }
};

/// What is selected in a pane; its ranges stand behind it. More of them than a record holds go on in a further one of
/// the same pane.
struct SelectionHead {
    std::uint8_t pnn = Pane::topLeft;
    std::uint16_t rwAct = 0, colAct = 0;  // the active cell
    std::uint16_t irefAct = 0;            // the range that holds it
    std::uint16_t cref = 1;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("pnn", r.pnn);
        visit("rwAct", r.rwAct);
        visit("colAct", r.colAct);
        visit("irefAct", r.irefAct);
        visit("cref", r.cref);
    }
};

struct Selection : SelectionHead {
    static constexpr std::uint16_t id = record_id::Selection;
    static constexpr const char* name = "Selection";

    std::vector<RefU> refs = std::vector<RefU>(1);
};

namespace biff {

/// The view of a sheet's first window, but for its Window2 record.
class Panes {
public:
    enum class Origin : std::uint8_t { made, loaded };
    /// A new sheet has a selection, one that a file will fill has none.
    explicit Panes(Origin origin);

    /// Takes the record if it is one of these. Throws "Pane size is incorrect" and its like.
    bool read(RecordHeader header, Xls& in);
    /// Nothing for a size of 100 %.
    void writeZoom(Xls& out) const;
    void writePanes(Xls& out) const;

    [[nodiscard]] int zoomPercent() const { return _scl.percent(); }
    /// Throws when it is below 1 or too much for the record.
    void setZoomPercent(int percent);

    /// Null when the window is not cut.
    [[nodiscard]] const Pane* pane() const { return _pane ? &*_pane : nullptr; }
    /// Freezes the rows above and the columns left of a cell. The active cell stays active.
    void splitAt(std::uint16_t row, std::uint16_t col);
    /// A cut at neither row nor column, which nobody loaded, is no cut for a file.
    [[nodiscard]] bool paneIsWritten() const { return _pane && (_paneLoaded || _pane->x != 0 || _pane->y != 0); }

private:
    [[nodiscard]] Selection activeSelection() const;

    Scl _scl;
    std::optional<Pane> _pane;
    bool _paneLoaded = false;
    std::vector<Selection> _selections;
};

}  // namespace biff
}  // namespace vellum
