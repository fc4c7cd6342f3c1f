// SPDX-License-Identifier: MIT
// The kind String: a text that is kept here or comes from another node, and what both kinds of texts do for a
// call from outside.
#pragma once

#include "IString.h"
#include "Node.h"

namespace GenApi_3_2_TVN {

class TextNode : public Node, public IString
{
public:
    using Node::Node;

    GenICam_3_2_TVN::gcstring GetValue(bool verify, bool ignoreCache) override;
    void SetValue(const GenICam_3_2_TVN::gcstring &value, bool verify) override;
    std::int64_t GetMaxLength() override { return maximumLength(""); }
};

class StringNode : public TextNode
{
public:
    StringNode(NodeMap &nodeMap, pugi::xml_node element);

protected:
    std::string readText(Reading reading) override;
    void writeText(const std::string &newText) override;
    std::int64_t readMaximumLength() override;
    EAccessMode ownAccessMode(AccessQuestion question) const override;

private:
    std::optional<Link> pValue;
    std::string value; ///< without pValue
};

} // namespace GenApi_3_2_TVN
