// SPDX-License-Identifier: MIT
// Parsing and indexing. The index is sorted, not hashed into buckets: whoever writes a description can choose
// names whose hashes collide, and sorting by hash and then by name keeps its time whatever the names are.
#include "Description.h"

#include "Archive.h"
#include "Raise.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace GenApi_3_2_TVN {
namespace {

using GenICam_3_2_TVN::InvalidArgumentException;

constexpr const char *sourceFileName = "GenApi/Description";

bool hasTag(pugi::xml_node element, const char *tag)
{
    return std::strcmp(element.name(), tag) == 0;
}

/// Visits the children of the root and of groups, in document order.
template <class Visitor>
void forEachElement(pugi::xml_node root, Visitor visit)
{
    pugi::xml_node element = root.first_child();
    pugi::xml_node parent = root;
    for (;;) {
        if (!element) {
            if (parent == root)
                return;
            element = parent.next_sibling();
            parent = parent.parent();
            continue;
        }
        if (hasTag(element, "Group")) {
            parent = element;
            element = element.first_child();
            continue;
        }
        visit(element);
        element = element.next_sibling();
    }
}

/// A node without a name can't be referred to, so there is none.
template <class Visitor>
void visitIfNamed(pugi::xml_node element, Visitor &visit)
{
    const char *const name = element.attribute("Name").value();
    if (*name != '\0')
        visit(element, name);
}

/// Visits every element that defines a named node, entries of a StructReg among them, in document order.
template <class Visitor>
void forEachNode(pugi::xml_node root, Visitor visit)
{
    forEachElement(root, [&visit](pugi::xml_node element) {
        visitIfNamed(element, visit);
        if (!hasTag(element, "StructReg"))
            return;
        for (const pugi::xml_node entry : element.children("StructEntry"))
            visitIfNamed(entry, visit);
    });
}

/// Of other encodings pugixml counts in the UTF-8 that it has made of them, which is gone.
std::string placeOf(std::string_view xml, const pugi::xml_parse_result &result)
{
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
    if (result.encoding != pugi::encoding_utf8)
        return "byte " + std::to_string(offset) + " as UTF-8";
    const std::size_t place = std::min(offset, xml.size());
    const auto line = 1 + std::count(xml.begin(), xml.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    return "line " + std::to_string(line) + ", byte " + std::to_string(place);
}

/// Before anything is copied.
std::string_view requireSize(std::string_view bytes)
{
    if (bytes.empty())
        raise<InvalidArgumentException>(sourceFileName, "The description is empty");
    requireDescriptionSize(bytes.size());
    return bytes;
}

} // namespace

Description::Description(EContentType_t contentType, std::string_view bytes)
    : contentType{contentType}, source{requireSize(bytes)}
{
    switch (contentType) {
    case ContentType_Xml:
        parse(source);
        break;
    case ContentType_ZippedXml:
        parse(unpackDescription(source));
        break;
    default:
        raise<InvalidArgumentException>(sourceFileName, "The description is neither plain nor zipped XML");
    }
    buildIndex();
}

void Description::parse(std::string_view xml)
{
    // Zeros behind the end, but for those that fill up the last character of UTF-16 or UTF-32.
    const std::size_t end = xml.find_last_not_of('\0') + 1;
    xml = xml.substr(0, (end + 3) / 4 * 4);
    const pugi::xml_parse_result result = document.load_buffer(xml.data(), xml.size());
    if (!result)
        raise<InvalidArgumentException>(sourceFileName, std::string{"The description is no XML: "} +
                                                            result.description() + " (" +
                                                            placeOf(xml, result) + ")");
    const pugi::xml_node root = document.document_element();
    if (!hasTag(root, "RegisterDescription"))
        raise<InvalidArgumentException>(sourceFileName, std::string{"The description has the root '"} +
                                                            root.name() +
                                                            "' where RegisterDescription is expected");
}

void Description::buildIndex()
{
    forEachNode(document.document_element(), [this](pugi::xml_node element, const char *name) {
        index.push_back({std::hash<std::string_view>{}(name), name, element});
    });
    std::sort(index.begin(), index.end(), precedes);
}

void Description::buildInlineIndex() const
{
    const auto add = [this](pugi::xml_node element, const char *name) {
        inlineIndex.push_back({std::hash<std::string_view>{}(name), name, element});
    };
    forEachElement(document.document_element(), [&add](pugi::xml_node element) {
        for (const pugi::xml_node formula : element.children("IntSwissKnife"))
            visitIfNamed(formula, add);
    });
    std::sort(inlineIndex.begin(), inlineIndex.end(), precedes);
}

bool Description::precedes(const Entry &left, const Entry &right)
{
    return left.hash != right.hash ? left.hash < right.hash : std::strcmp(left.name, right.name) < 0;
}

bool Description::isMadeOf(EContentType_t otherType, std::string_view otherSource) const
{
    return contentType == otherType && source == otherSource;
}

Description::Found Description::find(std::string_view name) const
{
    if (const Found found = findIn(index, name); found.element)
        return found;
    std::call_once(inlineIndexBuilt, [this] { buildInlineIndex(); });
    return findIn(inlineIndex, name);
}

Description::Found Description::findIn(const std::vector<Entry> &index, std::string_view name)
{
    const std::size_t hash = std::hash<std::string_view>{}(name);
    const auto first = std::lower_bound(
        index.begin(), index.end(), name, [hash](const Entry &entry, std::string_view wanted) {
            return entry.hash != hash ? entry.hash < hash : entry.name < wanted;
        });
    if (first == index.end() || first->name != name)
        return {};
    const auto second = std::next(first);
    return {first->element, second != index.end() && second->name == name};
}

std::vector<pugi::xml_node> Description::nodes() const
{
    std::vector<pugi::xml_node> elements;
    elements.reserve(index.size());
    forEachNode(document.document_element(),
                [&elements](pugi::xml_node element, const char *) { elements.push_back(element); });
    return elements;
}

std::vector<pugi::xml_node> Description::formulaNodes() const
{
    std::vector<pugi::xml_node> elements;
    forEachElement(document.document_element(), [&elements](pugi::xml_node element) {
        const bool hasFormula =
            element.child("Formula") || element.child("FormulaTo") || element.child("FormulaFrom");
        if (hasFormula && *element.attribute("Name").value() != '\0')
            elements.push_back(element);
        for (const pugi::xml_node formula : element.children("IntSwissKnife"))
            elements.push_back(formula);
    });
    return elements;
}

} // namespace GenApi_3_2_TVN
