// A piece of a sheet's drawing and the objects behind it.
#pragma once
#include <cstddef>
#include <list>
#include <memory>
#include <vector>

#include "biff/container/record_ids.h"
#include "drawing/art/containers.h"
#include "drawing/records/obj_base.h"

namespace vellum::drawing {

/// A shape where it begins. Its bytes may go on in later units: the one of its text box stands behind its object.
struct PlacedShape {
    std::unique_ptr<OfficeArtSpContainer> record;
    std::size_t offset = 0;  // in the unit's piece
    std::size_t size = 0;    // with its header
    int container = -1;      // the group that holds it; for a group's own shape that group
    bool isGroup = false;    // stands for a group
};

/// The file cuts the one tree of a sheet's drawing into pieces, so that the records of each object stand right behind
/// the bytes of its shape.
struct DrawingUnit {
    std::vector<std::byte> piece;
    std::vector<RecordHeader> records;  // in which the piece lay in the file, for as long as nothing is changed
    std::vector<PlacedShape> shapes;    // that begin here
    std::vector<std::unique_ptr<ObjBase>> objects;
};

using Units = std::list<DrawingUnit>;

/// A place in the bytes of the drawing, which stays where it is while other units come and go.
struct PieceOffset {
    Units::iterator unit;
    std::size_t offset = 0;
};

/// A record whose length counts what is added to or taken from it.
struct PlacedContainer {
    PieceOffset place;                            // of its header
    int parent = -1;                              // 0 is the drawing, 1 its top group
    const OfficeArtSpContainer* shape = nullptr;  // of a group
    std::size_t bytesBehindShapes = 0;            // of a group within another one, as loaded
};

}  // namespace vellum::drawing
