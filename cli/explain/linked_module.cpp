#include "cli/explain/linked_module.h"

extern "C" int quillet_init(const HostApi* hostApi, int* hostInterfaceVersion, int* moduleVersion,
                            void** interfaceBlock);

namespace cli::explain {

void adoptModule(refhost::Host& host) {
    host.adopt(quillet_init);
}

}  // namespace cli::explain
