// The one place where exceptions become failure values.
#pragma once
#include <exception>

#include "engine/failure/last_error.h"
#include "engine/failure/messages.h"

namespace vellum {

/// Runs the body of an interface operation. Nothing thrown leaves it: the text becomes the book's last
/// error, `onFault` (which must not throw) puts things right, and the operation answers `onFailure`.
template <class Result, class Body, class OnFault>
Result guarded(LastError& last, Result onFailure, Body&& body, OnFault&& onFault) noexcept {
    try {
        last.clear();  // before the work, so that a "warning: ..." which the work leaves survives
        return body();
    } catch (const std::exception& e) {
        onFault();
        last.set(e.what());
    } catch (...) {
        onFault();
        last.set(msg::generalFailure);
    }
    return onFailure;
}

template <class Result, class Body>
Result guarded(LastError& last, Result onFailure, Body&& body) noexcept {
    return guarded<Result>(last, onFailure, static_cast<Body&&>(body), [] {});
}

}  // namespace vellum
