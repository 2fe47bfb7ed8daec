#include "biff/record_ids.h"

#include <algorithm>
#include <iterator>

namespace vellum {
namespace {

struct NamedId {
    std::uint16_t id;
    const char* name;
};

constexpr NamedId namedIds[] = {
    {6, "Formula"}, {10, "Eof"}, {12, "CalcCount"}, {13, "CalcMode"}, {14, "CalcPrecision"}, {15, "CalcRefMode"},
    {16, "CalcDelta"}, {17, "CalcIter"}, {18, "Protect"}, {19, "Password"}, {20, "Header"}, {21, "Footer"},
    {23, "ExternSheet"}, {24, "Lbl"}, {25, "WinProtect"}, {26, "VerticalPageBreaks"}, {27, "HorizontalPageBreaks"},
    {28, "Note"}, {29, "Selection"}, {34, "Date1904"}, {35, "ExternName"}, {38, "LeftMargin"}, {39, "RightMargin"},
    {40, "TopMargin"}, {41, "BottomMargin"}, {42, "PrintRowCol"}, {43, "PrintGrid"}, {47, "FilePass"}, {49, "Font"},
    {60, "Continue"}, {61, "Window1"}, {64, "Backup"}, {65, "Pane"}, {66, "CodePage"}, {77, "Pls"}, {80, "DCon"},
    {85, "DefColWidth"}, {89, "XCT"}, {90, "CRN"}, {92, "WriteAccess"}, {93, "Obj"}, {94, "Uncalced"},
    {95, "CalcSaveRecalc"}, {96, "Template"}, {99, "ObjProtect"}, {125, "ColInfo"}, {128, "Guts"}, {129, "WsBool"},
    {130, "GridSet"}, {131, "HCenter"}, {132, "VCenter"}, {133, "BoundSheet8"}, {134, "WriteProtect"},
    {140, "Country"}, {141, "HideObj"}, {144, "Sort"}, {146, "Palette"}, {153, "DxGCol"}, {155, "FilterMode"},
    {156, "BuiltInFnGroupCount"}, {157, "AutoFilterInfo"}, {158, "AutoFilter"}, {160, "Scl"}, {161, "Setup"},
    {189, "MulRk"}, {190, "MulBlank"}, {193, "Mms"}, {211, "ObProj"}, {214, "RString"}, {215, "DBCell"},
    {218, "BookBool"}, {221, "ScenarioProtect"}, {224, "XF"}, {225, "InterfaceHdr"}, {226, "InterfaceEnd"},
    {229, "MergeCells"}, {233, "BkHim"}, {235, "MsoDrawingGroup"}, {236, "MsoDrawing"}, {237, "MsoDrawingSelection"},
    {239, "PhoneticInfo"}, {252, "SST"}, {253, "LabelSst"}, {255, "ExtSST"}, {317, "RRTabId"}, {351, "LRng"},
    {352, "UsesELFs"}, {353, "DSF"}, {401, "CUsr"}, {402, "CbUsr"}, {425, "UserBView"}, {426, "UserSViewBegin"},
    {427, "UserSViewEnd"}, {430, "SupBook"}, {431, "Prot4Rev"}, {432, "CondFmt"}, {433, "CF"}, {434, "DVal"},
    {438, "TxO"}, {439, "RefreshAll"}, {440, "HLink"}, {442, "CodeName"}, {444, "Prot4RevPass"}, {445, "ObNoMacros"},
    {446, "Dv"}, {448, "Excel9File"}, {449, "RecalcId"}, {450, "EntExU2"}, {512, "Dimensions"}, {513, "Blank"},
    {515, "Number"}, {516, "Label"}, {517, "BoolErr"}, {519, "String"}, {520, "Row"}, {523, "Index"}, {545, "Array"},
    {549, "DefaultRowHeight"}, {566, "Table"}, {574, "Window2"}, {638, "RK"}, {659, "Style"}, {1054, "Format"},
    {1212, "ShrFmla"}, {2048, "HLinkTooltip"}, {2057, "Bof"}, {2066, "ContinueFrt"}, {2146, "SheetExt"},
    {2147, "BookExt"}, {2150, "HFPicture"}, {2151, "FeatHdr"}, {2152, "Feat"}, {2161, "FeatHdr11"},
    {2162, "Feature11"}, {2164, "DropDownObjIds"}, {2165, "ContinueFrt11"}, {2167, "List12"}, {2168, "Feature12"},
    {2172, "XFCRC"}, {2173, "XFExt"}, {2174, "AutoFilter12"}, {2175, "ContinueFrt12"}, {2187, "PLV"},
    {2188, "Compat12"}, {2189, "DXF"}, {2190, "TableStyles"}, {2191, "TableStyle"}, {2192, "TableStyleElement"},
    {2194, "StyleExt"}, {2197, "SortData"}, {2198, "Theme"}, {2202, "MTRSettings"}, {2203, "CompressPictures"},
    {2204, "HeaderFooter"}, {2211, "ForceFullCalc"}, {4188, "ClrtClient"},
};

constexpr bool ascends() {
    for (std::size_t i = 1; i < std::size(namedIds); ++i) {
        if (namedIds[i].id <= namedIds[i - 1].id) return false;
    }
    return true;
}
static_assert(ascends(), "searched by halving");

}  // namespace

const char* recordName(std::uint16_t id) {
    const auto* at = std::ranges::lower_bound(namedIds, id, {}, &NamedId::id);
    return at != std::end(namedIds) && at->id == id ? at->name : nullptr;
}

}  // namespace vellum
