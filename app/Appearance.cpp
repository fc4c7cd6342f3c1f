// SPDX-License-Identifier: MIT
#include "Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <algorithm>
#include <initializer_list>
#include <memory>
#include <vector>

namespace {

// Darker than Fusion's own, each of them at least 4.5 to 1 against what it stands on: captions in empty fields on white,
// labels of disabled buttons on light grey, selected text on its background.
const QColor placeholderColor(96, 96, 96);
const QColor disabledColor(88, 88, 88);
const QColor highlightColor(36, 116, 171);

// Below it a screen is one of 96 dpi that says another number, as X servers without a monitor do. Scaling by that little
// would blur all lines and help nobody.
constexpr qreal leastScale = 1.1;

// Of the densest screen, in multiples of 96 dpi. Nothing but an application tells: this one lives for the question. It
// must not begin to scale, nor take what is meant for the one that shows the window.
qreal greatestScale(int argc, char **argv)
{
    std::vector<char *> arguments(argv, argv + argc + 1);
    const QByteArray startup = qgetenv("DESKTOP_STARTUP_ID");
    QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling);
    qreal greatest = 0;
    {
        const QGuiApplication application(argc, arguments.data());
        for (const QScreen *screen : QGuiApplication::screens())
            greatest = std::max(greatest, screen->logicalDotsPerInch() / 96);
    }
    QCoreApplication::setAttribute(Qt::AA_DisableHighDpiScaling, false);
    if (!startup.isNull())
        qputenv("DESKTOP_STARTUP_ID", startup);
    return greatest;
}

// A role that is set explicitly no desktop changes any more.
void setEveryRole(QPalette &palette)
{
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            const auto colorRole = static_cast<QPalette::ColorRole>(role);
            palette.setBrush(group, colorRole, palette.brush(group, colorRole));
        }
    }
}

} // namespace

void prepareAppearance(int argc, char **argv)
{
    using Policy = Qt::HighDpiScaleFactorRoundingPolicy;
    const auto policy = greatestScale(argc, argv) < leastScale ? Policy::Round : Policy::PassThrough;
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(policy);
    qputenv("QT_STYLE_OVERRIDE", "Fusion"); // in place of what a dark desktop sets there for all programs
}

void useLightPalette()
{
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette palette = fusion->standardPalette();
    palette.setColor(QPalette::PlaceholderText, placeholderColor);
    palette.setColor(QPalette::Highlight, highlightColor);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, disabledColor);
    setEveryRole(palette);
    QApplication::setPalette(palette);
    // Some desktops have palettes of their own for these.
    for (const char *const widget : {"QMenu", "QTipLabel"})
        QApplication::setPalette(palette, widget);
}
