#include "biff/features/panes.h"

#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/features/feature_messages.h"

namespace vellum::biff {
namespace {

Selection readSelection(Cursor in) {
    Selection selection;
    if (in.left() < wireSize<SelectionHead>()) throwBadSize(Selection::name);
    readFields<SelectionHead>(in, selection);
    if (in.left() != selection.cref * wireSize<RefU>()) throwBadSize(Selection::name);
    selection.refs.resize(selection.cref);
    for (RefU& ref : selection.refs) readFields(in, ref);
    return selection;
}

void writeSelection(Sink& out, const Selection& selection) {
    const std::size_t size = wireSize<SelectionHead>() + selection.refs.size() * wireSize<RefU>();
    out.putAll(Selection::id, static_cast<std::uint16_t>(size));
    writeFields<SelectionHead>(out, selection);
    for (const RefU& ref : selection.refs) writeFields(out, ref);
}

bool exists(Pane::Number number, bool rows, bool columns) {
    switch (number) {
        case Pane::topRight:
            return columns;
        case Pane::bottomLeft:
            return rows;
        case Pane::bottomRight:
            return rows && columns;
        default:
            return true;
    }
}

Pane::Number activePane(bool rows, bool columns) {
    if (rows) return columns ? Pane::bottomRight : Pane::bottomLeft;
    return columns ? Pane::topRight : Pane::topLeft;
}

}  // namespace

Panes::Panes(Origin origin) : _selections(origin == Origin::made ? 1 : 0) {}

bool Panes::read(RecordHeader header, Xls& in) {
    switch (header.id) {
        case record_id::Scl: {
            Cursor body = in.body(header.size);
            _scl = readFixed<Scl>(body, header.size);
            return true;
        }
        case record_id::Pane: {
            Cursor body = in.body(header.size);
            _pane = readFixed<Pane>(body, header.size);
            _paneLoaded = true;
            return true;
        }
        case record_id::Selection:
            _selections.push_back(readSelection(in.body(header.size)));
            return true;
        default:
            return false;
    }
}

void Panes::writeZoom(Xls& out) const {
    if (_scl.percent() != 100) writeFixed(out, _scl);
}

void Panes::writePanes(Xls& out) const {
    if (paneIsWritten()) writeFixed(out, *_pane);
    for (const Selection& selection : _selections) writeSelection(out.out(), selection);
}

void Panes::setZoomPercent(int percent) {
    if (percent < 1 || percent > 0xFFFF) throw vlerror(msg::zoomRange);
    _scl = {static_cast<std::uint16_t>(percent), 100};
}

Selection Panes::activeSelection() const {
    const std::uint8_t pnn = _pane ? _pane->pnnAct : std::uint8_t{Pane::topLeft};
    const auto active = std::ranges::find(_selections, pnn, &Selection::pnn);
    if (active != _selections.end()) return *active;
    return _selections.empty() ? Selection() : _selections.front();
}

void Panes::splitAt(std::uint16_t row, std::uint16_t col) {
    Selection selection = activeSelection();
    if (selection.irefAct >= selection.cref) selection.irefAct = 0;  // it meant a range of a further record
    const bool rows = row != 0, columns = col != 0;
    const Pane::Number active = activePane(rows, columns);
    _selections.clear();
    for (const auto number : {Pane::topLeft, Pane::topRight, Pane::bottomLeft, Pane::bottomRight}) {
        if (!exists(number, rows, columns)) continue;
        if (number == active) {
            selection.pnn = number;
            _selections.push_back(selection);
        } else {
            _selections.emplace_back().pnn = number;
        }
    }
    _pane = Pane{col, row, row, col, active, 0};
    _paneLoaded = false;
}

}  // namespace vellum::biff
