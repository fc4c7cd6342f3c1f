// SPDX-License-Identifier: MIT
// torvane as a script runs it: a process of its own over simulated cameras, with a home of its own for its journal.
#pragma once

#include "Environment.h"
#include "Simulator.h"
#include "TemporaryFolder.h"

#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <string>
#include <string_view>
#include <vector>

/// What a run left behind.
struct Ended
{
    int status = 0; ///< -1 if a signal ended it
    std::string output;
    std::string errors;

    /// The objects of --json, a line each, the summary last.
    std::vector<QJsonObject> lines() const;
    /// "A1 done", "A2 failed wrong_password old": serial, result, reason's code and in_force of each line, sorted.
    std::vector<std::string> outcomes() const;
    /// A number of the summary, such as "failed"; -1 where there is none.
    int summary(const char *key) const;
};

/// What is typed when a question has been shown.
struct Typed
{
    const char *question;
    const char *answer;
    bool isSecret = true; ///< and asked for without echo
};

/// What a run on a terminal left behind.
struct Shown
{
    int status = -1;
    std::string text;     ///< of standard output and standard error
    bool isEchoOn = true; ///< whether the terminal shows what is typed
};

class Fleet
{
public:
    explicit Fleet(std::string_view toml);

    /// Runs to the end. \param input  all of standard input
    Ended run(const QStringList &arguments, const std::string &input = {}) const;
    /// The same with --json, behind whatever else is writing on this PC.
    Ended act(QStringList arguments, const std::string &input = {}) const;
    /// The same, and the caller's to end.
    void start(QProcess &process, const QStringList &arguments, const std::string &input = {}) const;

    /// Runs to the end on a terminal of its own, behind whatever else is writing on this PC.
    Shown onTerminal(const QStringList &arguments, const std::vector<Typed> &dialogue) const;

    /// A file of mode 0600 in the folder of the test.
    QString file(const char *name, const std::string &text) const;
    std::string journal() const;
    /// How often a camera was opened, by its identifier, for reading ("2") or for control ("3").
    int opens(std::string_view id, std::string_view flags) const;
    /// Lock and password of all cameras as a list tells them: "A1 locked user".
    std::vector<std::string> states() const;

    Simulator simulator;

private:
    const TemporaryFolder home;
    const Environment state; // where the journal goes, on either system
    const Environment localState;
    const Environment producers;
};

/// A configuration of the simulator with one interface.
std::string cameras(std::string_view all, std::string_view producer = "");
/// One camera of it; \p more are lines for it.
std::string camera(std::string_view serial, std::string_view more = "", std::string_view mac = "");
