// Dates, colours and the settings of a workbook.
#include "biff/book/book.h"
#include "biff/records/book_messages.h"
#include "engine/api/enums.h"
#include "engine/facts/date.h"
#include "engine/failure/guarded.h"

namespace vellum {

namespace {

void give(int* out, int value) {
    if (out != nullptr) *out = value;
}

}  // namespace

template <class CharT>
double BookImplT<CharT>::datePack(int year, int month, int day, int hour, int min, int sec, int msec) {
    this->_lastError.clear();
    const DateTime t{year, month, day, hour, min, sec, msec};
    return isTimeOnly(t) ? 0.0 : packDate(t, date1904());
}

template <class CharT>
bool BookImplT<CharT>::dateUnpack(double value, int* year, int* month, int* day, int* hour, int* min, int* sec,
                                  int* msec) {
    this->_lastError.clear();
    DateTime t;
    if (!unpackDate(value, date1904(), t)) return false;
    give(year, t.year);
    give(month, t.month);
    give(day, t.day);
    give(hour, t.hour);
    give(min, t.min);
    give(sec, t.sec);
    give(msec, t.msec);
    return true;
}

template <class CharT>
bool BookImplT<CharT>::setDate1904(bool date1904) {
    this->_lastError.clear();
    _globals.date1904.value = date1904 ? 1 : 0;
    return true;
}

template <class CharT>
int BookImplT<CharT>::packColor(int red, int green, int blue) {
    return guarded(this->_lastError, int{noColor}, [&] { return _globals.palette.pack(red, green, blue); });
}

template <class CharT>
bool BookImplT<CharT>::unpackColor(int color, int* red, int* green, int* blue) {
    return guarded(this->_lastError, false, [&] {
        const PaletteColor c = _globals.palette.at(color);
        give(red, c.red);
        give(green, c.green);
        give(blue, c.blue);
        return true;
    });
}

// Colours stay indices in this format whatever the mode; the flag is the caller's.
template <class CharT>
bool BookImplT<CharT>::setUsesRgbColors(bool rgb) {
    this->_lastError.clear();
    _rgb = rgb;
    return true;
}

template <class CharT>
int BookImplT<CharT>::addPictureLink(const CharT*, bool) {
    this->_lastError.set(biff::msg::notForXls);
    return -1;
}

// The file has these settings once for each sheet; the last one speaks for the book.

template <class CharT>
bool BookImplT<CharT>::usesR1C1() {
    return _sheets.empty() ? _r1c1 : _sheets.back()->usesR1C1();
}

template <class CharT>
bool BookImplT<CharT>::setUsesR1C1(bool r1c1) {
    this->_lastError.clear();
    for (const auto& sheet : _sheets) sheet->setUsesR1C1(r1c1);
    _r1c1 = r1c1;
    return true;
}

template <class CharT>
int BookImplT<CharT>::calculationMode() {
    return _sheets.empty() ? int{calculateAuto} : _sheets.back()->calcMode();
}

template <class CharT>
bool BookImplT<CharT>::setCalculationMode(int mode) {
    this->_lastError.clear();
    for (const auto& sheet : _sheets) sheet->setCalcMode(mode);
    return true;
}

template <class CharT>
bool BookImplT<CharT>::setTemplateFile(bool isTemplate) {
    this->_lastError.clear();
    _globals.isTemplate = isTemplate;
    return true;
}

}  // namespace vellum
