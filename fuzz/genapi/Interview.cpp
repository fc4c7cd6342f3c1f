// SPDX-License-Identifier: MIT
// See the header.
#include "Interview.h"

#include "CPointer.h"
#include "FuzzTarget.h"
#include "GenericException.h"
#include "RegisterSpace.h"

#include <algorithm>
#include <sstream>

using namespace GenApi_3_2_TVN;
using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::GenericException;

namespace {

std::string textOf(const gcstring &text)
{
    return std::string{std::string_view{text}};
}

std::string textOf(INode *node)
{
    return textOf(node->GetName());
}

std::string textOf(IEnumEntry *entry)
{
    return entry != nullptr ? textOf(entry->GetSymbolic()) : "none";
}

template <class Number>
requires std::is_arithmetic_v<Number> std::string textOf(Number number)
{
    std::ostringstream text;
    text << std::hexfloat << number;
    return number == number ? text.str() : "no number";
}

template <class Item>
std::string textOf(const std::vector<Item> &items)
{
    std::string text;
    for (const Item &item : items)
        text += textOf(item) + "\n";
    return text;
}

template <class Question>
std::string outcomeOf(Question question)
{
    try {
        return textOf(question());
    } catch (const GenericException &refusal) {
        require(*refusal.GetDescription() != '\0', "a refusal without words");
        return std::string{"refused: "} + refusal.GetDescription();
    } catch (const RegisterSpace::Refusal &) {
        return "refused by the device";
    }
}

/// The answers of one node, question by question.
class Interview
{
public:
    Interview(INode &node, bool ignoreCache) : node{node}, name{textOf(&node)}, ignoreCache{ignoreCache} {}

    std::vector<std::string> answers()
    {
        askAll();
        askNumber(CIntegerPtr{&node});
        askNumber(CFloatPtr{&node});
        askBytes(CRegisterPtr{&node});
        askEnumeration(CEnumerationPtr{&node});
        return std::move(given);
    }

private:
    template <class Question>
    void ask(const std::string &what, Question question)
    {
        given.push_back(name + " " + what + ": " + outcomeOf(question));
    }

    /// What is asked of every kind, and what kinds with few questions are asked.
    void askAll()
    {
        ask("GetAccessMode", [&] { return static_cast<int>(node.GetAccessMode()); });
        for (const char *const property : {"NodeType", "Name", "ToolTip", "pFeature", "pValue", "Formula"}) {
            ask(property, [&] {
                std::vector<gcstring> texts(2);
                if (!node.GetProperty(property, texts[0], texts[1]))
                    texts.clear();
                return texts;
            });
        }
        if (const CFloatPtr real{&node})
            ask("HasInc", [&] { return real->HasInc(); });
        if (const CBooleanPtr boolean{&node})
            ask("GetValue", [&] { return boolean->GetValue(false, ignoreCache); });
        if (const CCommandPtr command{&node})
            ask("IsDone", [&] { return command->IsDone(); });
        if (const CStringPtr string{&node}) {
            ask("GetValue", [&] { return string->GetValue(false, ignoreCache); });
            ask("GetMaxLength", [&] { return string->GetMaxLength(); });
        }
        if (const CCategoryPtr category{&node}) {
            ask("GetFeatures", [&] {
                NodeList_t features;
                category->GetFeatures(features);
                return features;
            });
        }
        if (const CEnumEntryPtr entry{&node}) {
            ask("GetValue", [&] { return entry->GetValue(); });
            ask("GetSymbolic", [&] { return entry->GetSymbolic(); });
            ask("GetNumericValue", [&] { return entry->GetNumericValue(); });
            ask("IsSelfClearing", [&] { return entry->IsSelfClearing(); });
        }
    }

    template <class Interface>
    void askNumber(const CPointer<Interface> &number)
    {
        if (!number)
            return;
        ask("GetValue", [&] { return number->GetValue(false, ignoreCache); });
        ask("GetValue, verified", [&] { return number->GetValue(true, ignoreCache); });
        ask("GetMin", [&] { return number->GetMin(); });
        ask("GetMax", [&] { return number->GetMax(); });
        ask("GetInc", [&] { return number->GetInc(); });
    }

    void askBytes(const CRegisterPtr &bytes)
    {
        if (!bytes)
            return;
        ask("GetAddress", [&] { return bytes->GetAddress(); });
        ask("GetLength", [&] { return bytes->GetLength(); });
        ask("Get", [&] {
            std::vector<std::uint8_t> buffer(static_cast<std::size_t>(bytes->GetLength()));
            bytes->Get(buffer.data(), bytes->GetLength(), false, ignoreCache);
            return gcstring{reinterpret_cast<const char *>(buffer.data()), buffer.size()};
        });
    }

    void askEnumeration(const CEnumerationPtr &enumeration)
    {
        if (!enumeration)
            return;
        ask("GetIntValue", [&] { return enumeration->GetIntValue(false, ignoreCache); });
        ask("GetCurrentEntry", [&] { return enumeration->GetCurrentEntry(false, ignoreCache); });
        ask("GetSymbolics", [&] {
            StringList_t symbolics;
            enumeration->GetSymbolics(symbolics);
            return symbolics;
        });
        NodeList_t entries;
        ask("GetEntries", [&] {
            enumeration->GetEntries(entries);
            return entries;
        });
        for (INode *const entry : entries)
            std::ranges::move(Interview{*entry, ignoreCache}.answers(), std::back_inserter(given));
    }

    INode &node;
    std::string name;
    bool ignoreCache;
    std::vector<std::string> given;
};

template <class Write>
void attempt(Write write)
{
    outcomeOf([&] {
        write();
        return true;
    });
}

template <class Interface>
void changeNumber(const CPointer<Interface> &number)
{
    if (!number)
        return;
    attempt([&] { number->SetValue(number->GetMax()); });
    attempt([&] { number->SetValue(number->GetMin()); });
    attempt([&] { number->SetValue(1, false); });
}

} // namespace

std::vector<std::string> answersOf(INode &node, bool ignoreCache)
{
    return Interview{node, ignoreCache}.answers();
}

void change(INode &node)
{
    changeNumber(CIntegerPtr{&node});
    changeNumber(CFloatPtr{&node});
    if (const CBooleanPtr boolean{&node})
        attempt([&] { boolean->SetValue(!boolean->GetValue()); });
    if (const CStringPtr string{&node})
        attempt([&] { string->SetValue("changed"); });
    if (const CRegisterPtr bytes{&node}) {
        attempt([&] {
            std::vector<std::uint8_t> buffer(static_cast<std::size_t>(bytes->GetLength()));
            bytes->Get(buffer.data(), bytes->GetLength());
            const std::vector<std::uint8_t> reversed(buffer.rbegin(), buffer.rend());
            bytes->Set(reversed.data(), bytes->GetLength());
        });
    }
    if (const CCommandPtr command{&node})
        attempt([&] { command->Execute(); });
    if (const CEnumerationPtr enumeration{&node})
        attempt([&] { enumeration->SetIntValue(enumeration->GetIntValue() ^ 1); });
}
