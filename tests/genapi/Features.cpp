// SPDX-License-Identifier: MIT
// See the header.
#include "Features.h"

#include <array>
#include <charconv>
#include <cstdlib>

using namespace GenApi_3_2_TVN;

namespace {

template <class Pointer>
AnyValue limitOf(const Pointer &number, const std::string &which)
{
    return which == "min" ? number->GetMin() : which == "max" ? number->GetMax() : number->GetInc();
}

} // namespace

AnyValue valueOf(INode *node, bool verify, bool ignoreCache)
{
    if (const CEnumerationPtr enumeration{node})
        return enumeration->GetIntValue(verify, ignoreCache);
    if (const CBooleanPtr boolean{node})
        return boolean->GetValue(verify, ignoreCache);
    if (const CIntegerPtr integer{node})
        return integer->GetValue(verify, ignoreCache);
    if (const CFloatPtr real{node})
        return real->GetValue(verify, ignoreCache);
    if (const CStringPtr string{node})
        return std::string{std::string_view{string->GetValue(verify, ignoreCache)}};
    const CRegisterPtr bytes{node};
    std::string all(static_cast<std::size_t>(bytes->GetLength()), '\0');
    bytes->Get(reinterpret_cast<std::uint8_t *>(all.data()), bytes->GetLength(), verify, ignoreCache);
    return all;
}

AnyValue limitOf(INode *node, const std::string &which)
{
    const CIntegerPtr integer{node};
    return integer ? limitOf(integer, which) : limitOf(CFloatPtr{node}, which);
}

// Not by std::atof, which does not know infinity on Windows.
static double number(const std::string &text)
{
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

void write(INode *node, const std::string &value, bool verify)
{
    if (const CEnumerationPtr enumeration{node})
        enumeration->SetIntValue(std::atoll(value.c_str()), verify);
    else if (const CBooleanPtr boolean{node})
        boolean->SetValue(value == "true", verify);
    else if (const CIntegerPtr integer{node})
        integer->SetValue(std::atoll(value.c_str()), verify);
    else if (const CFloatPtr real{node})
        real->SetValue(number(value), verify);
    else if (const CStringPtr string{node})
        string->SetValue(value.c_str(), verify);
    else
        CCommandPtr(node)->Execute(verify);
}

std::string modeOf(const CNodePtr &node)
{
    constexpr std::array<const char *, 5> names{"NI", "NA", "WO", "RO", "RW"};
    return names.at(static_cast<std::size_t>(node->GetAccessMode()));
}
