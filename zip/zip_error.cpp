#include "zip/zip_error.h"

#include <system_error>

#include "zip/messages.h"

namespace zip {

void throwFileError(int errorNumber) {
    throw ZipError(std::string(msg::fileError) + " (" + std::generic_category().message(errorNumber) + ".).");
}

}  // namespace zip
