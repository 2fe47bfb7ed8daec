// The texts of the reader.
#pragma once
// Texts of the reader's reports; what was found is joined to those that end in a blank, a quote or a parenthesis.
namespace bindery::msg {

inline constexpr const char* unrecognisedEncoding = "Unrecognised character encoding";
inline constexpr const char* unknownEncoding = "Unknown character encoding specified";
inline constexpr const char* encodingMismatch = "Mis-match between specfied encoding and byte format";
inline constexpr const char* declarationNotAtStart = "XML declaration not at start of document";
inline constexpr const char* noVersion = "Version not present in XML Decl";
inline constexpr const char* versionBefore = "XML version ";
inline constexpr const char* versionBehind = " not understood";
inline constexpr const char* recursiveEntity = "Recursive entity definition for: ";
inline constexpr const char* doctypeNotAtStart = "Document Type Declaration not at start of document";
inline constexpr const char* doctypeAgain = "Document Type Declaration already read";
inline constexpr const char* entityBefore = "Entity '%";
inline constexpr const char* entityNotFoundBehind = "' not found";
inline constexpr const char* dtdGot = "DTD not Well Formed (got ";
inline constexpr const char* dtdExpectedEnd = "DTD not Well Formed (expected '>', got ";
inline constexpr const char* externalEntity = "External Entity definitions not supported";
inline constexpr const char* entityValue = "Unexpected value in Entity definition: ";
inline constexpr const char* endOfComment = "End of comment not Well-Formed";
inline constexpr const char* notWellFormedSection = "XML not Well-Formed";
inline constexpr const char* notWellFormed = "XML not well-formed";
inline constexpr const char* expectedEquals = "Schema is not Well Formed (expected '=', got '";
inline constexpr const char* expectedQuote = "Schema is not Well Formed (expected '\"' or ''', got ";
inline constexpr const char* unexpectedEnd = "Unexpected end of file";
inline constexpr const char* prematureEnd = "Premature end of file encountered";
inline constexpr const char* afterSlash = "Illegal character(s) after / at end of tag - ";
inline constexpr const char* startTagBefore = "Element start tag (";
inline constexpr const char* endTagBefore = ") and end tag (";
inline constexpr const char* tagsBehind = ") do not match";
inline constexpr const char* tooDeep = "Elements are nested too deeply";
inline constexpr const char* cannotOpen = "Unable to open file";

}  // namespace bindery::msg
