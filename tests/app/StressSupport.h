// SPDX-License-Identifier: MIT
// What stands around the window in its long run: the hand that plugs cameras in and out, and the reading of the
// simulator's log that finds a call to a camera whose row nobody had activated.
#pragma once

#include <QStringList>
#include <cstdint>
#include <istream>
#include <map>
#include <random>
#include <string>
#include <vector>

/// Plugs cameras in and out at random, for one seed always the same.
class Cables
{
public:
    explicit Cables(unsigned seed) : random(seed) {}

    void change();
    /// What is plugged now, as a configuration of the simulator.
    std::string toml() const;
    /// What the list should show: "<serial> <model>" of each camera, sorted.
    QStringList plugged() const;
    /// How often each kind of change has come.
    const std::map<QString, int> &counts() const { return counts_; }

private:
    struct Plug
    {
        unsigned camera;
        unsigned interface;
    };

    unsigned draw(std::size_t count) { return static_cast<unsigned>(random() % count); }
    QString shrink();
    QString rearrange();
    void plugIn(unsigned count);

    std::mt19937 random;
    std::vector<Plug> plugs; // in the order of first sight, which is that of the list
    std::vector<Plug> before;
    bool isSlow = false;
    std::map<QString, int> counts_;
};

/// A row that was activated, and where in the simulator's log.
struct Activation
{
    std::uintmax_t begin; ///< size of the log in bytes before
    std::uintmax_t end;   ///< and after it
    QString camera;       ///< the identifier; empty when no panel came of it
};

/// What the log says of the calls that a user's actions lead to.
struct UserCalls
{
    int opens = 0;        ///< with control access
    int writes = 0;       ///< to the password registers, with whatever outcome
    QStringList strays;   ///< calls that did not go to the camera of the row that had been activated last
    QStringList leftOpen; ///< handles that were not closed by the end, nor their parents
};

UserCalls readUserCalls(std::istream &log, const std::vector<Activation> &activations);
