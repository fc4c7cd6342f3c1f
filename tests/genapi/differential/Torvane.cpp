// SPDX-License-Identifier: MIT
// Our side: the questions go to a node map over the memory of the questionnaire.
#include "CNodeMapRef.h"
#include "CPointer.h"
#include "CPortImpl.h"
#include "Comparison.h"
#include "Features.h"

#include <stdexcept>

namespace {

using namespace GenApi_3_2_TVN;

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

std::string shown(const AnyValue &value)
{
    return std::visit([](const auto &any) { return answerOf(any); }, value);
}

std::string get(INode *node)
{
    const CEnumerationPtr enumeration{node};
    std::string value = shown(valueOf(node));
    if (enumeration)
        value +=
            " " + answerOf(std::string_view{CEnumEntryPtr(enumeration->GetCurrentEntry())->GetSymbolic()});
    return value;
}

void set(INode *node, const std::string &value)
{
    if (const CEnumerationPtr enumeration{node})
        enumeration->SetIntValue(CEnumEntryPtr(enumeration->GetEntryByName(value.c_str()))->GetValue());
    else
        write(node, value);
}

std::string answer(INode *node, const Question &question, Memory &memory)
{
    if (node == nullptr)
        throw std::runtime_error("no such node");
    if (question.action == "get")
        return get(node);
    if (question.action == "mode")
        return "mode " + modeOf(node);
    if (!question.isWrite())
        return shown(limitOf(node, question.action));
    return answerToWrite(
        question, memory, [&] { set(node, question.value); }, [&] { return get(node); });
}

} // namespace

/// What a question has written to the memory is taken back behind it.
std::vector<std::string> answersOfTorvane(const Questionnaire &questionnaire)
{
    MemoryPort port{questionnaire.memory};
    CNodeMapRef nodes;
    nodes._LoadXMLFromString(GenICam_3_2_TVN::gcstring{std::string_view{questionnaire.description}});
    NodeList_t all;
    nodes._GetNodes(all);
    for (INode *const node : all)
        nodes._Connect(&port, node->GetName()); // false for all that are no ports
    std::vector<std::string> answers;
    for (const Question &question : questionnaire.questions) {
        try {
            answers.push_back(answer(nodes._GetNode(question.node.c_str()), question, port.memory));
        } catch (const GenICam_3_2_TVN::GenericException &failure) {
            answers.push_back(std::string{refusal} + ": " + failure.GetDescription());
        } catch (const std::runtime_error &failure) {
            answers.push_back(std::string{refusal} + ": " + failure.what());
        }
        if (!question.isWrite())
            continue;
        port.memory = questionnaire.memory;
        nodes._InvalidateNodes();
    }
    return answers;
}
