// SPDX-License-Identifier: MIT
#include "Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <initializer_list>
#include <memory>

namespace {

// Darker than Fusion's own, each of them at least 4.5 to 1 against what it stands on: captions in empty fields on white,
// labels of disabled buttons on light grey, selected text on its background.
const QColor placeholderColor(96, 96, 96);
const QColor disabledColor(88, 88, 88);
const QColor highlightColor(36, 116, 171);

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

void prepareAppearance()
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    qputenv("QT_STYLE_OVERRIDE", "Fusion");
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
