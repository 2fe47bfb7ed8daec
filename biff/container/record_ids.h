// Record identifiers of the workbook stream by their published names, and the limits that readers and
// writers of records share.
#pragma once
#include <cstddef>
#include <cstdint>

namespace vellum {

/// The largest body of one record; what is longer goes on in CONTINUE records.
inline constexpr std::uint16_t maxRecordBody = 8224;
/// Identifier and size, 16 bits each.
inline constexpr std::size_t recordHeaderSize = 4;

/// Identifier and size of a record, as they stand before each body.
struct RecordHeader {
    std::uint16_t id = 0, size = 0;
};

namespace record_id {

inline constexpr std::uint16_t Formula = 6;
inline constexpr std::uint16_t Eof = 10;
inline constexpr std::uint16_t CalcCount = 12;
inline constexpr std::uint16_t CalcMode = 13;
inline constexpr std::uint16_t CalcPrecision = 14;
inline constexpr std::uint16_t CalcRefMode = 15;
inline constexpr std::uint16_t CalcDelta = 16;
inline constexpr std::uint16_t CalcIter = 17;
inline constexpr std::uint16_t Protect = 18;
inline constexpr std::uint16_t Password = 19;
inline constexpr std::uint16_t Header = 20;
inline constexpr std::uint16_t Footer = 21;
inline constexpr std::uint16_t ExternSheet = 23;
inline constexpr std::uint16_t Lbl = 24;
inline constexpr std::uint16_t WinProtect = 25;
inline constexpr std::uint16_t VerticalPageBreaks = 26;
inline constexpr std::uint16_t HorizontalPageBreaks = 27;
inline constexpr std::uint16_t Note = 28;
inline constexpr std::uint16_t Selection = 29;
inline constexpr std::uint16_t Date1904 = 34;
inline constexpr std::uint16_t ExternName = 35;
inline constexpr std::uint16_t LeftMargin = 38;
inline constexpr std::uint16_t RightMargin = 39;
inline constexpr std::uint16_t TopMargin = 40;
inline constexpr std::uint16_t BottomMargin = 41;
inline constexpr std::uint16_t PrintRowCol = 42;
inline constexpr std::uint16_t PrintGrid = 43;
inline constexpr std::uint16_t FilePass = 47;
inline constexpr std::uint16_t Font = 49;
inline constexpr std::uint16_t Continue = 60;
inline constexpr std::uint16_t Window1 = 61;
inline constexpr std::uint16_t Backup = 64;
inline constexpr std::uint16_t Pane = 65;
inline constexpr std::uint16_t CodePage = 66;
inline constexpr std::uint16_t Pls = 77;
inline constexpr std::uint16_t DCon = 80;
inline constexpr std::uint16_t DefColWidth = 85;
inline constexpr std::uint16_t XCT = 89;
inline constexpr std::uint16_t CRN = 90;
inline constexpr std::uint16_t WriteAccess = 92;
inline constexpr std::uint16_t Obj = 93;
inline constexpr std::uint16_t Uncalced = 94;
inline constexpr std::uint16_t CalcSaveRecalc = 95;
inline constexpr std::uint16_t Template = 96;
inline constexpr std::uint16_t ObjProtect = 99;
inline constexpr std::uint16_t ColInfo = 125;
inline constexpr std::uint16_t Guts = 128;
inline constexpr std::uint16_t WsBool = 129;
inline constexpr std::uint16_t GridSet = 130;
inline constexpr std::uint16_t HCenter = 131;
inline constexpr std::uint16_t VCenter = 132;
inline constexpr std::uint16_t BoundSheet8 = 133;
inline constexpr std::uint16_t WriteProtect = 134;
inline constexpr std::uint16_t Country = 140;
inline constexpr std::uint16_t HideObj = 141;
inline constexpr std::uint16_t Sort = 144;
inline constexpr std::uint16_t Palette = 146;
inline constexpr std::uint16_t DxGCol = 153;
inline constexpr std::uint16_t FilterMode = 155;
inline constexpr std::uint16_t BuiltInFnGroupCount = 156;
inline constexpr std::uint16_t AutoFilterInfo = 157;
inline constexpr std::uint16_t AutoFilter = 158;
inline constexpr std::uint16_t Scl = 160;
inline constexpr std::uint16_t Setup = 161;
inline constexpr std::uint16_t MulRk = 189;
inline constexpr std::uint16_t MulBlank = 190;
inline constexpr std::uint16_t Mms = 193;
inline constexpr std::uint16_t ObProj = 211;
inline constexpr std::uint16_t RString = 214;
inline constexpr std::uint16_t DBCell = 215;
inline constexpr std::uint16_t BookBool = 218;
inline constexpr std::uint16_t ScenarioProtect = 221;
inline constexpr std::uint16_t XF = 224;
inline constexpr std::uint16_t InterfaceHdr = 225;
inline constexpr std::uint16_t InterfaceEnd = 226;
inline constexpr std::uint16_t MergeCells = 229;
inline constexpr std::uint16_t BkHim = 233;
inline constexpr std::uint16_t MsoDrawingGroup = 235;
inline constexpr std::uint16_t MsoDrawing = 236;
inline constexpr std::uint16_t MsoDrawingSelection = 237;
inline constexpr std::uint16_t PhoneticInfo = 239;
inline constexpr std::uint16_t SST = 252;
inline constexpr std::uint16_t LabelSst = 253;
inline constexpr std::uint16_t ExtSST = 255;
inline constexpr std::uint16_t RRTabId = 317;
inline constexpr std::uint16_t LRng = 351;
inline constexpr std::uint16_t UsesELFs = 352;
inline constexpr std::uint16_t DSF = 353;
inline constexpr std::uint16_t CUsr = 401;
inline constexpr std::uint16_t CbUsr = 402;
inline constexpr std::uint16_t UserBView = 425;
inline constexpr std::uint16_t UserSViewBegin = 426;
inline constexpr std::uint16_t UserSViewEnd = 427;
inline constexpr std::uint16_t SupBook = 430;
inline constexpr std::uint16_t Prot4Rev = 431;
inline constexpr std::uint16_t CondFmt = 432;
inline constexpr std::uint16_t CF = 433;
inline constexpr std::uint16_t DVal = 434;
inline constexpr std::uint16_t TxO = 438;
inline constexpr std::uint16_t RefreshAll = 439;
inline constexpr std::uint16_t HLink = 440;
inline constexpr std::uint16_t CodeName = 442;
inline constexpr std::uint16_t Prot4RevPass = 444;
inline constexpr std::uint16_t ObNoMacros = 445;
inline constexpr std::uint16_t Dv = 446;
inline constexpr std::uint16_t Excel9File = 448;
inline constexpr std::uint16_t RecalcId = 449;
inline constexpr std::uint16_t EntExU2 = 450;
inline constexpr std::uint16_t Dimensions = 512;
inline constexpr std::uint16_t Blank = 513;
inline constexpr std::uint16_t Number = 515;
inline constexpr std::uint16_t Label = 516;
inline constexpr std::uint16_t BoolErr = 517;
inline constexpr std::uint16_t String = 519;
inline constexpr std::uint16_t Row = 520;
inline constexpr std::uint16_t Index = 523;
inline constexpr std::uint16_t Array = 545;
inline constexpr std::uint16_t DefaultRowHeight = 549;
inline constexpr std::uint16_t Table = 566;
inline constexpr std::uint16_t Window2 = 574;
inline constexpr std::uint16_t RK = 638;
inline constexpr std::uint16_t Style = 659;
inline constexpr std::uint16_t Format = 1054;
inline constexpr std::uint16_t ShrFmla = 1212;
inline constexpr std::uint16_t HLinkTooltip = 2048;
inline constexpr std::uint16_t Bof = 2057;
inline constexpr std::uint16_t ContinueFrt = 2066;
inline constexpr std::uint16_t SheetExt = 2146;
inline constexpr std::uint16_t BookExt = 2147;
inline constexpr std::uint16_t HFPicture = 2150;
inline constexpr std::uint16_t FeatHdr = 2151;
inline constexpr std::uint16_t Feat = 2152;
inline constexpr std::uint16_t FeatHdr11 = 2161;
inline constexpr std::uint16_t Feature11 = 2162;
inline constexpr std::uint16_t DropDownObjIds = 2164;
inline constexpr std::uint16_t ContinueFrt11 = 2165;
inline constexpr std::uint16_t List12 = 2167;
inline constexpr std::uint16_t Feature12 = 2168;
inline constexpr std::uint16_t XFCRC = 2172;
inline constexpr std::uint16_t XFExt = 2173;
inline constexpr std::uint16_t AutoFilter12 = 2174;
inline constexpr std::uint16_t ContinueFrt12 = 2175;
inline constexpr std::uint16_t PLV = 2187;
inline constexpr std::uint16_t Compat12 = 2188;
inline constexpr std::uint16_t DXF = 2189;
inline constexpr std::uint16_t TableStyles = 2190;
inline constexpr std::uint16_t TableStyle = 2191;
inline constexpr std::uint16_t TableStyleElement = 2192;
inline constexpr std::uint16_t StyleExt = 2194;
inline constexpr std::uint16_t SortData = 2197;
inline constexpr std::uint16_t Theme = 2198;
inline constexpr std::uint16_t MTRSettings = 2202;
inline constexpr std::uint16_t CompressPictures = 2203;
inline constexpr std::uint16_t HeaderFooter = 2204;
inline constexpr std::uint16_t ForceFullCalc = 2211;
inline constexpr std::uint16_t ClrtClient = 4188;

}  // namespace record_id

}  // namespace vellum
