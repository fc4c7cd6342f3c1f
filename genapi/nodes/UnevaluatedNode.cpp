// SPDX-License-Identifier: MIT
// See the header.
#include "UnevaluatedNode.h"

namespace GenApi_3_2_TVN {

void UnevaluatedFloatNode::refuse() const
{
    fail<GenICam_3_2_TVN::PropertyException>(std::string{"a "} + xml().name() +
                                             ", a kind that this version does not evaluate");
}

} // namespace GenApi_3_2_TVN
