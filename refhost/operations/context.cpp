#include "refhost/operations/context.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "refhost/operations/host.h"

namespace refhost {

Context::Context(Host& host_, int number_, std::string directory_)
    : host(host_), number(number_), directory(std::move(directory_)) {}

std::string Context::fullPath(std::string_view name) const {
    return (std::filesystem::path(directory) / std::filesystem::path(name)).lexically_normal().string();
}

void Context::deny(std::string_view path) {
    std::string full = fullPath(path);
    if (full.size() > 1 && full.back() == '/') full.pop_back();
    denied.push_back(std::move(full));
}

bool Context::isDenied(std::string_view name) const {
    if (denied.empty()) return false;
    const std::string path = fullPath(name);
    return std::any_of(denied.begin(), denied.end(), [&](const std::string& rule) {
        return path == rule || (path.starts_with(rule) && (rule == "/" || path[rule.size()] == '/'));
    });
}

bool Context::mayChange(const std::string& path, bool workbook) {
    std::string why;
    if (!host.beforeChange || host.beforeChange(path, workbook, why)) {
        if (workbook) workbookToChange = path;
        return true;
    }
    ownReports.push_back("'" + path + "' stays as it is: " + why);
    return false;
}

int Context::openStream(int mode, const char* name) {
    const bool writing = mode & hostStreamWriting;
    if (!name || !*name) return report(mode, "", "no file name"), -1;
    if (isDenied(name)) return report(mode, name, "access denied"), -1;
    if (writing ? output.isOpen() : input.isOpen()) return report(mode, name, "another stream is open"), -1;
    const std::string path = fullPath(name);
    if (writing && !mayChange(path, false)) return -1;
    const StreamKind kind = mode & hostStreamBinary ? StreamKind::binary : StreamKind::text;
    if (!(host.overlay ? openHeld(writing, path, kind)
          : writing    ? output.open(path.c_str(), kind)
                       : input.open(path.c_str(), kind)))
        return report(mode, name, std::strerror(errno)), -1;
    if (!writing) input.failAfter = host.faults.inputFailsAfter;
    bytesRead = 0;
    ++host.counts.streamsOpened;
    return 0;
}

bool Context::openHeld(bool writing, const std::string& path, StreamKind kind) {
    const std::string* const held = host.overlay->find(path);
    if (!writing) {
        if (!held) return input.open(path.c_str(), kind);
        input.openHeld(*held, kind);
        return true;
    }
    const bool marked = kind == StreamKind::text && (held ? hasByteOrderMark(*held) : hasByteOrderMark(path.c_str()));
    std::string* const content = host.overlay->make(path);
    if (content) output.openHeld(*content, marked);
    return content != nullptr;
}

bool Context::closeStream(int which) {
    const bool writing = which == hostOutputStream;
    if (!(writing ? output.isOpen() : input.isOpen())) return false;
    ++host.counts.streamsClosed;
    const bool closed = writing ? output.close() : input.close();
    return closed && !(writing ? host.faults.closeOutput : host.faults.closeInput).hits();
}

long Context::readStream(void* buffer, long count) {
    const long got = input.read(buffer, count);
    if (got > 0) bytesRead.fetch_add(got, std::memory_order_relaxed);
    return got;
}

bool Context::report(int mode, const char* name, const char* reason) {
    if (mode & hostStreamQuietly) return false;
    ownReports.push_back("cannot open '" + std::string(name) + "' for " +
                         (mode & hostStreamWriting ? "writing: " : "reading: ") + reason);
    return false;
}

}  // namespace refhost
