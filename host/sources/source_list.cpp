#include "host/sources/source_list.h"

#include <pthread.h>
#include <cstdlib>
#include <cstring>

#include "host/interface/driver_messages.h"
#include "host/interface/host.h"

namespace quillet {
namespace {

pthread_mutex_t listMutex;
DriverContext* head = nullptr;

class ListLock {
public:
    ListLock() { pthread_mutex_lock(&listMutex); }
    ~ListLock() { pthread_mutex_unlock(&listMutex); }
    ListLock(const ListLock&) = delete;
    ListLock& operator=(const ListLock&) = delete;
};

void unlink(DriverContext* source) {
    (source->prev ? source->prev->next : head) = source->next;
    if (source->next) source->next->prev = source->prev;
}

}  // namespace

void openSourceList() {
    pthread_mutex_init(&listMutex, nullptr);
}

void closeSourceList() {
    pthread_mutex_destroy(&listMutex);
}

DriverContext* createSource(const char* path, std::int32_t bufferSize, bool withSpecialValues) {
    const std::size_t pathSize = std::strlen(path) + 1;
    const std::size_t specialSize = withSpecialValues ? sizeof(SpecialValues) : 0;
    const auto textSize = static_cast<std::size_t>(bufferSize);  // a multiple of 1024, so that what follows is aligned
    auto* const source =
        static_cast<DriverContext*>(std::calloc(1, sizeof(DriverContext) + textSize + specialSize + pathSize));
    if (!source) return nullptr;
    source->refCount = 1;
    source->bufferSize = bufferSize;
    char* place = source->textBuffer() + textSize;
    if (withSpecialValues) source->specialValues = reinterpret_cast<SpecialValues*>(place);
    place += specialSize;
    std::memcpy(place, path, pathSize);
    source->path = place;
    return source;
}

void destroySource(DriverContext* source) {
    std::free(source);
}

void linkSource(DriverContext* source) {
    const ListLock lock;
    source->prev = nullptr;
    source->next = head;
    if (head) head->prev = source;
    head = source;
}

DriverContext* findSource(HostContext* context, bool wantsWrite, const TableOps* ops, const char* path, int* error) {
    *error = 0;
    const ListLock lock;
    for (DriverContext* source = head; source; source = source->next) {
        if (source->hostContext != context || std::strcmp(source->path, path) != 0 || source->ops != ops) continue;
        if (wantsWrite && !(source->optionFlags & optUpdate)) {
            hostApi().hostDriverError(context, translate(msg::openForReadingOnly), errOpenForReading);
            *error = 1;
            return nullptr;
        }
        ++source->refCount;
        return source;
    }
    return nullptr;
}

bool releaseSource(DriverContext* source) {
    const ListLock lock;
    if (source->refCount-- > 1) return false;
    unlink(source);
    return true;
}

}  // namespace quillet
