// SPDX-License-Identifier: MIT
// The order of the interfaces' virtual operations, which is part of their contract. It is read out of pointers to
// members.
#include "CNodeMapRef.h"
#include "IPort.h"

#include <gmock/gmock.h>

#include <cstring>

using namespace GenApi_3_2_TVN;
using GenICam_3_2_TVN::gcstring;

namespace {

/// A replacement of the node map's virtual table entries is beyond C++, but the Itanium ABI gives a pointer
/// to a virtual member the offset of its slot; x86-64 adds 1 to it, to tell it from an address, which the division
/// drops. Where pointers are built otherwise, the numbers differ and the test is skipped.
template <class Member>
std::size_t slotOf(Member member)
{
    std::uintptr_t words[2] = {};
    static_assert(sizeof(member) == sizeof(words));
    std::memcpy(words, &member, sizeof(member));
    return words[0] / sizeof(void *);
}

TEST(Slots, StandInTheirOrder)
{
    if (slotOf(&IPort::Read) > 64)
        GTEST_SKIP() << "pointers to members do not hold slots here";
    EXPECT_EQ(slotOf(&IBase::GetAccessMode), 0U);
    EXPECT_EQ(slotOf(&IPort::Write), slotOf(&IPort::Read) + 1);
    EXPECT_EQ(slotOf(&IPortConstruct::GetSwapEndianess), slotOf(&IPortConstruct::SetPortImpl) + 1);

    using Ref = CNodeMapRef;
    using Connect = bool (Ref::*)(IPort *);
    using ConnectNamed = bool (Ref::*)(IPort *, const gcstring &);
    using ConnectStacked = bool (Ref::*)(IPortStacked *);
    using ConnectStackedNamed = bool (Ref::*)(IPortStacked *, const gcstring &);
    const std::size_t first = slotOf(&Ref::_GetSupportedSchemaVersions);
    EXPECT_EQ(slotOf(&Ref::_Initialize), 0U);
    EXPECT_EQ(first, 3U) << "the destructor takes two slots";
    EXPECT_THAT(
        (std::vector{slotOf(&Ref::_GetDeviceName), slotOf(&Ref::_Poll), slotOf(&Ref::_GetNodes),
                     slotOf(&Ref::_GetNode), slotOf(&Ref::_GetNumNodes), slotOf(&Ref::_EnableCaching),
                     slotOf(&Ref::_InvalidateNodes), slotOf(static_cast<ConnectStacked>(&Ref::_Connect)),
                     slotOf(static_cast<ConnectStackedNamed>(&Ref::_Connect)),
                     slotOf(static_cast<Connect>(&Ref::_Connect)),
                     slotOf(static_cast<ConnectNamed>(&Ref::_Connect)), slotOf(&Ref::_ParseSwissKnifes)}),
        testing::ElementsAre(4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15));
}

} // namespace
