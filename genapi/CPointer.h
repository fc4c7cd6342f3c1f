// SPDX-License-Identifier: MIT
// A pointer to one interface of a node, found by a dynamic cast and checked at each use.
#pragma once

#include "GenericException.h"
#include "IBoolean.h"
#include "ICategory.h"
#include "ICommand.h"
#include "IEnumEntry.h"
#include "IEnumeration.h"
#include "IFloat.h"
#include "IInteger.h"
#include "INode.h"
#include "IRegister.h"
#include "IString.h"

namespace GenApi_3_2_TVN {

/// Refers to \p Interface of an object that stays its owner's; null when the object has no such interface.
template <class Interface>
class CPointer
{
public:
    CPointer() = default;
    CPointer(IBase *object) : pointer{dynamic_cast<Interface *>(object)} {}

    bool IsValid() const noexcept { return pointer != nullptr; }
    explicit operator bool() const noexcept { return IsValid(); }

    /// \throws LogicalErrorException  it is null
    Interface *operator->() const { return checked(); }
    Interface &operator*() const { return *checked(); }

    bool operator==(const CPointer &) const noexcept = default;

private:
    Interface *checked() const
    {
        if (pointer != nullptr)
            return pointer;
        throw GenICam_3_2_TVN::ExceptionReporter<GenICam_3_2_TVN::LogicalErrorException>("GenApi/Pointer",
                                                                                         105)
            .Report("NULL pointer dereferenced");
    }

    Interface *pointer = nullptr;
};

using CNodePtr = CPointer<INode>;
using CIntegerPtr = CPointer<IInteger>;
using CFloatPtr = CPointer<IFloat>;
using CBooleanPtr = CPointer<IBoolean>;
using CStringPtr = CPointer<IString>;
using CEnumerationPtr = CPointer<IEnumeration>;
using CEnumEntryPtr = CPointer<IEnumEntry>;
using CRegisterPtr = CPointer<IRegister>;
using CCommandPtr = CPointer<ICommand>;
using CCategoryPtr = CPointer<ICategory>;

} // namespace GenApi_3_2_TVN
