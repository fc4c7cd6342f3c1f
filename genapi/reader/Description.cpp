// SPDX-License-Identifier: MIT
// Parsing and indexing. The index is sorted, not hashed into buckets: whoever writes a description can choose
// names whose hashes collide, and sorting by hash and then by name keeps its time whatever the names are.
#include "Description.h"

#include "Archive.h"
#include "Limits.h"
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

/// Visits every element that defines a named node, in document order: children of the root and of groups,
/// entries of a StructReg, and formulas with a name that stand inside a register.
template <class Visitor>
void forEachNode(pugi::xml_node root, Visitor &&visit)
{
    const auto visitIfNamed = [&](pugi::xml_node element) {
        if (const pugi::xml_attribute name = element.attribute("Name"))
            visit(element, name.value());
    };
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
        visitIfNamed(element);
        for (const pugi::xml_node child : element.children()) {
            if (hasTag(child, "StructEntry") || hasTag(child, "IntSwissKnife"))
                visitIfNamed(child);
        }
        element = element.next_sibling();
    }
}

std::string placeOf(std::string_view xml, std::ptrdiff_t offset)
{
    const std::size_t place =
        std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0)), xml.size());
    const auto line = 1 + std::count(xml.begin(), xml.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    return "line " + std::to_string(line) + ", byte " + std::to_string(place);
}

} // namespace

Description::Description(EContentType_t contentType, std::string_view source)
    : contentType{contentType}, source{source}
{
    if (source.empty())
        raise<InvalidArgumentException>(sourceFileName, "The description is empty");
    if (source.size() > limits::descriptionSize)
        raise<InvalidArgumentException>(sourceFileName, "The description is larger than " +
                                                            std::to_string(limits::descriptionSize >> 20) +
                                                            " MiB");
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
    xml = xml.substr(0, xml.find_last_not_of('\0') + 1);
    const pugi::xml_parse_result result = document.load_buffer(xml.data(), xml.size());
    if (!result)
        raise<InvalidArgumentException>(sourceFileName, std::string{"The description is no XML: "} +
                                                            result.description() + " (" +
                                                            placeOf(xml, result.offset) + ")");
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
    index.shrink_to_fit();
    std::sort(index.begin(), index.end(), precedes);
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

} // namespace GenApi_3_2_TVN
