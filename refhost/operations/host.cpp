#include "refhost/operations/host.h"

#include <filesystem>

#include "refhost/operations/module.h"

namespace refhost {

Host::Host(std::string directory) : _directory(std::move(directory)) {
    if (_directory.empty()) _directory = std::filesystem::current_path().string();
}

Host::~Host() = default;

void Host::load(const std::string& modulePath, const std::string& catalogue) {
    _module = &Module::load(modulePath, catalogue);
}

void Host::adopt(QuilletInit entry) {
    _module = &Module::adopt(entry);
}

Context& Host::context(int number) {
    const std::lock_guard lock(_mutex);
    std::unique_ptr<Context>& context = _contexts[number];
    if (!context) {
        context = std::make_unique<Context>(*this, number, _directory);
        const auto first = _contexts.find(1);
        if (number != 1 && first != _contexts.end()) {
            context->realFormat = first->second->realFormat;
            context->finishSets = first->second->finishSets;
            context->denied = first->second->denied;
        }
    }
    return *context;
}

}  // namespace refhost
