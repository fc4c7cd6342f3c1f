// SPDX-License-Identifier: MIT
// Fuzzes descriptions: an input is an XML file, or a zip archive if it begins like one, with the content of the
// device's registers behind a last line "registers:". All nodes are asked and written to. Besides not crashing, a
// node map must answer the same from its cache as from the device, and the same as a new one whose nodes are
// asked in the opposite order.
#include "CNodeMapRef.h"
#include "FuzzTarget.h"
#include "Interview.h"
#include "RegisterSpace.h"

#include <algorithm>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

using namespace GenApi_3_2_TVN;
using GenICam_3_2_TVN::gcstring;
using GenICam_3_2_TVN::GenericException;

namespace {

/// Processor time. The layer bounds the work of a call: what is asked of one node takes a hundredth of its limit. After
/// that of an input no further node is asked, since many slow nodes are not one hang.
constexpr double secondsPerNode = 2;
constexpr double secondsPerInput = 4;

struct CameraInput
{
    explicit CameraInput(std::string_view bytes)
    {
        constexpr std::string_view marker = "\nregisters:";
        const std::size_t end = bytes.rfind(marker);
        description = bytes.substr(0, end);
        if (end != std::string_view::npos)
            registers = bytes.substr(end + marker.size());
    }

    std::string_view description;
    std::string_view registers;
};

class Camera
{
public:
    /// \throws GenericException  the description is none
    explicit Camera(const CameraInput &input) : registers{input.registers}
    {
        const std::string_view text = input.description;
        if (text.starts_with("PK"))
            nodeMap._LoadXMLFromZIPData(text.data(), text.size());
        else
            nodeMap._LoadXMLFromString(gcstring{text});
        for (INode *const node : nodes()) {
            gcstring type;
            gcstring attribute;
            require(node->GetProperty("NodeType", type, attribute), "a node without a type");
            if (type == "Port")
                require(nodeMap._Connect(&registers, node->GetName()), "a port that can't be connected");
        }
    }

    NodeList_t nodes() const
    {
        NodeList_t list;
        nodeMap._GetNodes(list);
        return list;
    }

    void checkFormulas() const
    {
        GenICam_3_2_TVN::gcstring_vector errors;
        require(nodeMap._ParseSwissKnifes(&errors) == errors.empty(),
                "ParseSwissKnifes() contradicts itself");
    }

private:
    RegisterSpace registers;
    CNodeMapRef nodeMap; // behind the registers, so that it goes first
};

void requireSame(const std::vector<std::string> &known, const std::vector<std::string> &answers)
{
    for (std::size_t place = 0; place < std::min(known.size(), answers.size()); ++place)
        require(known[place] == answers[place], known[place] + "\nbut now\n" + answers[place]);
    require(known.size() == answers.size(), "a node answers other questions than before");
}

class Examination
{
public:
    explicit Examination(const CameraInput &input) : used{input}, fresh{input} {}

    void run()
    {
        used.checkFormulas();
        const NodeList_t nodes = used.nodes();
        ask(nodes, [&](INode &node) { known.push_back(answersOf(node, false)); });
        compareToFresh();
        ask(nodes, change);
        // The cached answers first: the others fill the cache anew.
        ask(nodes, [](INode &node) {
            const std::vector<std::string> cached = answersOf(node, false);
            requireSame(cached, answersOf(node, true));
        });
    }

private:
    template <class Action>
    void ask(const NodeList_t &nodes, Action action) const
    {
        double before = secondsSinceStart();
        for (INode *const node : nodes) {
            if (before > secondsPerInput)
                return;
            action(*node);
            const double after = secondsSinceStart();
            require(after - before < secondsPerNode, "a node takes " + std::to_string(after - before) + " s");
            before = after;
        }
    }

    double secondsSinceStart() const { return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC; }

    void compareToFresh()
    {
        NodeList_t nodes = fresh.nodes();
        nodes.resize(known.size());
        std::ranges::reverse(nodes);
        ask(nodes, [&](INode &node) {
            requireSame(known.back(), answersOf(node, true));
            known.pop_back();
        });
    }

    std::clock_t start = std::clock();
    Camera used;
    Camera fresh;
    std::vector<std::vector<std::string>> known; ///< answers of the used camera, node by node
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const CameraInput input{{reinterpret_cast<const char *>(bytes), size}};
    std::optional<Examination> examination;
    try {
        examination.emplace(input);
    } catch (const GenericException &refusal) {
        require(*refusal.GetDescription() != '\0', "a refusal without words");
        return 0;
    }
    examination->run();
    return 0;
}
