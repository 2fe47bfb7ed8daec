#include "drawing/objects/renumber.h"

#include <algorithm>
#include <unordered_map>

#include "drawing/art/containers.h"
#include "drawing/pictures/drawing_group.h"

namespace vellum::drawing {
namespace {

constexpr std::uint32_t clusterSize = OfficeArtFDGGBlock::clusterSize;
constexpr std::size_t fdgAt = ArtHeader::wireSize;  // in the drawing, right behind its header

class Renumberer {
public:
    Renumberer(std::span<std::byte> bytes, DrawingGroup& group, const DrawingGroup::NewDrawing& fresh)
        : _bytes(bytes), _group(group), _fresh(fresh), _firstFree(fresh.firstSpid) {}

    void give(const OfficeArtDgContainer& drawing) {
        forEachShape(drawing.group, [this](const OfficeArtSpContainer& shape) { give(shape); });
        give(drawing.background);
        giveRules(drawing.solver);
        ArtHeader header = drawing.fdg.header;
        storeLe(&_bytes[fdgAt], static_cast<std::uint16_t>(header.recVer | _fresh.dgid << 4));
        storeLe(&_bytes[fdgAt + ArtHeader::wireSize + sizeof(std::uint32_t)], _highest);
    }

private:
    void give(const OfficeArtSpContainer& shape) {
        if (shape.absent || shape.fsp.absent) return;
        const std::uint32_t spid = moved(shape.fsp.spid);
        _group.useSpid(spid);
        _highest = std::max(_highest, spid);
        _known.emplace(shape.fsp.spid, spid);
        storeLe(&_bytes[shape.position + 2 * ArtHeader::wireSize + shape.fspgr.size()], spid);
    }

    // A rule has its own number and then those of shapes.
    void giveRules(const OfficeArtSolverContainer& solver) {
        std::size_t at = solver.position + ArtHeader::wireSize;
        for (const auto& rule : solver.rules) {
            const bool joins = rule->header.recType == OfficeArtFConnectorRule::kind.recType;
            for (std::size_t i = 1; i <= (joins ? 3U : 1U); ++i) {
                std::byte* const place = &_bytes[at + ArtHeader::wireSize + i * sizeof(std::uint32_t)];
                const auto known = _known.find(loadLe<std::uint32_t>(place));
                if (known != _known.end()) storeLe(place, known->second);
            }
            at += rule->size();
        }
    }

    // Whole clusters for whole clusters, so that all identifiers of one move by the same difference.
    std::uint32_t moved(std::uint32_t spid) {
        const auto [cluster, isNew] = _clusters.try_emplace(spid / clusterSize);
        if (isNew) {
            cluster->second = _firstFree != 0 ? _firstFree : _group.newCluster(_fresh.dgid);
            _firstFree = 0;
        }
        return cluster->second + spid % clusterSize;
    }

    std::span<std::byte> _bytes;
    DrawingGroup& _group;
    DrawingGroup::NewDrawing _fresh;
    std::uint32_t _firstFree;                                    // start of the first cluster, until it is taken
    std::unordered_map<std::uint32_t, std::uint32_t> _clusters;  // number of the old one, start of the new one
    std::unordered_map<std::uint32_t, std::uint32_t> _known;     // old identifiers, new ones
    std::uint32_t _highest = 0;
};

}  // namespace

void renumberDrawing(std::span<std::byte> bytes, DrawingGroup& group, std::uint32_t usedDgid) {
    ArtInput in(bytes);
    std::size_t remaining = bytes.size();
    OfficeArtDgContainer drawing;
    if (drawing.read(in, remaining) == 0 || drawing.fdg.absent) return;
    renumberDrawing(bytes, drawing, group, usedDgid);
}

void renumberDrawing(std::span<std::byte> bytes, const OfficeArtDgContainer& drawing, DrawingGroup& group,
                     std::uint32_t usedDgid) {
    const auto fresh = group.newDrawing(std::max<std::uint32_t>(usedDgid, drawing.fdg.header.recInstance));
    group.shapesChanged(std::int64_t{drawing.fdg.csp} - (fresh.isFirst ? std::int64_t{3} : 0));
    Renumberer(bytes, group, fresh).give(drawing);
}

}  // namespace vellum::drawing
