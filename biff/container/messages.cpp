#include "biff/container/messages.h"

namespace vellum::biff::msg {

std::string difatTooLong(std::uint32_t numDifatSectors) {
    return "Xls::loadDifat(): difat chain contains more sectors than _header.numDifatSectors (" +
           std::to_string(numDifatSectors) + ")";
}

std::string difatTooShort(std::uint32_t found, std::uint32_t numDifatSectors) {
    return "Xls::loadDifat(): difat chain sectors (" + std::to_string(found) + ") not equal _header.numDifatSectors (" +
           std::to_string(numDifatSectors) + ")";
}

std::string fatCount(std::uint32_t found, std::uint32_t numFatSectors) {
    return "Xls::loadFat(): extract fat sectors (" + std::to_string(found) + ") not equal _header.numFatSectors (" +
           std::to_string(numFatSectors) + ")";
}

std::string dirSectorNotInFat(std::uint32_t sector) {
    return "Xls::loadDir(): sector #" + std::to_string(sector) + " is not found in _fat";
}

std::string badSize(const char* record) {
    return std::string(record) + " size is incorrect";
}

std::string unexpectedRecord(const char* record) {
    return std::string(record) + ": unexpected record";
}

}  // namespace vellum::biff::msg
