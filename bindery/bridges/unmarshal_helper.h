// The loops that read bound classes.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "bindery/classes/class_info.h"
#include "bindery/values/node.h"

namespace bindery {

class ct_container_base;

/// Engine that reads one element, whose start tag the reader has just scanned, up to and with its end tag.
/// Its handlers say what belongs to which member.
class c_unmarshal_helper {
public:
    virtual ~c_unmarshal_helper();

    /// 0, or the code that was not forgiven.
    int unmarshal();

protected:
    c_unmarshal_helper(c_xml_reader& reader, bool mayBeEmpty) : _reader(reader), _mayBeEmpty(mayBeEmpty) {}

    /// Takes one attribute; false when it is none of the class.
    virtual bool attributeHandler(c_xml_reader& reader, const RawAttribute& attribute, int& error);
    /// Called behind the last attribute: looks for what is missing. Gives a code.
    virtual int attributeCheck();
    /// Reads the body of a class of simple content up to its end tag; false when the class has none.
    virtual bool textHandler(c_xml_reader& reader, int& error);
    /// Reads the children and stands on the end tag or on what no member took. Gives a code.
    virtual int elementHandler(c_xml_reader& reader);
    virtual bool hasSimpleContent() const;

    /// A failed scan ends the element: its code, whatever `userError` answers.
    int scanFailure();

    c_xml_reader& _reader;
    std::string_view _name;  // of the element, in the document's text
    bool _mayBeEmpty;
};

/// The handlers of every generated class, driven by its tables. Children may come in any order.
class c_table_unmarshal_helper : public c_unmarshal_helper {
public:
    c_table_unmarshal_helper(c_xml_reader& reader, c_bound& object, const ClassInfo& info);

protected:
    bool attributeHandler(c_xml_reader& reader, const RawAttribute& attribute, int& error) override;
    int attributeCheck() override;
    bool textHandler(c_xml_reader& reader, int& error) override;
    int elementHandler(c_xml_reader& reader) override;
    bool hasSimpleContent() const override;

private:
    int takeChild(c_node& object, const ClassInfo& info, std::size_t index);
    int takeOption(c_node& object, const ClassInfo& info, std::size_t index);
    int takeInGroups(ct_container_base& groups, const MemberInfo& member, bool outermost);
    int takeInGroup(c_node& group, const ClassInfo& info);
    int readChild(c_node& child, const ClassInfo& info);
    int readSimpleElement(void* holder, const MemberInfo& member);
    int keepUnknown();
    int tooMany(const MemberInfo& member, std::size_t already);
    int checkElements(const c_node& object, const ClassInfo& info);
    void at(const MemberInfo& member, const ClassInfo& info);
    void atClass();

    c_bound& _object;
    const ClassInfo& _info;
    std::uint16_t _slot = 0;  // place of the child read last, see Placed
    std::uint32_t _ordinal = 0;
};

/// Reads the element that the reader has just scanned into an object of the class.
int unmarshalObject(c_xml_reader& reader, c_node& object, const ClassInfo& info);

/// Reads a document: a root of another name or namespace gives code 16.
int unmarshalRoot(c_xml_reader& reader, c_node& object, const RootInfo& root);

/// Reads a document whose root may be one of several elements: the token of the one found, with its start tag
/// scanned, or 0 with `error` set.
int unmarshalRootName(c_xml_reader& reader, const NameEntry* roots, std::span<const NamespaceEntry> namespaces,
                      const char* sourceFile, int line, int& error);

/// A scan has failed inside an element of that name: the code to return, whatever `userError` answers.
int scanFailure(c_xml_reader& reader, std::string_view name);

// Keeping what nobody knows, for classes written by hand too.

/// The declarations of the start tag just read.
void keepDeclarations(c_xml_reader& reader, Extras& extras);
/// An attribute: reports code 39, and keeps it when that was forgiven.
int keepAttribute(c_xml_reader& reader, Extras& extras, const RawAttribute& attribute);
/// The element whose start tag, or the text that, the reader has just read: reports code 31, and keeps it when that
/// was forgiven. `parent` is the name of the element around it.
int keepElement(c_xml_reader& reader, Extras& extras, std::uint16_t slot, std::uint32_t ordinal,
                std::string_view parent);
/// Reports code 3 for a start tag that has an attribute twice, where no member tells.
int checkRepeatedAttributes(c_xml_reader& reader);
/// An attribute on a child of simple type; one that it has already is left as it is.
void keepChildAttribute(c_xml_reader& reader, Extras& extras, std::uint16_t slot, std::uint32_t ordinal,
                        const RawAttribute& attribute);

}  // namespace bindery
