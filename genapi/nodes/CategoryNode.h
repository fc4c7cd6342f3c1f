// SPDX-License-Identifier: MIT
// The kind Category: a list of features.
#pragma once

#include "ElementText.h"
#include "ICategory.h"
#include "Node.h"
#include "NodeMap.h"

namespace GenApi_3_2_TVN {

class CategoryNode : public Node, public ICategory
{
public:
    using Node::Node;

    void GetFeatures(NodeList_t &features) const override
    {
        features.clear();
        for (const pugi::xml_node feature : xml().children("pFeature")) {
            try {
                if (Node *const node = map().find(textOf(feature)))
                    features.push_back(node);
            } catch (const GenICam_3_2_TVN::GenericException &) {
                continue; // GetNode() says why
            }
        }
    }
};

} // namespace GenApi_3_2_TVN
