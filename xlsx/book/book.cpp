#include "xlsx/book/book.h"

#include <algorithm>

#include "engine/failure/vlerror.h"
#include "xlsx/package/content_type_names.h"
#include "xlsx/package/content_types.h"
#include "xlsx/package/messages.h"
#include "xlsx/package/part_path.h"
#include "xlsx/package/relationships.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/styles.h"

namespace vellum {

template <class CharT, class Tag>
XMLBookImplT<CharT, Tag>::XMLBookImplT() {
    fillNewBook();
}

template <class CharT, class Tag>
XMLBookImplT<CharT, Tag>::~XMLBookImplT() = default;

template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::release() {
    const std::unique_ptr<XMLBookImplT> end(this);
}

template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::fillNewBook() {
    _folder = "/xl";
    _mainPath = _folder + "/workbook.xml";
    _relationships = &addPart(relsPathOf(_mainPath), std::make_unique<Relationships>());
    addPart("/_rels/.rels", std::make_unique<Relationships>())
        .add(std::string(rel::transitional) + "officeDocument", "xl/workbook.xml");
    _parts.insert_or_assign(_mainPath, nullptr);
    _contentTypes = &addPart(std::string(ContentTypes::pathInPackage), std::make_unique<ContentTypes>());
    _contentTypes->setDefault("rels", type::relationships);
    _contentTypes->setDefault("xml", type::plainXml);
    _contentTypes->setOverride(_mainPath, type::workbook);
    ensureStyles();
    readDefaultFontSize();
    this->_root.bookViews().workbookView().append();
}

template <class CharT, class Tag>
XFile* XMLBookImplT<CharT, Tag>::findPart(std::string_view path) {
    const auto found = _parts.find(path);
    if (found != _parts.end()) return &partOf(found->second);
    // Real packages spell targets in other case than the entries. Most parts have no .rels part, which is asked often.
    if (path.ends_with(".rels")) return nullptr;
    const auto other = _parts.findIgnoringCase(path);
    return other == _parts.end() ? nullptr : &partOf(other->second);
}

/// Deletes a part that some relationship names. A file may name there what is no such part at all: what the book has
/// in use stays, and the answer is false.
template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::dropPart(std::string_view path) {
    const auto found = _parts.find(path);
    if (found == _parts.end()) return false;
    XFile* const part = found->second.get();
    const bool ofASheet = dynamic_cast<Sheet*>(part) || dynamic_cast<BinaryFile*>(part) ||
                          (dynamic_cast<Relationships*>(part) && part != _relationships);
    if (ofASheet) {
        _pictures.forgetPart(*part);
        forgetPlaced(part);
        _parts.erase(found);
    }
    return ofASheet;
}

template <class CharT, class Tag>
Relationships* XMLBookImplT<CharT, Tag>::findRelationshipsOf(std::string_view path) {
    return dynamic_cast<Relationships*>(findPart(relsPathOf(path)));
}

template <class CharT, class Tag>
XFile& XMLBookImplT<CharT, Tag>::putPart(const std::string& path, std::unique_ptr<XFile> part) {
    return addPart(path, std::move(part));
}

template <class CharT, class Tag>
Relationships& XMLBookImplT<CharT, Tag>::ensureRelationshipsOf(std::string_view path) {
    if (Relationships* const found = findRelationshipsOf(path)) return *found;
    const std::string relsPath = relsPathOf(path);
    ContentTypes& contentTypes = requireContentTypes();
    Relationships& made = addPart(relsPath, std::make_unique<Relationships>());
    if (contentTypes.typeOf(relsPath) != type::relationships) contentTypes.setOverride(relsPath, type::relationships);
    return made;
}

template <class CharT, class Tag>
ContentTypes& XMLBookImplT<CharT, Tag>::requireContentTypes() {
    if (!_contentTypes) throw vlerror(xlsx::msg::contentTypesNotFound);
    return *_contentTypes;
}

template <class CharT, class Tag>
Relationships& XMLBookImplT<CharT, Tag>::requireRelationships() {
    if (!_relationships) throw vlerror(xlsx::msg::relationshipsNotFound);
    return *_relationships;
}

/// A part beside the workbook that the relationships do not lead to. When one of this class stands there all the same,
/// under a name that differs in case or that nothing names, cells refer to it: it is taken and not hidden by a new one.
template <class CharT, class Tag>
template <class T>
T& XMLBookImplT<CharT, Tag>::makeMainPart(const std::string& kind, std::string_view contentType) {
    ContentTypes& contentTypes = requireContentTypes();
    Relationships& relationships = requireRelationships();
    const std::string path = _folder + "/" + kind + ".xml";
    const std::string wanted = comparablePath("", path);
    T* made = nullptr;
    for (const auto& [name, part] : _parts) {
        T* const found = dynamic_cast<T*>(part.get());
        if (found && comparablePath("", name) == wanted) made = found;
    }
    const auto leadsThere = [&](const auto& element) { return comparablePath(_folder, element.Target()) == wanted; };
    const auto& elements = relationships.root().Relationship();
    if (made && std::any_of(elements.begin(), elements.end(), leadsThere)) return *made;
    if (!made) {
        made = &addPart(path, std::make_unique<T>());
        contentTypes.setOverride(path, contentType);
    }
    relationships.add(rel::transitional + kind, kind + ".xml");
    return *made;
}

template <class CharT, class Tag>
Styles<CharT, Tag>& XMLBookImplT<CharT, Tag>::ensureStyles() {
    if (!_styles) {
        _styles = &makeMainPart<Styles<CharT, Tag>>("styles", type::styles);
        _styles->attach(*this);
    }
    return *_styles;
}

template <class CharT, class Tag>
SharedStrings<CharT, Tag>& XMLBookImplT<CharT, Tag>::ensureSharedStrings() {
    if (!_sharedStrings) {
        _sharedStrings = &makeMainPart<SharedStrings<CharT, Tag>>("sharedStrings", type::sharedStrings);
    }
    return *_sharedStrings;
}

}  // namespace vellum
