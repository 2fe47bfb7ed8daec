// The texts of failures in drawings of binary workbooks.
#pragma once
#include "engine/failure/messages.h"

namespace vellum::drawing::msg {

using namespace vellum::msg;

// Drawing records.
inline constexpr const char* dggContainer = "error in record OfficeArtDggContainer";
inline constexpr const char* fdggBlock = "error in record OfficeArtFDGGBlock";
inline constexpr const char* fritContainer = "error in record OfficeArtFRITContainer";
inline constexpr const char* spgrContainer = "error in record OfficeArtSpgrContainer";
inline constexpr const char* dgContainer = "OfficeArtDgContainer: file is corrupt";
inline constexpr const char* pictureList = "OfficeArtBStoreContainer: file is corrupt";

// Pictures.
inline constexpr const char* jpegRead = "error in record OfficeArtBlipJPEG (2)";
inline constexpr const char* blipNotContinued = "error in record OfficeArtBlip";
inline constexpr const char* blipCorrupt = "OfficeArtBlip: data is corrupted";
inline constexpr const char* blipEmpty = "OfficeArtBlip: buffer is empty";
inline constexpr const char* compressedData = "error in compressed data";
inline constexpr const char* pictureEmpty = "picture is empty";
inline constexpr const char* picturePosition = "incorrect picture position";
inline constexpr const char* offsetsCut = "warning: offset_x and offset_y exceed cell's size";
inline constexpr const char* offsetYCut = "warning: offset_y exceed cell's height";
inline constexpr const char* offsetXCut = "warning: offset_x exceed cell's width";

// Objects.
inline constexpr const char* objectsCorrupt = "Objects: file is corrupt";
inline constexpr const char* objRecord = "error in record Obj";
inline constexpr const char* textObject = "error in record TextObject";
inline constexpr const char* objFmla = "error in record ObjFmla";
inline constexpr const char* objLinkFmla = "error in record ObjLinkFmla";
inline constexpr const char* lbsData = "error in record FtLbsData";
inline constexpr const char* tooManyObjects = "too many objects on the sheet";
inline constexpr const char* tooManyDrawings = "too many drawings in the workbook";
inline constexpr const char* strangeDrawing = "the sheet's drawing can't be changed";
inline constexpr const char* noDrawingOnChart = "pictures and comments need a worksheet";
inline constexpr const char* noComment = "this cell doesn't have a comment";

}  // namespace vellum::drawing::msg
