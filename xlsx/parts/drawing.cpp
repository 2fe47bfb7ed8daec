#include "xlsx/parts/drawing.h"

#include <algorithm>

#include "bindery/classes/extras.h"

namespace vellum {

using ooxml::excelNormal_tag;
using ooxml::excelStrict_tag;

namespace {

constexpr std::uint16_t anchorSlot = 1;  // of the anchors among the children of the root

/// What stands between anchors is placed by their count: it moves up with those behind a removed one.
void moveUpBehind(bindery::Extras& extras, std::size_t removed) {
    for (bindery::Placed& placed : extras.elements) {
        if (placed.slot != anchorSlot || placed.ordinal <= removed) continue;
        if (--placed.ordinal == 0) placed.slot = 0;
    }
}

}  // namespace

template <class Tag>
const std::vector<std::size_t>& Drawing<Tag>::pictures() {
    if (!_counted) {
        _pictures.clear();
        const auto& anchors = this->_root.EG_Anchor();
        for (std::size_t i = 0; i < anchors.size(); ++i) {
            if (xlsx::pictureOf(std::as_const(anchors)[i])) _pictures.push_back(i);
        }
        _counted = true;
    }
    return _pictures;
}

template <class Tag>
auto Drawing<Tag>::pictureAnchor(std::size_t nth) -> const Anchor& {
    return this->_root.EG_Anchor()[pictures().at(nth)];
}

template <class Tag>
void Drawing<Tag>::appendPicture(const xlsx::NewPicture& picture) {
    pictures();
    auto& anchors = this->_root.EG_Anchor();
    xlsx::fillPictureAnchor<Tag>(anchors.append(), picture);
    _pictures.push_back(anchors.size() - 1);
}

template <class Tag>
void Drawing<Tag>::removePicture(std::size_t nth) {
    const std::size_t place = pictures().at(nth);
    this->_root.EG_Anchor().erase(place);
    if (this->_root.extras()) moveUpBehind(this->_root.makeExtras(), place);
    _counted = false;
}

template class Drawing<excelNormal_tag>;
template class Drawing<excelStrict_tag>;

}  // namespace vellum
