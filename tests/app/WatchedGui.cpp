// SPDX-License-Identifier: MIT
// Linked with the program's own main: acts as its user from inside, once there is a row.
#include "AppFixture.h"
#include "DeviceListView.h"
#include "PanelParts.h"
#include "PasswordWidget.h"

#include <iostream>

namespace {

class User : public QObject
{
public:
    explicit User(QObject *application) : QObject(application) { startTimer(50); }

protected:
    void timerEvent(QTimerEvent *event) override
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            auto *const view = window->findChild<DeviceListView *>();
            if (!view || view->model()->rowCount() == 0)
                continue;
            killTimer(event->timerId());
            unlockWithoutPassword(*view);
            window->close();
        }
    }

private:
    void unlockWithoutPassword(DeviceListView &view)
    {
        view.setCurrentIndex(view.model()->index(0, 0));
        QTest::keyClick(&view, Qt::Key_Return);
        auto *const panel = view.window()->findChild<PasswordWidget *>();
        QTest::mouseClick(shownButton(panel, "Unlock"), Qt::LeftButton);
        QTest::keyClick(panel->findChild<QLineEdit *>(), Qt::Key_Return);
        const auto *const status = panel->findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
        std::cout << "status: " << status->text().toStdString() << std::endl;
        panel->close();
    }
};

void moveIn()
{
    new User(QCoreApplication::instance());
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(moveIn)
