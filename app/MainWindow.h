// SPDX-License-Identifier: MIT
// The one window: the list of cameras over a footer. It owns the back end, and makes a new password panel for each
// camera that is activated.
#pragma once

#include <QMainWindow>
#include <memory>

class BackEnd;
class DeviceItemDelegate;
class DeviceItemModel;
class DeviceListView;
class QVBoxLayout;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Does all the work of start-up: searches for producers and starts the updates. Without a producer it says so in
    /// a message box, and the window closes itself soon after.
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

signals:
    /// Nothing emits it.
    void passwordChecked(int retFlag);

private slots:
    /// Hands a current row to the model. Nothing is connected to it.
    void onCurrentChanged(const QModelIndex &current, const QModelIndex &previous);
    /// Opens the camera of the row and shows a panel for it. Takes as long as the camera does.
    void onCameraActivated(const QModelIndex &index);

private:
    void connectList();
    void followRowCount();
    void addFooter(QVBoxLayout &layout);
    void failToStart();

    std::shared_ptr<BackEnd> backEnd; // shared with the model and every panel
    DeviceItemModel *itemModel;
    DeviceItemDelegate *itemDelegate;
    DeviceListView *listView;
};
