// SPDX-License-Identifier: MIT
#include "DisplayCheck.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QString>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <utility>
#include <vector>

namespace {

struct Message
{
    QtMsgType type;
    QByteArray category;
    QString text;
};

QtMessageHandler formerHandler = nullptr;
std::mutex heldMutex; // Qt's threads may have something to say too
std::vector<Message> held;

// What the platform said last. That it cannot be used then is what Qt's loader of plugins adds, and the fatal message.
QString reasonOr(const QString &fatal)
{
    const auto isOfPlatform = [](const Message &message) { return message.category != "qt.qpa.plugin"; };
    const auto last = std::find_if(held.crbegin(), held.crend(), isOfPlatform);
    if (last != held.crend())
        return last->text;
    return held.empty() ? fatal : held.front().text;
}

[[noreturn]] void endWithoutDisplay(const QString &reason)
{
    const QByteArray line = reason.section(QLatin1Char('\n'), 0, 0).trimmed().toLocal8Bit();
    std::fprintf(stderr,
                 "torvane_gui: There is no display, or it can't be used (%s). torvane_console needs none.\n",
                 line.constData());
    // The application is half made: nothing of it can be taken down.
    std::_Exit(EXIT_FAILURE);
}

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const std::lock_guard lock(heldMutex);
    if (type == QtFatalMsg)
        endWithoutDisplay(reasonOr(text));
    held.push_back({type, context.category, text});
}

} // namespace

DisplayCheck::DisplayCheck()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "wayland");
    formerHandler = qInstallMessageHandler(handleMessage);
}

DisplayCheck::~DisplayCheck()
{
    qInstallMessageHandler(formerHandler);
    const std::lock_guard lock(heldMutex);
    for (const Message &message : std::exchange(held, {}))
        formerHandler(message.type, QMessageLogContext(nullptr, 0, nullptr, message.category.constData()),
                      message.text);
}
