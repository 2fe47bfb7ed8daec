// Settings of the book, and dates.
#include "engine/facts/date.h"
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "xlsx/book/book.h"
#include "xlsx/package/content_type_names.h"
#include "xlsx/package/content_types.h"
#include "xlsx/package/messages.h"

namespace vellum {
namespace {

constexpr unsigned defaultCalcId = 125725;

// Values of calculationMode.
constexpr int manual = 0;
constexpr int automatic = 1;
constexpr int automaticButTables = 2;

template <class T>
void put(T* out, T value) {
    if (out) *out = value;
}

}  // namespace

template <class CharT, class Tag>
double XMLBookImplT<CharT, Tag>::datePack(int year, int month, int day, int hour, int min, int sec, int msec) {
    return guarded(this->_lastError, 0.0, [&] {
        const DateTime t{year, month, day, hour, min, sec, msec};
        return isTimeOnly(t) ? packTime(t) : packDate(t, dates1904());
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::dateUnpack(double value, int* year, int* month, int* day, int* hour, int* min, int* sec,
                                          int* msec) {
    return guarded(this->_lastError, false, [&] {
        DateTime t;
        if (!unpackDate(value, dates1904(), t)) return false;
        put(year, t.year);
        put(month, t.month);
        put(day, t.day);
        put(hour, t.hour);
        put(min, t.min);
        put(sec, t.sec);
        put(msec, t.msec);
        return true;
    });
}

template <class CharT, class Tag>
auto XMLBookImplT<CharT, Tag>::ensureCalcPr() -> typename ooxml::dialect<Tag>::sml::c_CT_CalcPr& {
    auto& workbook = this->_root;
    if (!workbook.isset_calcPr()) workbook.calcPr().calcId(defaultCalcId);
    return workbook.calcPr();
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::isR1C1() const {
    const auto* const calcPr = this->_root.find_calcPr();
    return calcPr && calcPr->isset_refMode() && calcPr->refMode() == "R1C1";
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::usesR1C1() {
    return isR1C1();
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::setUsesR1C1(bool r1c1) {
    return guarded(this->_lastError, false, [&] {
        ensureCalcPr().refMode(r1c1 ? "R1C1" : "A1");
        return true;
    });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::calculationMode() {
    const auto* const calcPr = this->_root.find_calcPr();
    if (!calcPr) return automatic;
    if (calcPr->calcMode() == "autoNoTable") return automaticButTables;
    return calcPr->calcMode() == "manual" ? manual : automatic;
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::setCalculationMode(int mode) {
    return guarded(this->_lastError, false, [&] {
        if (mode == automatic) {
            if (auto* const calcPr = this->_root.find_calcPr()) calcPr->calcMode("auto");
        } else {
            ensureCalcPr().calcMode(mode == manual ? "manual" : "autoNoTable");
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::dates1904() const {
    const auto* const workbookPr = this->_root.find_workbookPr();
    return workbookPr && workbookPr->isset_date1904() && workbookPr->date1904();
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::isDate1904() {
    return dates1904();
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::setDate1904(bool date1904) {
    return guarded(this->_lastError, false, [&] {
        const auto* const workbookPr = this->_root.find_workbookPr();
        if (date1904 || (workbookPr && workbookPr->isset_date1904())) this->_root.workbookPr().date1904(date1904);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::isTemplateFile() {
    return guarded(this->_lastError, false,
                   [&] { return requireContentTypes().typeOf(_mainPath) == type::workbookTemplate; });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::setTemplateFile(bool isTemplate) {
    return guarded(this->_lastError, false, [&] {
        requireContentTypes().setOverride(_mainPath, isTemplate ? type::workbookTemplate : type::workbook);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::isWriteProtected() {
    return this->_root.isset_fileSharing();
}

/// Whether a part is passed through as bytes that nobody asks for; pictures are given out. The book's own place in the
/// map is null.
template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::isKept(std::string_view path, const XFile* part) const {
    return dynamic_cast<const BinaryFile*>(part) && _pictures.indexOfPath(path) < 0;
}

/// In the order of their names.
template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::keptTotal() {
    int count = 0;
    for (const auto& [path, part] : _parts) count += isKept(path, part.get());
    return count;
}

template <class CharT, class Tag>
const char* XMLBookImplT<CharT, Tag>::keptAt(int index, std::size_t* size) {
    for (const auto& [path, part] : _parts) {
        if (!isKept(path, part.get()) || index-- != 0) continue;
        put(size, dynamic_cast<const BinaryFile&>(*part).bytes().size());
        return path.c_str();
    }
    return nullptr;
}

}  // namespace vellum
