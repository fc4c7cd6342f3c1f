// SPDX-License-Identifier: MIT
// Our side: the questions go to a node map over the memory of the questionnaire.
#include "CNodeMapRef.h"
#include "CPointer.h"
#include "CPortImpl.h"
#include "Comparison.h"

#include <array>
#include <stdexcept>

namespace {

using namespace GenApi_3_2_TVN;
using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::GenericException;

class MemoryPort : public CPortImpl
{
public:
    explicit MemoryPort(const Memory &memory) : memory{memory} {}

    void Read(void *buffer, std::int64_t address, std::int64_t length) override
    {
        require(load(memory, static_cast<std::uint64_t>(address), static_cast<std::size_t>(length), buffer));
    }
    void Write(const void *buffer, std::int64_t address, std::int64_t length) override
    {
        require(store(memory, static_cast<std::uint64_t>(address), static_cast<std::size_t>(length), buffer));
    }
    EAccessMode GetAccessMode() const override { return RW; }

    Memory memory;

private:
    static void require(bool hasAddress)
    {
        if (!hasAddress)
            throw std::runtime_error("no such address");
    }
};

std::string answerOf(const gcstring &text)
{
    return ::answerOf(std::string_view{text});
}

std::string get(INode *node)
{
    if (const CEnumerationPtr enumeration{node})
        return ::answerOf(enumeration->GetIntValue()) + " " +
               answerOf(CEnumEntryPtr(enumeration->GetCurrentEntry())->GetSymbolic());
    if (const CBooleanPtr boolean{node})
        return ::answerOf(boolean->GetValue());
    if (const CIntegerPtr integer{node})
        return ::answerOf(integer->GetValue());
    if (const CFloatPtr real{node})
        return ::answerOf(real->GetValue());
    if (const CStringPtr string{node})
        return answerOf(string->GetValue());
    const CRegisterPtr bytes{node};
    std::string all(static_cast<std::size_t>(bytes->GetLength()), '\0');
    bytes->Get(reinterpret_cast<std::uint8_t *>(all.data()), bytes->GetLength());
    return ::answerOf(std::string_view{all});
}

std::string bound(INode *node, const std::string &which)
{
    const auto ask = [&](const auto &number) {
        return ::answerOf(which == "min"   ? number->GetMin()
                          : which == "max" ? number->GetMax()
                                           : number->GetInc());
    };
    const CIntegerPtr integer{node};
    return integer ? ask(integer) : ask(CFloatPtr{node});
}

void set(INode *node, const std::string &value)
{
    if (const CEnumerationPtr enumeration{node})
        enumeration->SetIntValue(CEnumEntryPtr(enumeration->GetEntryByName(value.c_str()))->GetValue());
    else if (const CBooleanPtr boolean{node})
        boolean->SetValue(value == "true");
    else if (const CIntegerPtr integer{node})
        integer->SetValue(std::strtoll(value.c_str(), nullptr, 10));
    else if (const CFloatPtr real{node})
        real->SetValue(std::strtod(value.c_str(), nullptr));
    else if (const CStringPtr string{node})
        string->SetValue(value.c_str());
    else
        CCommandPtr(node)->Execute();
}

std::string mode(const INode *node)
{
    constexpr std::array<const char *, 5> names{"NI", "NA", "WO", "RO", "RW"};
    return std::string{"mode "} + names.at(static_cast<std::size_t>(node->GetAccessMode()));
}

std::string answer(INode *node, const Question &question, Memory &memory)
{
    if (node == nullptr)
        throw std::runtime_error("no such node");
    if (question.action == "get")
        return get(node);
    if (question.action == "mode")
        return mode(node);
    if (question.action != "set" && question.action != "leave")
        return bound(node, question.action);
    const Memory before = memory;
    set(node, question.value);
    if (question.action == "leave") {
        get(node);
        memory = before;
        return get(node);
    }
    return answerOfWrite(before, memory);
}

} // namespace

/// What a question has written to the memory is taken back behind it.
std::vector<std::string> answersOfTorvane(const Questionnaire &questionnaire)
{
    MemoryPort port{questionnaire.memory};
    CNodeMapRef nodes;
    nodes._LoadXMLFromString(gcstring{std::string_view{questionnaire.description}});
    NodeList_t all;
    nodes._GetNodes(all);
    for (INode *const node : all)
        nodes._Connect(&port, node->GetName()); // false for all that are no ports
    std::vector<std::string> answers;
    for (const Question &question : questionnaire.questions) {
        try {
            answers.push_back(answer(nodes._GetNode(question.node.c_str()), question, port.memory));
        } catch (const GenericException &failure) {
            answers.push_back(std::string{refusal} + ": " + failure.GetDescription());
        } catch (const std::runtime_error &failure) {
            answers.push_back(std::string{refusal} + ": " + failure.what());
        }
        if (question.action != "set" && question.action != "leave")
            continue;
        port.memory = questionnaire.memory;
        nodes._InvalidateNodes();
    }
    return answers;
}
