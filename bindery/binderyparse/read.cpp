#include "bindery/binderyparse/read.h"

#include "bindery/values/error.h"

namespace bindery {

int c_read_memory::get() {
    if (_rest.empty()) return -1;
    const int c = static_cast<unsigned char>(_rest.front());
    _rest.remove_prefix(1);
    return c;
}

c_read_file::c_read_file(std::string path) : _path(std::move(path)), _file(std::fopen(_path.c_str(), "rb")) {}

c_read_file::~c_read_file() {
    if (_file != nullptr) std::fclose(_file);
}

int c_read_file::get() {
    return _file != nullptr ? std::getc(_file) : -1;
}

int c_read_file::errorCode() const {
    return _file != nullptr ? no_error : cannot_open_file;
}

}  // namespace bindery
