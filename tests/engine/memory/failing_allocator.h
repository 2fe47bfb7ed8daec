// Memory that runs short on purpose.
#pragma once

namespace failing {

/// From now on the `number`-th allocation of this process fails, counted from 1, and those behind it succeed again;
/// 0: none fails. Counting begins anew.
void failAt(long number);
/// Allocations since the last call of `failAt`.
long allocations();

}  // namespace failing
