// SPDX-License-Identifier: MIT
// A window in its long run, with the cameras that come and go in passes on the update thread and a user who meanwhile
// moves the mouse, selects and activates rows and presses whatever the panel offers. Neither waits for the other.
#pragma once

#include "Environment.h"
#include "MainWindow.h"
#include "PanelParts.h"
#include "PasswordWidget.h"
#include "Simulator.h"
#include "StressSupport.h"

#include <QElapsedTimer>
#include <QTimer>
#include <atomic>
#include <map>
#include <memory>
#include <random>

class DeviceItemModel;
class DeviceListView;

class StressSession : public QObject
{
    Q_OBJECT

public:
    StressSession(unsigned seed, int changes);

    /// Goes through all changes.
    void run();
    /// Unlocks one last camera.
    void useOnceMore();
    /// Destroys the window in the middle of a pass.
    void end();

    bool eventFilter(QObject *watched, QEvent *event) override;

    Simulator simulator{""};
    std::vector<Activation> activations;
    QStringList faults;
    std::map<QString, int> counts; // of what has really happened
    std::map<QString, int> changeCounts() const { return cables.counts(); }

signals:
    void tick();
    void passed();

private:
    void connectPasses();
    void plug();
    void rest();
    void checkWindow();
    void expect(bool isAsExpected, const QString &fault);

    void begin();
    bool hasMetPass() const;
    void act();
    void actOnList();
    void actOnPanel();
    void fillIn();
    void press(const QString &label);
    void learn(const QString &status);
    void onActivated(const QModelIndex &index);
    void answerBox();

    int draw(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    QPoint drawPoint(const QWidget *widget) { return {draw(widget->width()), draw(widget->height())}; }
    QList<PasswordWidget *> panels() const
    {
        return window->findChildren<PasswordWidget *>(QString(), Qt::FindDirectChildrenOnly);
    }
    PasswordWidget *panel() const;        // the one that is shown
    QList<QPushButton *> offered() const; // of its buttons
    QLabel *status() const { return partOf<QLabel>(panel(), 3); }
    FieldParts field(int place) const
    {
        return FieldParts(partOf<QWidget>(partOf<QWidget>(panel(), 1), place));
    }
    QStringList shownRows() const;
    std::uintmax_t logSize() const { return std::filesystem::file_size(simulator.logPath()); }

    const Environment path{"GENICAM_GENTL64_PATH",
                           std::filesystem::path(Simulator::cti()).parent_path().string()};
    const int changes;
    std::mt19937 random;
    std::unique_ptr<MainWindow> window;
    DeviceItemModel *model = nullptr;
    DeviceListView *list = nullptr;
    QTimer boxTimer;
    QElapsedTimer clock;

    Cables cables; // the update thread's, but at rest
    std::atomic<int> changesMade = 0;
    std::atomic<int> acts = 0;
    std::atomic<bool> isResting = false;
    std::atomic<bool> isPassRunning = false;
    std::atomic<int> passEnds = 0;
    std::atomic<int> removals = 0;

    int passes = 0; // announced
    int announcedRows = 0;
    std::uintmax_t logSizeBefore = 0; // the present act, as the next three
    int removalsBefore = 0;
    int passEndsBefore = 0;
    bool wasPassRunning = false;
    int panelsMade = 0;
    QString panelCamera;
    bool panelIsTold = false;     // of a removal
    std::map<QString, int> known; // which of the passwords a camera has, as far as the user knows
    bool isRight = false;         // what was typed, by that knowledge
};
