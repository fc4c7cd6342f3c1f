// SPDX-License-Identifier: MIT
// Linked with the program's own main: acts as its user from inside, and says on standard output what there is to see.
// The variable TORVANE_TEST_USER says what the user does once there is a row.
#include "AppFixture.h"
#include "DeviceListView.h"
#include "MainWindow.h"
#include "PasswordWidget.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <iostream>

namespace {

void say(const QString &what)
{
    std::cout << "user: " << what.toStdString() << std::endl;
}

class User : public QObject
{
public:
    explicit User(QObject *application) : QObject(application)
    {
        application->installEventFilter(this);
        startTimer(50);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (auto *const window = qobject_cast<MainWindow *>(object);
            window && event->type() == QEvent::Show) {
            for (const QString &text : boxes.taken())
                say(text);
            say("window shown");
            sinceShow.start();
        } else if (window && event->type() == QEvent::Close) {
            say(QString("window closed after %1 s").arg(qRound(double(sinceShow.elapsed()) / 1000)));
        } else if (paintsLate && event->type() == QEvent::Paint) {
            paintsLate->data({}, DeviceItemModel::ModelNameRole);
        }
        return false;
    }

    void timerEvent(QTimerEvent *) override
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *const view = widget->findChild<DeviceListView *>();
            if (!view || view->model()->rowCount() == 0 || wasHere)
                continue;
            wasHere = true;
            if (qEnvironmentVariable("TORVANE_TEST_USER") == "paints") {
                paintsLate = view->model();
                view->viewport()->update();
                return;
            }
            unlockWithoutPassword(*view);
            widget->close();
        }
    }

private:
    void unlockWithoutPassword(DeviceListView &view)
    {
        view.setCurrentIndex(view.model()->index(0, 0));
        QTest::keyClick(&view, Qt::Key_Return);
        auto *const panel = view.window()->findChild<PasswordWidget *>();
        QTest::mouseClick(panel->findChild<QPushButton *>(), Qt::LeftButton);
        QTest::keyClick(panel->findChild<QLineEdit *>(), Qt::Key_Return);
        for (const QLabel *label : panel->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly))
            say(label->text());
        panel->close();
    }

    MessageBoxes boxes;
    QElapsedTimer sinceShow;
    bool wasHere = false;
    const QAbstractItemModel *paintsLate = nullptr;
};

void moveIn()
{
    new User(QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(moveIn)
