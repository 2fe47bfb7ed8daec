/*
 * A host's side of one statement, in C: the module is loaded, items are read, the module is shut down.
 * docs/host-interface.md explains the steps and quotes them. The table of operations, the context and the containers
 * are the host's own. Addresses become functions by POSIX's rule, which ISO C does not know: hence __extension__.
 *
 *     cc -std=c11 -pedantic -I PREFIX/include/quillet host.c -c     with PREFIX as in cmake --install
 */
#include <dlfcn.h>
#include <string.h>

#include "host/interface/host_api.h"

static const void* serviceOf(const HostInterfaceBlock* block, int64_t code) {
    const HostServiceRow* rows = block->services.rows;
    for (int i = 0; i < block->services.count; ++i)
        if (rows[i].code == code) return rows[i].value;
    return NULL;
}

static const void* operationOf(const HostDriverRow* driver, const char* name, int64_t code) {
    while (driver->name && strcmp(driver->name, name) != 0) ++driver;
    if (!driver->name) return NULL;
    const HostServiceRow* op = driver->ops;
    while (op->code != 0 && op->code != code) ++op;
    return op->value;
}

/* The module's tables, null when it cannot be loaded or does not work with this version of the host. */
const HostInterfaceBlock* loadModule(const char* path, const HostApi* hostApi, int hostVersion) {
    void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    QuilletInit init = library ? __extension__(QuilletInit) dlsym(library, "quillet_init") : NULL;
    if (!init) return NULL;
    int interfaceVersion, moduleVersion;
    void* block;
    init(hostApi, &interfaceVersion, &moduleVersion, &block); /* always 0 */

    int (*refuses)(int) = __extension__(int (*)(int)) serviceOf(block, hostServiceVersionCheck);
    return interfaceVersion == 5020 && refuses(hostVersion) == 0 ? block : NULL;
}

/* Runs the statement. The number of items not done, -1 when the file could not be opened. */
int readSales(const HostInterfaceBlock* block, HostContext* context, HostValue* total, HostArray* sales) {
    const HostDriverRow* drivers = serviceOf(block, hostServiceDrivers);
    HostOpenOp open = __extension__(HostOpenOp) operationOf(drivers, "csv", hostOpOpen);
    HostReadOp read = __extension__(HostReadOp) operationOf(drivers, "csv", hostOpRead);
    HostCloseOp close = __extension__(HostCloseOp) operationOf(drivers, "csv", hostOpClose);

    HostValue slots[2] = {{.object = total}, {.object = sales}};
    const char* labels[2] = {"[E1]", "[A:C]"};
    HostType types[5] = {hostTypeReal,                                     /* item 0: a scalar */
                         hostClassArray | hostFlagDynamic | 11 | 2u << 22, /* item 1: its field list is at place 2 */
                         2,                                                /* the list: two fields */
                         hostTypeReal | 0u << 12, 9 | 1u << 12};           /* their types and indices */
    int counters[2] = {0, 0};
    uint32_t flags = 0;
    void* source = open(context, &flags, "skiph;sales.csv");
    if (!source) return -1;
    int notDone = read(context, source, 2, labels, types, slots, counters);
    int failed = close(context, source);

    return failed ? 2 : notDone;
}

void shutDownModule(const HostInterfaceBlock* block) {
    int (*shutDown)(void) = __extension__(int (*)(void)) serviceOf(block, hostServiceShutdown);
    shutDown();
}
