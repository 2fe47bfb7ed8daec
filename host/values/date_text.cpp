#include <cstdio>

#include "host/sources/book_calls.h"
#include "host/values/cell_values.h"

namespace quillet {

bool dateCellText(Book* book, double serial, char* buffer) {
    int year = 0, month = 0, day = 0, hour = 0, min = 0, sec = 0, msec = 0;
    if (!bookDateUnpack(book, serial, &year, &month, &day, &hour, &min, &sec, &msec)) return false;
    const bool hasDate = year != 0 || month != 0 || day != 0;
    const bool hasTime = hour != 0 || min != 0 || sec != 0 || msec != 0;
    int length = 0;
    if (hasDate) length = std::snprintf(buffer, dateTextSize, "%4d-%02d-%02d", year, month, day);
    if (hasDate && !hasTime) return true;
    length += std::snprintf(buffer + length, std::size_t(dateTextSize - length),
                            hasDate ? "T%02d:%02d:%02d" : "%02d:%02d:%02d", hour, min, sec);
    if (msec != 0) std::snprintf(buffer + length, std::size_t(dateTextSize - length), ",%03d", msec);
    return true;
}

}  // namespace quillet
