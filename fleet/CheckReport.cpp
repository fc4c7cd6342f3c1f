// SPDX-License-Identifier: MIT
#include "CheckReport.h"

#include "Clock.h"
#include "JsonFields.h"
#include "ShownName.h"
#include "ShownText.h"

#include <QJsonArray>
#include <QString>
#include <algorithm>

namespace fleet {

namespace {

/// On each line "|" begins performance data.
std::string pluginSafe(std::string_view text)
{
    std::string safe;
    for (const char character : shownText(text)) {
        if (character == '|')
            safe += "\\x7c";
        else
            safe += character;
    }
    return safe;
}

/// The states of which there are too many cameras.
std::vector<Trouble> brokenTroubles(const CheckFindings &findings)
{
    const CameraCounts counts = findings.counts();
    std::vector<Trouble> broken;
    for (const Trouble trouble : allTroubles) {
        if (std::ranges::any_of(findings.rules, [&](const CheckRule &rule) {
                return rule.trouble == trouble && isBroken(rule, counts);
            }))
            broken.push_back(trouble);
    }
    return broken;
}

std::vector<Trouble> troublesOf(const Camera &camera, const std::vector<Trouble> &broken)
{
    std::vector<Trouble> own;
    std::ranges::copy_if(broken, std::back_inserter(own),
                         [&](Trouble trouble) { return isIn(trouble, camera); });
    return own;
}

struct Offender
{
    const Camera *camera;
    std::vector<Trouble> troubles;
};

/// The worst first: who reads the output may cut it.
std::vector<Offender> offendersOf(const CheckFindings &findings)
{
    const std::vector<Trouble> broken = brokenTroubles(findings);
    std::vector<Offender> offenders;
    for (const Camera *const camera : findings.cameras) {
        if (std::vector<Trouble> troubles = troublesOf(*camera, broken); !troubles.empty())
            offenders.push_back({camera, std::move(troubles)});
    }
    std::ranges::stable_sort(offenders, {},
                             [](const Offender &offender) { return offender.troubles.front(); });
    return offenders;
}

std::string lineOf(const Offender &offender)
{
    const Camera &camera = *offender.camera;
    std::string words;
    for (const Trouble trouble : offender.troubles)
        words += (words.empty() ? "" : ", ") + std::string(wordOf(trouble));
    if (isIn(Trouble::Unknown, camera) && camera.reason)
        words += ", " + std::string(wordOf(camera.reason->code)) + ": " + camera.reason->text;
    return pluginSafe(shownName(camera) + ", " + camera.place.id + ": " + words) + '\n';
}

std::string countedText(std::size_t cameras)
{
    return std::to_string(cameras) + (cameras == 1 ? " camera" : " cameras");
}

/// What breaks a rule; else what was counted. Unknown ones are told in any case: they may be on the factory password.
std::string summaryText(const CheckFindings &findings)
{
    const CameraCounts counts = findings.counts();
    const std::vector<Trouble> broken = brokenTroubles(findings);
    if (broken.empty() && !findings.doubts.empty())
        return findings.doubts.front();
    std::string text;
    for (const Trouble trouble : allTroubles) {
        const bool isBroken = std::ranges::count(broken, trouble) > 0;
        if (isBroken || (trouble == Trouble::Unknown && counts.unknown > 0))
            text += ", " + std::to_string(counts.of(trouble)) + ' ' + wordOf(trouble);
    }
    return broken.empty() ? countedText(findings.cameras.size()) + text : text.substr(2);
}

std::string performanceData(const CameraCounts &counts)
{
    return " | factory=" + std::to_string(counts.factory) + " unlocked=" + std::to_string(counts.unlocked) +
           " unknown=" + std::to_string(counts.unknown) + " none=" + std::to_string(counts.none) +
           " user=" + std::to_string(counts.user);
}

QJsonObject jsonOf(const CameraCounts &counts)
{
    return {{QStringLiteral("factory"), counts.factory},
            {QStringLiteral("unlocked"), counts.unlocked},
            {QStringLiteral("unknown"), counts.unknown},
            {QStringLiteral("none"), counts.none},
            {QStringLiteral("user"), counts.user}};
}

QJsonObject jsonOf(const CheckRule &rule, const CameraCounts &counts)
{
    return {{QStringLiteral("counted"), QLatin1String(wordOf(rule.trouble))},
            {QStringLiteral("state"), QLatin1String(wordOf(rule.state))},
            {QStringLiteral("most"), rule.most},
            {QStringLiteral("broken"), isBroken(rule, counts)}};
}

QJsonObject jsonOf(const Offender &offender)
{
    QJsonArray words;
    for (const Trouble trouble : offender.troubles)
        words.append(QLatin1String(wordOf(trouble)));
    QJsonObject object = jsonOf(*offender.camera);
    object[QStringLiteral("offends")] = words;
    return object;
}

template <class Range, class Converter>
QJsonArray arrayOf(const Range &range, Converter converter)
{
    QJsonArray array;
    for (const auto &element : range)
        array.append(converter(element));
    return array;
}

std::string firstLineBegin(CheckState state, const std::string &text)
{
    std::string word = wordOf(state);
    std::ranges::transform(word, word.begin(), [](char c) { return static_cast<char>(c - 'a' + 'A'); });
    return "TORVANE " + word + " - " + pluginSafe(text);
}

} // namespace

std::string pluginLine(CheckState state, const std::string &text)
{
    return firstLineBegin(state, text) + '\n';
}

std::string pluginText(const CheckFindings &findings)
{
    const CheckState state = findings.state();
    std::string text = firstLineBegin(state, summaryText(findings));
    if (!findings.cameras.empty())
        text += performanceData(findings.counts());
    text += '\n';
    const std::size_t told = state == CheckState::Unknown ? 1 : 0; // on the first line
    for (std::size_t i = told; i < findings.doubts.size(); ++i)
        text += pluginSafe(findings.doubts[i]) + '\n';
    for (const Offender &offender : offendersOf(findings))
        text += lineOf(offender);
    return text;
}

QJsonObject checkObject(const CheckFindings &findings, const std::vector<Producer> &producers)
{
    const CameraCounts counts = findings.counts();
    const CheckState state = findings.state();
    const auto ruleObject = [&](const CheckRule &rule) { return jsonOf(rule, counts); };
    const auto doubtText = [](const std::string &doubt) { return jsonText(std::string_view(doubt)); };
    return {{QStringLiteral("schema"), 1},
            {QStringLiteral("host"), hostName()},
            {QStringLiteral("status"), static_cast<int>(state)},
            {QStringLiteral("state"), QLatin1String(wordOf(state))},
            {QStringLiteral("counts"), findings.cameras.empty() ? QJsonValue() : QJsonValue(jsonOf(counts))},
            {QStringLiteral("rules"), arrayOf(findings.rules, ruleObject)},
            {QStringLiteral("doubts"), arrayOf(findings.doubts, doubtText)},
            {QStringLiteral("cameras"),
             arrayOf(offendersOf(findings), [](const Offender &offender) { return jsonOf(offender); })},
            {QStringLiteral("producers"),
             arrayOf(producers, [](const Producer &producer) { return fleet::jsonOf(producer); })}};
}

} // namespace fleet
