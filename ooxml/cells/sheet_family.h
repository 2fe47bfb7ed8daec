// The two dialects of a worksheet.
#pragma once
namespace sheet {
class c_CT_CellFormula;
class c_CT_Rst;
}  // namespace sheet

namespace strict {
class c_CT_CellFormula;
class c_CT_Rst;
}  // namespace strict

namespace ooxml {

/// The generated classes that the cells of each dialect use.
struct SheetFamily {
    using c_CT_CellFormula = ::sheet::c_CT_CellFormula;
    using c_CT_Rst = ::sheet::c_CT_Rst;
    static constexpr bool strict = false;
};

struct StrictFamily {
    using c_CT_CellFormula = ::strict::c_CT_CellFormula;
    using c_CT_Rst = ::strict::c_CT_Rst;
    static constexpr bool strict = true;
};

}  // namespace ooxml
