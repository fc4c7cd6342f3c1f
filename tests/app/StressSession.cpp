// SPDX-License-Identifier: MIT
#include "StressSession.h"

#include "Device.h"
#include "DeviceItemModel.h"
#include "DeviceListView.h"
#include "UpdateWorker.h"

#include <QApplication>
#include <QMessageBox>
#include <QScrollBar>
#include <QWindow>
#include <array>
#include <utility>

namespace {

const QStringList passwords{"hunter22", "sunnyday7", "mapleoak"}; // the last after a factory reset
constexpr int leastActsPerChange = 8;
constexpr int mostActsPerChange = 16;
constexpr int changesPerPanel = 15; // each panel ever made shows a box of its own when a camera goes
constexpr int changesPerRest = 100;
constexpr int passesAhead = 3; // of what has been announced
constexpr int mostMsPerChange = 240;

} // namespace

StressSession::StressSession(unsigned seed, int changes) : changes(changes), random(seed + 1), cables(seed)
{
    std::filesystem::current_path(simulator.folder());
    clock.start();
    window = std::make_unique<MainWindow>();
    model = window->findChild<DeviceItemModel *>();
    list = window->findChild<DeviceListView *>();
    list->viewport()->installEventFilter(this);
    connect(list, &QAbstractItemView::activated, this, &StressSession::onActivated);
    const auto countRemoval = [this] { ++removals; };
    connect(model, &DeviceItemModel::currentDeviceRemoved, this, countRemoval, Qt::DirectConnection);
    connect(&boxTimer, &QTimer::timeout, this, &StressSession::answerBox);
    boxTimer.start(1);
    window->show();
    list->setFocus();
    connectPasses();
}

// Passes follow each other at once, beside those of the window's own timer, some before the GUI thread has heard of the
// one before.
void StressSession::connectPasses()
{
    const UpdateWorker *const worker = model->updateWorker();
    connect(this, &StressSession::tick, worker, [this] { isPassRunning = true; });
    connect(this, &StressSession::tick, worker, &UpdateWorker::doUpdate);
    connect(this, &StressSession::tick, worker, [this] {
        isPassRunning = false;
        ++passEnds;
        plug();
        emit passed();
    });
    connect(this, &StressSession::passed, this, [this] {
        ++passes;
        announcedRows = model->rowCount();
        emit tick();
    });
    for (int pass = 0; pass < passesAhead; ++pass)
        emit tick();
}

// Between two passes, on the update thread.
void StressSession::plug()
{
    if (isResting || changesMade >= changes || acts < changesMade * leastActsPerChange)
        return;
    cables.change();
    simulator.configure(cables.toml());
    ++changesMade;
}

void StressSession::run()
{
    while (changesMade < changes && clock.elapsed() < mostMsPerChange * changes) {
        isResting = false;
        const int goal = std::min(changes, changesMade + changesPerRest);
        while (changesMade < goal && clock.elapsed() < mostMsPerChange * changes)
            act();
        rest();
        checkWindow();
    }
    counts["changes"] = changesMade;
    counts["passes"] = passes;
    counts["acts"] = acts;
    counts["ms"] = static_cast<int>(clock.elapsed());
}

// Nothing is plugged from now on. Returns when the window has heard of it and the user has answered every box.
void StressSession::rest()
{
    isResting = true;
    const int goal = passes + 2 * passesAhead;
    expect(QTest::qWaitFor([&] { return passes >= goal; }, 20'000), "passes stand still");
}

void StressSession::checkWindow()
{
    expect(QTest::qWaitFor([&] { return shownRows() == cables.plugged(); }),
           "rows: " + shownRows().join(", ") + "; plugged: " + cables.plugged().join(", "));
    const int rows = model->rowCount();
    const int scrollRange = list->verticalScrollBar()->maximum(); // in rows
    expect(list->currentIndex().row() < rows, "the view's current row is outside");
    expect(scrollRange == std::max(0, rows - list->viewport()->height() / 64),
           QString("scroll range %1 for %2 rows").arg(scrollRange).arg(rows));
    if (!panel() || !panelIsTold)
        return;
    const QModelIndex current = model->currentIndex();
    expect(current.isValid() && model->index(current.row(), 0) == current &&
               current.data(DeviceItemModel::SerialNumberRole) == panelCamera,
           "the panel of " + panelCamera + " stands while its camera has gone");
}

void StressSession::expect(bool isAsExpected, const QString &fault)
{
    if (!isAsExpected)
        faults << QString("after %1 changes: %2").arg(changesMade).arg(fault);
}

void StressSession::begin()
{
    logSizeBefore = logSize();
    removalsBefore = removals;
    passEndsBefore = passEnds;
    wasPassRunning = isPassRunning;
}

bool StressSession::hasMetPass() const
{
    return wasPassRunning || isPassRunning || passEnds != passEndsBefore;
}

void StressSession::act()
{
    ++acts;
    begin();
    if (panel())
        actOnPanel();
    else
        actOnList();
    const bool isFarAhead = acts > (changesMade + 1) * mostActsPerChange;
    QCoreApplication::processEvents(isFarAhead ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
}

// By the window system, which knows of modal windows.
void StressSession::actOnList()
{
    constexpr std::array keys{Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown};
    QWindow *const system = window->windowHandle();
    const QPoint place = list->viewport()->mapTo(window.get(), drawPoint(list->viewport()));
    const bool mayActivate = panelsMade * changesPerPanel <= changesMade;
    switch (draw(mayActivate ? 12 : 9)) {
    case 0:
        return QTest::mouseClick(system, Qt::LeftButton, {}, place);
    case 1:
        return QTest::keyClick(system, keys[random() % keys.size()]);
    case 2:
        return list->verticalScrollBar()->setValue(draw(20));
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
void StressSession::onActivated(const QModelIndex &index)
{
    Activation activation{logSizeBefore, logSize(), {}};
    if (panels().count() > std::exchange(panelsMade, panels().count())) {
        // The device was in the list within this call, so it has not been freed.
        const auto id = static_cast<const Device *>(index.internalPointer())->identifier();
        panelCamera = activation.camera = QString::fromStdString(std::string(id));
        panelIsTold = removals == removalsBefore;
        ++counts[panelIsTold ? "panels" : "panels for a camera that went meanwhile"];
        counts["panels opened during a pass"] += hasMetPass();
    }
    activations.push_back(activation);
}

void StressSession::actOnPanel()
{
    if (draw(40) == 0) {
        ++counts["panels closed"];
        panel()->close();
    } else if (draw(4) > 0) {
        QTest::mouseMove(panel()->windowHandle(), drawPoint(panel()));
    } else {
        if (field(0).edit->isVisible())
            fillIn();
        const QList<QPushButton *> buttons = offered();
        if (!buttons.isEmpty())
            press(buttons[draw(buttons.count())]->text());
    }
}

void StressSession::fillIn()
{
    int &right = known[panelCamera];
    if (field(0).caption->text() == "Default password")
        right = 2;
    isRight = draw(3) > 0;
    const QString next = passwords[right == 0];
    field(0).type(isRight ? passwords[right] : "wrong one");
    for (const int place : {1, 2}) {
        if (field(place).edit->isVisible())
            field(place).type(next);
    }
}

void StressSession::press(const QString &label)
{
    const auto buttons = offered();
    const auto isMeant = [&](const QPushButton *button) { return button->text() == label; };
    const auto button = std::find_if(buttons.begin(), buttons.end(), isMeant);
    if (button == buttons.end())
        return;
    const QLabel *const message = status();
    begin();
    ++counts["pressed " + label];
    QTest::mouseClick(panel()->windowHandle(), Qt::LeftButton, {},
                      (*button)->mapTo(panel(), (*button)->rect().center()));
    counts["buttons pressed during a pass"] += hasMetPass();
    learn(message->text().section(" <", 0, 0));
}

// The status line after a step tells which password the camera has.
void StressSession::learn(const QString &status)
{
    if (!status.isEmpty())
        ++counts[status];
    if (status == "Successfully changed the password!")
        known[panelCamera] = known[panelCamera] == 0;
    else if (status == "Unlocking failed!" && isRight)
        known[panelCamera] = (known[panelCamera] + 1) % passwords.size();
}

void StressSession::answerBox()
{
    auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box)
        return;
    ++acts;
    const bool isQuestion = box->button(QMessageBox::Cancel);
    QPushButton *answer = box->findChild<QPushButton *>();
    if (isQuestion)
        answer = qobject_cast<QPushButton *>(box->button(draw(2) ? QMessageBox::Ok : QMessageBox::Cancel));
    ++counts[isQuestion ? box->text() + ' ' + answer->text().remove('&') : box->text()];
    QTest::mouseClick(answer, Qt::LeftButton);
}

bool StressSession::eventFilter(QObject *, QEvent *event)
{
    counts["mouse moves over the list"] += event->type() == QEvent::HoverMove;
    if (event->type() == QEvent::Paint) {
        ++counts[isPassRunning ? "paints during a pass" : "other paints"];
        counts["paints before a cut is announced"] += model->rowCount() < announcedRows;
    }
    return false;
}

PasswordWidget *StressSession::panel() const
{
    for (PasswordWidget *panel : panels()) {
        if (panel->isVisible())
            return panel;
    }
    return nullptr;
}

QList<QPushButton *> StressSession::offered() const
{
    QList<QPushButton *> buttons;
    for (QPushButton *button : panel()->findChildren<QPushButton *>()) {
        if (button->isVisible() && button->isEnabled())
            buttons << button;
    }
    return buttons;
}

QStringList StressSession::shownRows() const
{
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, 0);
        rows << index.data(DeviceItemModel::SerialNumberRole).toString() + ' ' +
                    index.data(DeviceItemModel::ModelNameRole).toString();
    }
    rows.sort();
    return rows;
}

void StressSession::useOnceMore()
{
    simulator.configure(
        "[[interface]]\nid = \"hall-0\"\n[[interface.camera]]\nid = \"last\"\nmodel = \"SimCam\"");
    rest();
    expect(QTest::qWaitFor([&] { return shownRows() == QStringList{"last SimCam"}; }),
           "the last camera is missing");
    if (panel())
        panel()->close();
    begin();
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {},
                       list->viewport()->mapTo(window.get(), QPoint(60, 32)));
    if (!panel())
        return expect(false, "the last camera opens no panel");
    press("Unlock");
    field(0).type("hunter22");
    press("OK");
    expect(status()->text() == "Successfully unlocked!", "the last camera: " + status()->text());
    const auto *const camera = static_cast<const Device *>(model->index(0, 0).internalPointer());
    expect(camera->isOpen(), "the last camera is not open");
    panel()->close();
    expect(!camera->isOpen(), "the last camera stays open");
    expect(window->isVisible(), "the window has gone");
}

void StressSession::end()
{
    simulator.configure("[producer]\nupdate_ms = 100\n");
    expect(QTest::qWaitFor([this] { return isPassRunning.load(); }), "no pass runs");
    window.reset();
}
