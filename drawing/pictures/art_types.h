// Every class of the drawing records, once: for what must hold for each of them.
#pragma once
#include "drawing/art/containers.h"
#include "drawing/pictures/blip.h"
#include "drawing/pictures/dgg_container.h"
#include "drawing/pictures/fbse.h"

namespace vellum::drawing {

using AllArtTypes =
    ArtTypes<OfficeArtDggContainer, OfficeArtFDGGBlock, OfficeArtFBSE, OfficeArtDgContainer, OfficeArtFDG,
             OfficeArtFRITContainer, OfficeArtSpgrContainer, OfficeArtSpContainer, OfficeArtFSPGR, OfficeArtFSP,
             OfficeArtFOPT, OfficeArtSecondaryFOPT, OfficeArtTertiaryFOPT, OfficeArtClientTextbox, OfficeArtChildAnchor,
             OfficeArtClientAnchorSheet, OfficeArtClientData, OfficeArtFConnectorRule, OfficeArtFArcRule,
             OfficeArtFCalloutRule, OfficeArtSolverContainer, OfficeArtColorMRUContainer,
             OfficeArtSplitMenuColorContainer, OfficeArtFDGSL, OfficeArtFPSPL, OfficeArtBlipEMF, OfficeArtBlipWMF,
             OfficeArtBlipPICT, OfficeArtBlipJPEG, OfficeArtBlipJPEG2, OfficeArtBlipPNG, OfficeArtBlipDIB,
             OfficeArtBlipTIFF, OfficeArtBlipTIFF2>;

}  // namespace vellum::drawing
