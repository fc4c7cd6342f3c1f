// SPDX-License-Identifier: MIT
// A parsed description and its index by name. Immutable once made, so the node maps of any number of devices,
// on any threads, share one.
#pragma once

#include "CNodeMapFactory.h"

#include <pugixml.hpp>

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace GenApi_3_2_TVN {

class Description
{
public:
    /// \throws InvalidArgumentException  \p source is no archive, no XML or has no RegisterDescription; the
    ///         text says which, and where
    Description(EContentType_t contentType, std::string_view source);

    Description(const Description &) = delete;
    Description &operator=(const Description &) = delete;
    ~Description() = default;

    /// Whether it was made of exactly these bytes.
    bool isMadeOf(EContentType_t contentType, std::string_view source) const;

    struct Found
    {
        pugi::xml_node element; ///< null when no node bears the name
        bool isDoubled = false; ///< several nodes do
    };
    Found find(std::string_view name) const;

    /// The elements of all named nodes in document order, without the formulas that stand inside registers.
    std::vector<pugi::xml_node> nodes() const;
    /// The elements of all nodes with formulas, those that stand inside registers among them.
    std::vector<pugi::xml_node> formulaNodes() const;
    std::size_t nodeCount() const { return index.size(); }

private:
    struct Entry
    {
        std::size_t hash;
        const char *name; ///< belongs to the document
        pugi::xml_node element;
    };

    void parse(std::string_view xml);
    void buildIndex();
    void buildInlineIndex() const;
    static Found findIn(const std::vector<Entry> &index, std::string_view name);
    static bool precedes(const Entry &left, const Entry &right);

    EContentType_t contentType;
    std::string source; ///< as received, to tell equal descriptions
    pugi::xml_document document;
    std::vector<Entry> index; ///< by hash, then by name

    // Formulas with a name that stand inside a register. Few descriptions have any, and finding them takes a
    // walk over the whole document, so it waits for a name that the index does not have.
    mutable std::once_flag inlineIndexBuilt;
    mutable std::vector<Entry> inlineIndex;
};

} // namespace GenApi_3_2_TVN
