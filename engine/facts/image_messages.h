// Texts about pictures that both engines give.
#pragma once

namespace vellum::msg {

inline constexpr const char* unknownPictureFormat = "unknown picture format";
inline constexpr const char* gifCorrupted = "gif picture is corrupted";
inline constexpr const char* jpgInvalid = "invalid jpg file";
inline constexpr const char* jpgCorrupted = "jpg picture is corrupted";
inline constexpr const char* pictureNameNull = "file name can't be 0";
inline constexpr const char* cantOpenPicture = "can't open file";
inline constexpr const char* pictureFileEmpty = "file is empty";
inline constexpr const char* pictureNotFound = "picture not found";
inline constexpr const char* pictureIdOutOfRange = "pictureId is out of range";

}  // namespace vellum::msg
