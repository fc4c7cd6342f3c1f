// SPDX-License-Identifier: MIT
// The whole window over simulated cameras, in the hands of its user.
#pragma once

#include "AppFixture.h"
#include "DeviceListView.h"
#include "MainWindow.h"
#include "PanelParts.h"
#include "PasswordWidget.h"

struct WindowList : CameraList
{
    explicit WindowList(const QString &plan) : CameraList(cameras(plan))
    {
        follow(window.findChild<DeviceItemModel *>());
        window.show();
        pass();
        takeEmitted();
    }

    QList<PasswordWidget *> panels() const { return window.findChildren<PasswordWidget *>(); }
    QRect place(int position) const { return view.visualRect(row(position)); }

    /// By the keyboard; returns the newest panel.
    PasswordWidget *activate(int position)
    {
        view.setCurrentIndex(row(position));
        QTest::keyClick(&view, Qt::Key_Return);
        return panels().last();
    }

    void doubleClick(int position) const
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place(position).center());
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place(position).center());
    }

    MainWindow window;
    DeviceListView &view = *window.findChild<DeviceListView *>();
    MessageBoxes boxes;
};
