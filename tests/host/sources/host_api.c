#include "host/interface/host_api.h"

_Static_assert(sizeof(HostValue) == 8, "a value slot has 8 bytes");
_Static_assert(sizeof(HostInterfaceBlock) == 4 * 16, "four pairs of a count and a pointer");
_Static_assert(sizeof(HostServiceRow) == 16, "rows of two 8-byte fields");
_Static_assert(offsetof(HostApi, hostUnionClear) == sizeof(HostApi) - sizeof(void*), "the last operation");

HostApi emptyTable;
