// How often random models run.
#pragma once

namespace vellum::test {

/// All rounds; a tenth of them under the sanitizers, where each takes ten times as long.
constexpr unsigned rounds(unsigned all) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return all / 10;
#else
    return all;
#endif
}

}  // namespace vellum::test
