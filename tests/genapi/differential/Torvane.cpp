// SPDX-License-Identifier: MIT
// Our side: the questions go to a node map over the memory of the questionnaire.
#include "CNodeMapRef.h"
#include "CPointer.h"
#include "CPortImpl.h"
#include "Sides.h"

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

std::string_view view(const gcstring &text)
{
    return static_cast<std::string_view>(text);
}

std::string get(INode *node, const std::string &kind)
{
    if (kind == "integer")
        return answerOf(CIntegerPtr(node)->GetValue());
    if (kind == "float")
        return answerOf(CFloatPtr(node)->GetValue());
    if (kind == "boolean")
        return answerOf(CBooleanPtr(node)->GetValue());
    if (kind == "string")
        return answerOf(view(CStringPtr(node)->GetValue()));
    if (kind == "enumeration") {
        const CEnumerationPtr enumeration{node};
        const std::string value = answerOf(enumeration->GetIntValue());
        return value + " " + answerOf(view(CEnumEntryPtr(enumeration->GetCurrentEntry())->GetSymbolic()));
    }
    const CRegisterPtr bytes{node};
    std::string all(static_cast<std::size_t>(bytes->GetLength()), '\0');
    bytes->Get(reinterpret_cast<std::uint8_t *>(all.data()), static_cast<std::int64_t>(all.size()));
    return answerOf(std::string_view{all});
}

std::string bound(INode *node, const Question &question)
{
    if (question.kind == "float")
        return answerOf(question.action == "min" ? CFloatPtr(node)->GetMin() : CFloatPtr(node)->GetMax());
    const CIntegerPtr integer{node};
    return answerOf(question.action == "min"   ? integer->GetMin()
                    : question.action == "max" ? integer->GetMax()
                                               : integer->GetInc());
}

void set(INode *node, const Question &question)
{
    if (question.kind == "integer")
        CIntegerPtr(node)->SetValue(std::stoll(question.value));
    else if (question.kind == "float")
        CFloatPtr(node)->SetValue(std::stod(question.value));
    else if (question.kind == "boolean")
        CBooleanPtr(node)->SetValue(question.value == "true");
    else if (question.kind == "string")
        CStringPtr(node)->SetValue(question.value.c_str());
    else if (question.kind == "command")
        CCommandPtr(node)->Execute();
    else {
        const CEnumerationPtr enumeration{node};
        enumeration->SetIntValue(
            CEnumEntryPtr(enumeration->GetEntryByName(question.value.c_str()))->GetValue());
    }
}

std::string mode(const INode *node)
{
    constexpr std::array<const char *, 5> names{"NI", "NA", "WO", "RO", "RW"};
    return std::string{"mode "} + names.at(static_cast<std::size_t>(node->GetAccessMode()));
}

std::string answer(const CNodeMapRef &nodes, const Question &question, MemoryPort &port)
{
    try {
        INode *const node = nodes._GetNode(question.node.c_str());
        if (node == nullptr)
            return std::string{refusal} + ": no such node";
        if (question.action == "get")
            return get(node, question.kind);
        if (question.action == "mode")
            return mode(node);
        if (question.action != "set")
            return bound(node, question);
        const Memory before = port.memory;
        set(node, question);
        const std::string answer = answerOfWrite(before, port.memory);
        port.memory = before;
        nodes._InvalidateNodes();
        return answer;
    } catch (const GenericException &failure) {
        return std::string{refusal} + ": " + failure.GetDescription();
    } catch (const std::runtime_error &failure) {
        return std::string{refusal} + ": " + failure.what();
    }
}

} // namespace

std::vector<std::string> answersOfTorvane(const Questionnaire &questionnaire)
{
    MemoryPort port{questionnaire.memory};
    CNodeMapRef nodes;
    nodes._LoadXMLFromString(gcstring{std::string_view{questionnaire.description}});
    nodes._Connect(&port, "Device");
    std::vector<std::string> answers;
    for (const Question &question : questionnaire.questions)
        answers.push_back(answer(nodes, question, port));
    return answers;
}
