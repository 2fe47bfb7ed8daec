// XMLFormatImplT is compiled here, once for each form of it: its pieces are sources of this one.
#include "xlsx/styles/format.h"

#include "xlsx/styles/format.cpp"
#include "xlsx/styles/format_lines.cpp"

namespace vellum {

template class XMLFormatImplT<char, excelNormal_tag>;
template class XMLFormatImplT<char, excelStrict_tag>;
template class XMLFormatImplT<wchar_t, excelNormal_tag>;
template class XMLFormatImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
