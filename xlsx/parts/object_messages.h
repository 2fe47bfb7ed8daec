// The texts about drawings, pictures, comments and controls.
#pragma once
#include "engine/facts/image_messages.h"
#include "xlsx/features/messages.h"

namespace vellum::xlsx::msg {

inline constexpr const char* drawingNotFound = "can't find drawing object";
inline constexpr const char* drawingNotAccessible = "can't get access to existing drawing object";
inline constexpr const char* drawingRelationshipsNotFound = "can't find drawing relationships";
inline constexpr const char* pictureIndexOutOfRange = "picture index is out of range";

inline constexpr const char* commentNotRead = "error in readComment";
inline constexpr const char* notSupported = "not supported";

inline constexpr const char* noControlProperties = "the control has no properties of a form control";
inline constexpr const char* controlValueUnknown = "the control property has no such value";

}  // namespace vellum::xlsx::msg
