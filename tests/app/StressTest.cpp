// SPDX-License-Identifier: MIT
// A long run of the whole window: cameras come and go by the hundred in passes on the update thread, while a user
// moves the mouse, selects and activates rows and presses whatever the panel offers. Neither waits for the other. In the
// end its rows are what is plugged, and no call went to a camera whose row had not been activated.
//
// The changes and the user's choices are drawn from TORVANE_STRESS_SEED, the moments at which they meet are not.
// TORVANE_STRESS_CHANGES sets how many changes there are.
#include "AppFixture.h"
#include "Capture.h"
#include "Device.h"
#include "DeviceListView.h"
#include "MainWindow.h"
#include "PanelParts.h"
#include "PasswordWidget.h"

#include <QMutex>
#include <QRegularExpression>
#include <QScrollBar>
#include <QWindow>
#include <algorithm>
#include <atomic>
#include <iostream>
#include <map>
#include <optional>
#include <random>

namespace {

constexpr int leastActsPerChange = 8;
constexpr int mostActsPerChange = 16;
constexpr int changesPerPanel = 20; // each panel ever made shows a box of its own when a camera goes
constexpr int changesPerRest = 100;
constexpr int rebootMs = 30;
constexpr int passesAhead = 3; // of what has been announced

using Counts = std::map<QString, int>;

// What must have happened in a thousand changes, else the run has proved nothing. Most come by the hundred.
const QString needed =
    "paints during a pass;paints before a cut is announced;panels opened;IFOpenDevice;GCWritePort;"
    "operations that succeeded;Unlocking failed!;Factory reset.;The camera has been removed...;"
    "This camera is not password protected.";

struct Random : std::mt19937
{
    using std::mt19937::mt19937;

    int draw(int count) { return static_cast<int>((*this)() % static_cast<unsigned>(count)); }
    QString draw(const QStringList &choices) { return choices[draw(choices.count())]; }
};

// Plugs cameras in and out, and into another interface, which makes another camera of them to the list.
struct Cables
{
    void change()
    {
        isSlow = random.draw(20) == 0;
        const int kind = random.draw(12);
        for (int &interface : interfaces)
            if (kind == 0 || (kind < 3 && interface == kind)) // all at once, or those of one interface
                interface = -1;
        for (int count = random.draw(4); count > 0; --count)
            interfaces[random() % interfaces.size()] = random.draw(4) - 1;
    }

    std::string toml() const
    {
        const QStringList kinds{"lock=locked", "lock=unlocked",      "lock=default",
                                "lock=none",   "description=zipped", "access=busy"};
        QStringList plans{"", "", ""};
        for (int camera = 0; camera < int(interfaces.size()); ++camera)
            if (const int interface = interfaces[std::size_t(camera)]; interface >= 0)
                plans[interface] += QString("C%1,reboot_ms=%2,%3 ")
                                        .arg(camera)
                                        .arg(rebootMs)
                                        .arg(kinds[camera % kinds.count()]);
        const std::string latency = isSlow ? "[producer]\nlatency_ms = 1\n" : "";
        return latency + cameras(plans.join('/'));
    }

    QStringList serials() const
    {
        QStringList serials;
        for (int camera = 0; camera < int(interfaces.size()); ++camera)
            if (interfaces[std::size_t(camera)] >= 0)
                serials << QString("C%1").arg(camera);
        return serials;
    }

    Random random;
    std::vector<int> interfaces = std::vector<int>(24, -1); // of the cameras; -1: not plugged
    bool isSlow = false;
};

// A row that was activated, by the size of the simulator's log before and after it.
struct Activation
{
    std::uintmax_t begin;
    std::uintmax_t end;
    QString camera; // empty when no panel came of it
};

class Session : public QObject, public CameraList
{
public:
    Session(unsigned seed, int changes)
        : CameraList(""), cables{Random(seed)}, random(seed + 1), changes(changes)
    {
        model = window->findChild<DeviceItemModel *>();
        list = window->findChild<DeviceListView *>();
        list->viewport()->installEventFilter(this);
        connect(list, &QAbstractItemView::activated, this, &Session::onActivated);
        connect(
            model, &DeviceItemModel::currentDeviceRemoved, this, [this] { ++removals; },
            Qt::DirectConnection);
        connect(&boxTimer, &QTimer::timeout, this, &Session::answerBox);
        boxTimer.start(1);
        window->show();
        list->setFocus();
        for (int pass = 0; pass < passesAhead; ++pass)
            startPass();
    }

    void run()
    {
        for (int goal = 0; goal < changes;) {
            goal = std::min(changes, goal + changesPerRest);
            isResting = false;
            while (changesMade < goal)
                act();
            rest();
        }
    }

    // Whatever came between, each camera and interface was closed in its turn.
    void end()
    {
        window.reset();
        expect(simulator.calls().back() == "GCCloseLib() = 0", "the producer stays loaded");
        expect(simulator.openHandles() == 0, "handles stay open");
    }

    // The calls that open a camera for a panel or write to it, and that do not go to the one that was activated last.
    QStringList strayCalls()
    {
        const QRegularExpression gap("[(), \"]+");
        QStringList strays;
        QHash<QString, QString> cameraOf; // by handles of devices and ports
        Activation last{};
        auto next = activations.begin();
        std::uintmax_t position = 0;
        for (const std::string &line : simulator.calls()) {
            while (next != activations.end() && next->begin <= position)
                last = *next++;
            const bool isWithinActivation = position < last.end;
            position += line.size() + 1;
            const QString function = QString::fromStdString(line.substr(0, line.find('(')));
            if (!QStringList{"IFOpenDevice", "DevGetPort", "GCWritePort"}.contains(function))
                continue;
            // Such as: IFOpenDevice(h2, "C7", 3) = 0 h9
            const QStringList words = QString::fromStdString(line).split(gap);
            const QString handle = words.last();
            const QString camera = function == "IFOpenDevice" ? words[2] : cameraOf[words[1]];
            const bool isForPanel = function == "IFOpenDevice" && words[3] == "3"; // DEVICE_ACCESS_CONTROL
            if (handle.startsWith('h'))
                cameraOf[handle] = camera;
            if (!isForPanel && function != "GCWritePort")
                continue;
            ++counts[function];
            if (camera.isEmpty() || camera != last.camera || (isForPanel && !isWithinActivation))
                strays << QString("%1: camera %2, activated %3").arg(line.c_str(), camera, last.camera);
        }
        return strays;
    }

    QStringList faults;
    Counts counts; // of what has really happened
    Cables cables; // the update thread's, but at rest

private:
    // Passes follow each other at once, beside those of the window's own timer, some before the GUI thread has heard of
    // the one before.
    void startPass()
    {
        auto *const worker = const_cast<UpdateWorker *>(model->updateWorker());
        QMetaObject::invokeMethod(worker, [this, worker] {
            ++passSteps;
            worker->doUpdate();
            ++passSteps;
            plug();
            QMetaObject::invokeMethod(this, [this] {
                ++passes;
                announcedRows = model->rowCount();
                startPass();
            });
        });
    }

    // Between two passes, on the update thread.
    void plug()
    {
        if (isResting || changesMade >= changes || acts < changesMade * leastActsPerChange)
            return;
        cables.change();
        simulator.configure(cables.toml());
        ++changesMade;
    }

    // Nothing is plugged from now on, and a camera that reboots comes back: the window hears of all that was, and the
    // user answers every box.
    void rest()
    {
        isResting = true;
        QTest::qWait(rebootMs);
        const int goal = passes + 2 * passesAhead;
        expect(QTest::qWaitFor([&] { return passes >= goal; }, 20'000), "passes stand still");
        QStringList plugged = cables.serials();
        QStringList serials = shown().split(' ', Qt::SkipEmptyParts);
        plugged.sort();
        serials.sort();
        expect(serials == plugged, "rows: " + serials.join(' ') + "; plugged: " + plugged.join(' '));

        const int rows = model->rowCount();
        expect(list->currentIndex().row() < rows, "the view's current row is outside");
        expect(list->verticalScrollBar()->maximum() == std::max(0, rows - list->viewport()->height() / 64),
               "the scroll range is wrong");
        const QModelIndex current = model->currentIndex();
        expect(!shownPanel() || !panelIsTold ||
                   (current.isValid() && row(current.row()) == current &&
                    current.data(DeviceItemModel::SerialNumberRole) == panelCamera),
               "the panel of " + panelCamera + " stands while its camera has gone");
    }

    void expect(bool isAsExpected, const QString &fault)
    {
        if (!isAsExpected)
            faults << QString("after %1 changes: %2").arg(changesMade).arg(fault);
    }

    void act()
    {
        ++acts;
        logSizeBefore = logSize();
        removalsBefore = removals;
        if (PasswordWidget *const panel = shownPanel())
            actOnPanel(*panel);
        else
            actOnList();
        const bool isFarAhead = acts > (changesMade + 1) * mostActsPerChange;
        QCoreApplication::processEvents(isFarAhead ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
    }

    // By the window system, which knows of modal windows.
    void actOnList()
    {
        const QList<Qt::Key> keys{Qt::Key_Down, Qt::Key_Up, Qt::Key_End};
        QWindow *const system = window->windowHandle();
        const QPoint place = list->viewport()->mapTo(window.get(), drawPoint(*list->viewport()));
        const bool mayActivate = panelsMade * changesPerPanel <= changesMade;
        switch (random.draw(mayActivate ? 12 : 9)) {
        case 0:
            return QTest::mouseClick(system, Qt::LeftButton, {}, place);
        case 1:
            return QTest::keyClick(system, keys[random.draw(keys.count())]);
        case 2:
            return list->verticalScrollBar()->setValue(random.draw(20));
        case 3:
            return list->viewport()->repaint();
        case 9:
            return QTest::keyClick(system, Qt::Key_Return);
        case 10:
        case 11:
            return QTest::mouseDClick(system, Qt::LeftButton, {}, place);
        default:
            return QTest::mouseMove(system, place);
        }
    }

    // Connected behind the window's own slot, so the panel is there by now.
    void onActivated(const QModelIndex &index)
    {
        Activation activation{logSizeBefore, logSize(), {}};
        if (panels().count() > std::exchange(panelsMade, panels().count())) {
            // The device was in the list within this call, so it has not been freed.
            const auto id = static_cast<const Device *>(index.internalPointer())->identifier();
            panelCamera = activation.camera = QString::fromStdString(std::string(id));
            panelIsTold = removals == removalsBefore;
            ++counts["panels opened"];
        }
        activations.push_back(activation);
    }

    void actOnPanel(PasswordWidget &panel)
    {
        if (random.draw(40) == 0)
            return void(panel.close());
        if (random.draw(4) > 0)
            return QTest::mouseMove(panel.windowHandle(), drawPoint(panel));
        // What most cameras have, what they get, and what they have after a factory reset.
        const QString next = random.draw({"hunter22", "sunnyday7"});
        QStringList texts{random.draw({"hunter22", "hunter22", "sunnyday7", "mapleoak"}), next, next};
        for (QLineEdit *edit : panel.findChildren<QLineEdit *>()) {
            edit->clear();
            if (edit->isVisible())
                QTest::keyClicks(edit, texts.takeFirst());
        }
        QList<QPushButton *> offered;
        for (QPushButton *button : panel.findChildren<QPushButton *>())
            if (button->isVisible() && button->isEnabled())
                offered << button;
        if (offered.isEmpty())
            return;
        const QPushButton *const button = offered[random.draw(offered.count())];
        QTest::mouseClick(panel.windowHandle(), Qt::LeftButton, {},
                          button->mapTo(&panel, button->rect().center()));
        const QString status = partOf<QLabel>(&panel, 3)->text().section(" <", 0, 0);
        ++counts[status];
        counts["operations that succeeded"] += status.startsWith("Successfully");
    }

    void answerBox()
    {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        ++acts;
        const QList<QAbstractButton *> buttons = box->buttons();
        ++counts[box->text()];
        QTest::mouseClick(buttons[random.draw(buttons.count())], Qt::LeftButton);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            counts["paints during a pass"] += passSteps % 2;
            counts["paints before a cut is announced"] += model->rowCount() < announcedRows;
        }
        return false;
    }

    QPoint drawPoint(const QWidget &widget)
    {
        return {random.draw(widget.width()), random.draw(widget.height())};
    }
    QList<PasswordWidget *> panels() const { return window->findChildren<PasswordWidget *>(); }
    PasswordWidget *shownPanel() const
    {
        for (PasswordWidget *panel : panels())
            if (panel->isVisible())
                return panel;
        return nullptr;
    }
    std::uintmax_t logSize() const { return std::filesystem::file_size(simulator.logPath()); }

    Random random;
    const int changes;
    DeviceListView *list;
    QTimer boxTimer;
    std::vector<Activation> activations;

    std::atomic<int> changesMade = 0;
    std::atomic<int> acts = 0;
    std::atomic<bool> isResting = false;
    std::atomic<int> passSteps = 0; // begun and finished: odd during a pass
    std::atomic<int> removals = 0;
    int passes = 0; // announced
    int announcedRows = 0;

    std::uintmax_t logSizeBefore = 0; // the present act, as the next one
    int removalsBefore = 0;
    int panelsMade = 0;
    QString panelCamera;
    bool panelIsTold = false; // of a removal

    // Goes before all that its last pass uses.
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>();
};

QMutex warningsMutex;
QStringList warnings; // of Qt, from any thread

void keepWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const QMutexLocker lock(&warningsMutex);
    if (type == QtWarningMsg && !text.startsWith("This plugin does not support")) // the offscreen platform
        warnings << text;
}

} // namespace

class StressTest : public QObject
{
    Q_OBJECT

private slots:
    void changes();
};

void StressTest::changes()
{
    const unsigned seed = qEnvironmentVariable("TORVANE_STRESS_SEED", "20260107").toUInt();
    const int changes = qEnvironmentVariable("TORVANE_STRESS_CHANGES", "1000").toInt();
    qInfo("seed %u, %d changes", seed, changes);
    std::cin.setstate(std::ios_base::eofbit); // as the application does, which must not wait for a terminal
    std::optional<Session> session;
    {
        CaptureOutput backEnd; // tells of each call that fails
        const QtMessageHandler before = qInstallMessageHandler(keepWarning);
        session.emplace(seed, changes);
        session->run();
        session->end();
        qInstallMessageHandler(before);
    }
    const QString strays = session->strayCalls().join('\n');
    Counts &counts = session->counts;
    for (const auto &[what, count] : counts)
        qInfo("%6d %s", count, qPrintable(what));

    QCOMPARE(strays, QString());
    QCOMPARE(session->faults.join('\n'), QString());
    QCOMPARE(warnings.join('\n'), QString());
    for (const QString &what : needed.split(';'))
        QVERIFY2(counts[what] > 0 || changes < 1000, qPrintable("never: " + what));
}

QTEST_MAIN(StressTest)
#include "StressTest.moc"
