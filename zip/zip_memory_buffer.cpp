#include "zip/zip_memory_buffer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

namespace zip {
namespace {

constexpr std::size_t growStep = 1024;

}  // namespace

ZipMemoryBuffer::ZipMemoryBuffer(const void* data, std::size_t size)
    : _data(static_cast<char*>(const_cast<void*>(data))), _size(size), _capacity(size), _owns(false) {}

ZipMemoryBuffer::~ZipMemoryBuffer() {
    if (_owns) std::free(_data);
}

ZipMemoryBuffer::ZipMemoryBuffer(ZipMemoryBuffer&& other) noexcept {
    *this = std::move(other);
}

ZipMemoryBuffer& ZipMemoryBuffer::operator=(ZipMemoryBuffer&& other) noexcept {
    std::swap(_data, other._data);
    std::swap(_position, other._position);
    std::swap(_size, other._size);
    std::swap(_capacity, other._capacity);
    std::swap(_owns, other._owns);
    return *this;
}

bool ZipMemoryBuffer::reserve(std::size_t capacity) {
    if (capacity <= _capacity) return true;
    if (!_owns || capacity > std::numeric_limits<std::size_t>::max() - growStep) return false;
    const std::size_t rounded = (capacity + growStep - 1) / growStep * growStep;
    char* const grown = static_cast<char*>(std::realloc(_data, rounded));
    if (!grown) return false;
    _data = grown;
    _capacity = rounded;
    return true;
}

char* ZipMemoryBuffer::spaceAtEnd(std::size_t count) {
    if (count > _capacity - _size) {
        if (count > std::numeric_limits<std::size_t>::max() / 2 - _size) return nullptr;
        if (!reserve(std::max(_size + count, _capacity + _capacity / 2))) return nullptr;
    }
    return _data + _size;
}

std::size_t ZipMemoryBuffer::read(void* to, std::size_t count) {
    if (_position >= _size) return 0;
    const std::size_t part = std::min(count, _size - _position);
    if (part > 0) std::memcpy(to, _data + _position, part);
    _position += part;
    return part;
}

bool ZipMemoryBuffer::write(const void* from, std::size_t count) {
    if (!_owns) return false;
    if (count == 0) return true;
    if (_position > std::numeric_limits<std::size_t>::max() / 2 - count) return false;
    const std::size_t end = _position + count;
    if (end > _size) {
        if (!spaceAtEnd(end - _size)) return false;
        if (_position > _size) std::memset(_data + _size, 0, _position - _size);
        _size = end;
    }
    std::memcpy(_data + _position, from, count);
    _position = end;
    return true;
}

char* ZipMemoryBuffer::release(std::size_t* size) {
    *size = _size;
    _position = _size = _capacity = 0;
    _owns = true;
    return std::exchange(_data, nullptr);
}

}  // namespace zip
