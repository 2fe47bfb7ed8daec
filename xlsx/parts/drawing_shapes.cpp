// The objects of a drawing that are no pictures.
#include <algorithm>
#include <charconv>

#include "bindery/classes/extras.h"
#include "xlsx/parts/alternatives.h"
#include "xlsx/parts/anchor_place.h"
#include "xlsx/parts/drawing.h"

namespace vellum {
namespace {

using bindery::c_raw_node;
using xlsx::CellPixels;
using xlsx::Placement;

constexpr std::string_view shapeNames[] = {"sp", "grpSp", "graphicFrame", "cxnSp", "pic", "contentPart"};

const c_raw_node* shapeAmong(const c_raw_node& parent) {
    for (const auto& child : parent.children) {
        if (std::find(std::begin(shapeNames), std::end(shapeNames), child->localName()) != std::end(shapeNames)) {
            return child.get();
        }
    }
    return nullptr;
}

bool hasElement(const c_raw_node& node, std::string_view local, int depth = 0) {
    return node.localName() == local ||
           (depth < xlsx::deepestNesting &&
            std::any_of(node.children.begin(), node.children.end(),
                        [&](const auto& child) { return hasElement(*child, local, depth + 1); }));
}

bool holdsChart(const c_raw_node& frame) {
    const c_raw_node* const graphic = frame.child("graphic");
    const c_raw_node* const data = graphic ? graphic->child("graphicData") : nullptr;
    return data && data->child("chart");
}

SheetShape shapeOf(const c_raw_node& node, const Placement& place) {
    SheetShape shape;
    shape.type = node.localName();
    if (shape.type == "graphicFrame" && holdsChart(node)) shape.shapeClass = ShapeClass::chart;
    shape.row = place.top.cell;
    shape.col = place.left.cell;
    shape.rowBottom = place.bottom.cell;
    shape.colRight = place.right.cell;
    return shape;
}

/// The object of an anchor, which may stand in an alternative; null when it is a picture, or there is none.
template <class AnyAnchor>
const c_raw_node* objectOf(const AnyAnchor& anchor) {
    for (const c_raw_node* const node : {anchor.find_sp(), anchor.find_grpSp(), anchor.find_graphicFrame(),
                                         anchor.find_cxnSp(), anchor.find_contentPart()}) {
        if (node) return node;
    }
    if (anchor.find_pic() || !anchor.extras()) return nullptr;
    for (const bindery::Placed& placed : anchor.extras()->elements) {
        const c_raw_node* const branch = xlsx::chosenBranch(placed.node);
        const c_raw_node* const shape = branch ? shapeAmong(*branch) : nullptr;
        if (shape) return shape;
    }
    return nullptr;
}

template <class Anchor>
const c_raw_node* objectOfAny(const Anchor& anchor) {
    if (const auto* const two = anchor.find_twoCellAnchor()) return objectOf(*two);
    if (const auto* const one = anchor.find_oneCellAnchor()) return objectOf(*one);
    const auto* const absolute = anchor.find_absoluteAnchor();
    return absolute ? objectOf(*absolute) : nullptr;
}

// An anchor that was kept as it is, as far as its cells go.

std::int64_t numberIn(const c_raw_node& parent, std::string_view local) {
    const c_raw_node* const node = parent.child(local);
    const std::string text = node ? node->textContent() : std::string();
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void readKeptMarker(const c_raw_node* marker, xlsx::Edge& column, xlsx::Edge& row) {
    if (!marker) return;
    column.cell = xlsx::cellWithin(xlsx::clampToInt(numberIn(*marker, "col")), sheetColumns);
    row.cell = xlsx::cellWithin(xlsx::clampToInt(numberIn(*marker, "row")), sheetRows);
}

Placement keptPlacement(const c_raw_node& anchor) {
    Placement placement;
    readKeptMarker(anchor.child("from"), placement.left, placement.top);
    placement.right = placement.left;
    placement.bottom = placement.top;
    readKeptMarker(anchor.child("to"), placement.right, placement.bottom);
    return placement;
}

/// An alternative in place of an anchor. The shape that stands for a form control or an ActiveX control says so; the
/// control itself is listed with the sheet.
void readAlternative(const c_raw_node& alternative, std::vector<SheetShape>& shapes) {
    const c_raw_node* const branch = xlsx::chosenBranch(alternative);
    if (!branch) return;
    for (const auto& anchor : branch->children) {
        const c_raw_node* const shape = shapeAmong(*anchor);
        if (shape && !hasElement(*shape, "compatExt")) shapes.push_back(shapeOf(*shape, keptPlacement(*anchor)));
    }
}

/// What was kept between the anchors, by how many anchors stand in front of it.
class KeptBetween {
public:
    explicit KeptBetween(const bindery::Extras* extras) {
        if (!extras) return;
        for (const bindery::Placed& placed : extras->elements) _kept.push_back(&placed);
        std::stable_sort(_kept.begin(), _kept.end(), [](auto* a, auto* b) { return placeOf(*a) < placeOf(*b); });
    }

    template <class Visit>
    void upTo(std::size_t anchors, Visit&& visit) {
        for (; _next < _kept.size() && placeOf(*_kept[_next]) <= anchors; ++_next) visit(_kept[_next]->node);
    }

private:
    static std::size_t placeOf(const bindery::Placed& placed) { return placed.slot == 0 ? 0 : placed.ordinal; }

    std::vector<const bindery::Placed*> _kept;
    std::size_t _next = 0;
};

}  // namespace

template <class Tag>
std::vector<SheetShape> Drawing<Tag>::shapes(CellPixels& pixels) const {
    std::vector<SheetShape> shapes;
    KeptBetween kept(this->_root.extras());
    const auto readKept = [&](const c_raw_node& node) { readAlternative(node, shapes); };
    kept.upTo(0, readKept);
    const auto& anchors = this->_root.EG_Anchor();
    for (std::size_t i = 0; i < anchors.size(); ++i) {
        if (const c_raw_node* const node = objectOfAny(anchors[i])) {
            shapes.push_back(shapeOf(*node, xlsx::placementOf(anchors[i], pixels)));
        }
        kept.upTo(i + 1, readKept);
    }
    return shapes;
}

template std::vector<SheetShape> Drawing<ooxml::excelNormal_tag>::shapes(CellPixels&) const;
template std::vector<SheetShape> Drawing<ooxml::excelStrict_tag>::shapes(CellPixels&) const;

}  // namespace vellum
