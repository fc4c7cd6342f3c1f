// SPDX-License-Identifier: MIT
#include "Script.h"

Script *torvaneTestScript()
{
    static Script script;
    return &script;
}

std::string scriptedProducer()
{
    return SCRIPTED_PRODUCER;
}
