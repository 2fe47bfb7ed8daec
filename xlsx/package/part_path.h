// Names of parts: absolute, with "/" between folders, UTF-8 as the archive has them.
#pragma once
#include <string>
#include <string_view>

namespace vellum {

/// Each backslash becomes "/", and a "/" is put in front if there is none.
std::string partPath(std::string_view entryName);

/// "/xl" of "/xl/workbook.xml", "" of "/workbook.xml".
std::string folderOf(std::string_view path);

/// "/xl/_rels/workbook.xml.rels" of "/xl/workbook.xml".
std::string relsPathOf(std::string_view path);

/// The part that a target of the main part's relationships means: as it is when it begins with `folder` + "/", else
/// below that. A leading "./" is dropped, leading "../" are resolved against the folder.
std::string absoluteTarget(std::string_view folder, std::string_view target);

/// A name in the form in which readers compare names: small letters, "%20" and the like resolved, without empty and
/// dot segments. A target that does not begin with "/" lies below `folder`.
std::string comparablePath(std::string_view folder, std::string_view target);

/// Text behind the last "." of the last name, "" when it has none.
std::string extensionOf(std::string_view path);

/// Equal but for the case of ASCII letters.
bool sameIgnoringCase(std::string_view a, std::string_view b);

/// Orders texts without regard to the case of ASCII letters.
struct LessIgnoringCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

}  // namespace vellum
