// SPDX-License-Identifier: MIT
// What a user sees of the window on desktops of 96 to 192 dpi, light and dark ones: no text is cut, and each stands
// out from its background by 4.5 to 1 at least. Colours that style sheets and rows have of their own are not judged.
//
// Each desktop is a process of its own on a real X server, or on Windows. The dark one is KDE's as Qt reads it from its
// files.
#include "Appearance.h"
#include "WindowList.h"

#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <map>

namespace {

const char *const LookVariable = "TORVANE_TEST_DESKTOP"; // "light" or "dark", in the process of a desktop
constexpr double LeastContrast = 4.5;

// By the Web Content Accessibility Guidelines, from 1 to 21.
double contrast(const QColor &one, const QColor &other)
{
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

// Of what stands out most within the picture, against the colour that is most of it.
double contrastIn(const QImage &picture)
{
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    const auto isRarer = [](const auto &one, const auto &other) { return one.second < other.second; };
    const QColor background(std::max_element(counts.begin(), counts.end(), isRarer)->first);
    double best = 1;
    for (const auto &[color, count] : counts)
        best = std::max(best, contrast(QColor(color), background));
    return best;
}

QImage pictureOf(QWidget &window, const QRect &place)
{
    const qreal scale = window.devicePixelRatioF();
    const QRectF pixels(QPointF(place.topLeft()) * scale, QSizeF(place.size()) * scale);
    QImage picture = window.grab().toImage().copy(pixels.toRect());
    picture.setDevicePixelRatio(1);
    return picture;
}

// The text of a widget that shows one and has no colours of its own; empty for all others.
QString textOf(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->styleSheet().isEmpty() ? label->text() : QString();
    if (const auto *button = qobject_cast<const QPushButton *>(widget))
        return button->text();
    if (const auto *edit = qobject_cast<const QLineEdit *>(widget))
        return edit->displayText() + edit->placeholderText();
    return {};
}

// Looks at all texts of the window; tells those that are cut or faint.
QString faultsOf(QWidget &window)
{
    QStringList faults;
    QCoreApplication::processEvents(); // lays out
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        const QString text = textOf(widget);
        if (text.isEmpty() || !widget->isVisibleTo(&window) || widget->window() != &window)
            continue;
        const bool isEdit = qobject_cast<QLineEdit *>(widget);
        const QSize needed = isEdit ? QSize(0, widget->fontMetrics().height()) : widget->sizeHint();
        if (widget->width() < needed.width() || widget->height() < needed.height())
            faults << text + ": cut";
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        const double value = contrastIn(pictureOf(window, place.adjusted(4, 2, -4, -2))); // without a frame
        if (value < LeastContrast)
            faults << QString("%1: %2 to 1").arg(text).arg(value);
    }
    return faults.join('\n');
}

} // namespace

/// The sights of one desktop.
class Desktop : public QObject
{
    Q_OBJECT

private slots:
    void rows();
    void icons();
    void panel();
    void palette();
};

/// All desktops.
class LooksTest : public QObject
{
    Q_OBJECT

private slots:
    void desktop_data();
    void desktop();
};

// Nothing stands at the edges of the texts' boxes, and no more is seen where there is more room.
void Desktop::rows()
{
    WindowList list("A,model=\u00c5gj(|),serial=\u00c5gj(|)-20260001,ip=192.168.100.100");
    QCOMPARE(faultsOf(list.window), QString());
    const QRect row = list.view.visualRect(list.row(0));
    const auto texts = [&](const QRect &part) {
        return pictureOf(*list.view.viewport(), part.translated(row.topLeft()));
    };
    const auto isEmpty = [&](const QRect &part) { return contrastIn(texts(part)) < 1.01; };
    const int right = row.width() - 8;
    QVERIFY(!isEmpty({40, 8, right - 40, 24}) && !isEmpty({40, 32, right - 40, 24}));
    for (const int edge : {8, 31, 32, 55})
        QVERIFY2(isEmpty({40, edge, right - 40, 1}), qPrintable(QString::number(edge)));
    list.window.resize(1600, 400);
    QCoreApplication::processEvents();
    QVERIFY(isEmpty({right - 4, 8, 1000, 48}));
}

// As many pixels as the screen has at their place.
void Desktop::icons()
{
    WindowList list("A");
    const qreal scale = list.window.devicePixelRatioF();
    const int dpi = qEnvironmentVariableIntValue("QT_FONT_DPI");
    QCOMPARE(qRound(scale * 96), dpi == 100 ? 96 : dpi); // one that is nearly 96 counts as that
    const auto pixmap = list.value(0, Qt::DecorationRole).value<QPixmap>();
    QCOMPARE(QSizeF(pixmap.size()), QSizeF(24, 24) * scale);
    const QRect place(list.view.visualRect(list.row(0)).topLeft() + QPoint(4, 8), QSize(24, 24));
    QImage expected(pixmap.size(), QImage::Format_RGB32);
    expected.fill(Qt::white);
    QPainter(&expected).drawImage(QRect(QPoint(), pixmap.size()), pixmap.toImage());
    QCOMPARE(pictureOf(*list.view.viewport(), place).convertToFormat(QImage::Format_RGB32), expected);
}

void Desktop::panel()
{
    WindowList list("A");
    PasswordWidget *const panel = list.activate(0);
    QCOMPARE(faultsOf(*panel), QString());
    QTest::mouseClick(shownButton(panel, "Unlock"), Qt::LeftButton);
    QTest::keyClicks(panel->findChild<QLineEdit *>(), "wrong");
    QTest::keyClick(panel->findChild<QLineEdit *>(), Qt::Key_Return);
    QCOMPARE(faultsOf(*panel), QString());
    QTest::mouseClick(shownButton(panel, "Cancel"), Qt::LeftButton);
    QTest::mouseClick(shownButton(panel, "Change password"), Qt::LeftButton);
    QCOMPARE(faultsOf(*panel), QString());
}

// What the pictures do not show: menus, tooltips, selected texts, links.
void Desktop::palette()
{
    const std::vector<std::pair<QPalette::ColorRole, QPalette::ColorRole>> pairs{
        {QPalette::WindowText, QPalette::Window},
        {QPalette::ButtonText, QPalette::Button},
        {QPalette::Text, QPalette::Base},
        {QPalette::PlaceholderText, QPalette::Base},
        {QPalette::HighlightedText, QPalette::Highlight},
        {QPalette::ToolTipText, QPalette::ToolTipBase},
        {QPalette::Link, QPalette::Window}};
    for (const char *const widget : {"QWidget", "QMenu", "QTipLabel"}) {
        const QPalette colors = QApplication::palette(widget);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            for (const auto &[text, background] : pairs) {
                const double value = contrast(colors.color(group, text), colors.color(group, background));
                const QString place =
                    QString("%1 %2 %3: %4 to 1").arg(widget).arg(group).arg(text).arg(value);
                QVERIFY2(value >= LeastContrast, qPrintable(place));
            }
        }
    }
}

void LooksTest::desktop_data()
{
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("look");
    const bool isWindows = QSysInfo::kernelType() == "winnt";
    for (const int dpi : {96, 100, 144, 192})
        for (const char *const look : {"light", "dark"})
            if (!isWindows || look == QString("light"))
                QTest::addRow("%d dpi, %s", dpi, look) << dpi << QString(look);
}

void LooksTest::desktop()
{
    QFETCH(int, dpi);
    QFETCH(QString, look);
    const QTemporaryDir settings;
    QFile kde(settings.filePath("kdeglobals"));
    QVERIFY(kde.open(QIODevice::WriteOnly));
    for (const char *const group : {"Button", "Selection", "Tooltip", "View", "Window"})
        kde.write(QByteArray("[Colors:") + group +
                  "]\nBackgroundNormal=35,38,41\nForegroundNormal=239,240,241\nForegroundLink=41,128,185\n");
    kde.close();

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(LookVariable, look);
    environment.insert("QT_FONT_DPI", QString::number(dpi));
    environment.insert("XDG_CONFIG_HOME", settings.path());
    environment.insert("QT_QPA_PLATFORMTHEME", look == "dark" ? "kde" : "generic");
    environment.insert("KDE_SESSION_VERSION", "5");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(LOOKS_TEST, QStringList());
    QVERIFY(process.waitForFinished(120000));
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, process.readAll());
}

int main(int argc, char **argv)
{
    const QString look = qEnvironmentVariable(LookVariable);
    if (look.isEmpty()) {
        const QCoreApplication application(argc, argv);
        LooksTest test;
        return QTest::qExec(&test, argc, argv);
    }
    prepareAppearance(argc, argv);
    const QApplication application(argc, argv);
    if ((QApplication::palette().color(QPalette::Base).lightness() < 128) != (look == "dark"))
        return 1; // another desktop than was asked for
    useLightPalette();
    Desktop test;
    return QTest::qExec(&test, argc, argv);
}

#include "LooksTest.moc"
