// The module's entry and the tables that it hands to the host.
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "host/interface/driver_calls.h"
#include "host/interface/driver_messages.h"
#include "host/interface/host.h"
#include "host/sources/csv_source.h"
#include "host/sources/source_list.h"
#include "host/sources/workbook_source.h"

namespace quillet {
namespace {

constexpr int hostInterfaceVersion = 5020;
constexpr int moduleVersion = 1014002;
constexpr int lowestHostVersion = 1000000;

constexpr const char* vendor = "The Quillet developers";

constexpr const char* workbookUsage =
    "[noindex|partndx|autondx[=#]|dataframe;][grow;][skiph[+];][emptyndx;][skiperrcell;][nan=s;][inf=s;][minf=s;]"
    "[bufsize=#;]filename";
constexpr const char* csvUsage =
    "[noindex|partndx|autondx[=#]|dataframe;][alltxt;][grow;][skiph[+];][emptyndx;][bufsize=#;][fsep=c;][dsep=c;]"
    "[true=s;][false=s;]filename";

int refuseVersion(int version) {
    return version < lowestHostVersion || version > moduleVersion ? 1 : 0;
}

int shutDown() {
    closeSourceList();
    return closeHost();
}

int reset() {
    return 0;
}

void raiseVersion(int what, HostValue, int* version) {
    if (what == 0 && *version < lowestHostVersion) *version = lowestHostVersion;
}

int notSupported(HostContext* context) {
    hostApi().hostDriverError(context, translate(msg::operationNotSupported), errNotSupported);
    return -1;
}

template <class Result, class... Args>
const void* address(Result (*function)(Args...)) {
    return reinterpret_cast<const void*>(function);
}

// Not supported in any driver; their meaning is the host's.
constexpr int opUnavailable3 = 3;
constexpr int opUnavailable4 = 4;

const HostServiceRow xlsOps[] = {
    {hostOpOpen, address(openWorkbook)},
    {hostOpClose, address(closeWorkbook)},
    {opUnavailable3, address(notSupported)},
    {opUnavailable4, address(notSupported)},
    {hostOpRead, address(driverRead)},
    {hostOpWrite, address(driverWrite)},
    {hostOpUsage, workbookUsage},
    {0, nullptr},
};

const HostServiceRow xlsxOps[] = {
    {hostOpOpen, address(openXmlWorkbook)},
    {hostOpClose, address(closeWorkbook)},
    {opUnavailable3, address(notSupported)},
    {opUnavailable4, address(notSupported)},
    {hostOpRead, address(driverRead)},
    {hostOpWrite, address(driverWrite)},
    {hostOpUsage, workbookUsage},
    {0, nullptr},
};

const HostServiceRow csvOps[] = {
    {hostOpOpen, address(openCsv)},          {hostOpClose, address(closeCsv)},  {opUnavailable3, address(notSupported)},
    {opUnavailable4, address(notSupported)}, {hostOpRead, address(driverRead)}, {hostOpWrite, address(driverWrite)},
    {hostOpSize, address(csvMemorySize)},    {hostOpUsage, csvUsage},           {0, nullptr},
};

const HostDriverRow drivers[] = {{"xls", xlsOps}, {"xlsx", xlsxOps}, {"csv", csvOps}, {nullptr, nullptr}};

const HostServiceRow services[] = {
    {hostServiceDrivers, drivers},
    {hostServiceVersionCheck, address(refuseVersion)},
    {hostServiceShutdown, address(shutDown)},
    {hostServiceReset, address(reset)},
    {hostServiceAskVersion, address(raiseVersion)},
    {hostServiceVendor, vendor},
    {hostServiceLowestVersion, reinterpret_cast<const void*>(std::intptr_t{lowestHostVersion})},
};

HostInterfaceBlock interfaceBlock = {
    {{0, nullptr}, {0, nullptr}, {0, nullptr}},
    {static_cast<std::int32_t>(std::size(services)), services},
};
static_assert(sizeof(HostInterfaceBlock) == 4 * 16 && sizeof(HostServiceRow) == 16);

}  // namespace
}  // namespace quillet

extern "C" __attribute__((visibility("default"))) int quillet_init(const HostApi* hostApi, int* hostInterfaceVersion,
                                                                   int* moduleVersion, void** interfaceBlock) {
    *hostInterfaceVersion = quillet::hostInterfaceVersion;
    *moduleVersion = quillet::moduleVersion;
    *interfaceBlock = &quillet::interfaceBlock;
    quillet::openSourceList();
    quillet::openHost(hostApi);
    return 0;
}
