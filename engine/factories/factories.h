// New workbooks of either format.
#pragma once
#include "engine/api/ibook.h"

namespace vellum {

/// A new book of the binary format (.xls), null when there is no memory. Ends with its `release`.
template <class CharT>
IBookT<CharT>* vlCreateBook() noexcept;

/// A new book of Open XML (.xlsx and its kin).
template <class CharT>
IBookT<CharT>* vlCreateXMLBook() noexcept;

extern template IBookT<char>* vlCreateBook<char>() noexcept;
extern template IBookT<wchar_t>* vlCreateBook<wchar_t>() noexcept;
extern template IBookT<char>* vlCreateXMLBook<char>() noexcept;
extern template IBookT<wchar_t>* vlCreateXMLBook<wchar_t>() noexcept;

}  // namespace vellum
