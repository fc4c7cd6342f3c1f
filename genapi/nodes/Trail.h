// SPDX-License-Identifier: MIT
// The nodes that wait for one another during one call from outside. References between nodes come from the
// device and may lead anywhere: in circles, without end, or ever wider. The trail stops all three.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace GenApi_3_2_TVN {

class Node;

/// What is asked of a node. A node may wait for another property of itself, but never for the same one.
enum class Aspect : std::uint8_t
{
    Value = 1,
    Write = 2,
    Min = 4,
    Max = 8,
    Inc = 16,
    Access = 32,
    Text = 64,
    Entry = 128 ///< which entry of an enumeration is available
};

class Trail
{
public:
    /// One node on the way, for the life of the object.
    class Step
    {
    public:
        /// \param by  the child of the previous node that leads here; empty for a call from outside. Kept by
        ///            pointer: a literal.
        /// \throws PropertyException  the node waits for this already, or a limit is passed; it shows the way
        Step(Trail &trail, const Node &node, Aspect aspect, const char *by);
        ~Step();
        Step(const Step &) = delete;
        Step &operator=(const Step &) = delete;

    private:
        Trail &trail;
    };

    /// A call from outside that asks several things, for the life of the object: its steps are of one call. A step that
    /// is taken outside of any is a call by itself.
    class Call
    {
    public:
        explicit Call(Trail &trail) : trail{trail} { trail.calls += trail.openCalls++ == 0 ? 1 : 0; }
        ~Call() { --trail.openCalls; }
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;

    private:
        Trail &trail;
    };

    /// The number of the call from outside that is being answered.
    std::uint64_t call() const { return calls; }

    /// Counts work that a node on the way does, in steps of a formula.
    /// \throws PropertyException  the call has done more than limits::stepsPerCall
    void spend(std::size_t steps);
    /// Whether it has, so that all that the call still asks is refused.
    bool isSpent() const;

    /// The nodes whose value comes from \p node in the present call, by a child such as pValue: the nearest first.
    std::vector<const Node *> askingForValueOf(const Node &node) const;

    /// A message about a node that is being asked, or that one which is being asked leads to.
    /// \param cause  its name
    /// \param text   as it is for a call that asks the node itself: "Node 'Raw': can only be read"
    /// \return with the feature that the call has asked for and the way from there:
    ///         "Node 'Gain': node 'Raw': can only be read (Gain > Half > Raw)"
    std::string told(const std::string &cause, const std::string &text) const;
    /// The same for the node that is being asked and can't answer. It says how that was reached: "Node 'Gain': pValue
    /// names 'Text', a String, which has no number".
    /// \param fault  what stands behind the name
    std::string toldOfArrival(const std::string &fault) const;

private:
    struct Waiting
    {
        const Node *node;
        Aspect aspect;
        const char *by;
    };

    void begin();
    std::string told(std::size_t length, const std::string &cause, const std::string &text) const;
    std::vector<std::string> names(std::size_t length) const;
    std::string wayTo(const Node &last) const;
    [[noreturn]] void refuseCircle(const Node &node, Aspect aspect, const char *by) const;

    std::vector<Waiting> waiting;
    std::size_t spent = 0; ///< steps since the call from outside
    std::uint64_t calls = 0;
    unsigned openCalls = 0;
};

} // namespace GenApi_3_2_TVN
