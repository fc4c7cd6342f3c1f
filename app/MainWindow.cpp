// SPDX-License-Identifier: MIT
#include "MainWindow.h"

#include "BackEnd.h"
#include "DeviceItemDelegate.h"
#include "DeviceItemModel.h"
#include "DeviceListView.h"
#include "PasswordWidget.h"
#include "UpdateWorker.h"

#include <QCursor>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

namespace {

constexpr int failureDisplayMs = 2000;

void showMessage(const QString &text)
{
    QMessageBox box;
    box.setText(text);
    box.exec();
}

// A label with one link, which has the keyboard focus whenever the label has it, so that Return opens it. A QLabel takes
// the focus first, hands it to its link with the next tabulator key only, and on the way back does not let it go.
class LinkLabel : public QLabel
{
public:
    explicit LinkLabel(const QString &text) : QLabel(text)
    {
        setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        setFocusPolicy(Qt::TabFocus); // a click leaves the focus where it is
    }

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        QLabel::focusInEvent(event);
        if (!hasSelectedText())
            QLabel::focusNextPrevChild(true);
    }

    // Past the label's own, which goes from link to link and never out of it.
    bool focusNextPrevChild(bool next) override
    {
        return QWidget::focusNextPrevChild(next); // NOLINT(bugprone-parent-virtual-call)
    }
};

} // namespace

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent)
{
    setMinimumSize(600, 400);
    backEnd = std::make_shared<BackEnd>();
    itemModel = new DeviceItemModel(this, backEnd);
    auto *const central = new QWidget(this);
    auto *const layout = new QVBoxLayout(central);
    setCentralWidget(central);
    listView = new DeviceListView(this);
    itemDelegate = new DeviceItemDelegate(this);
    listView->setModel(itemModel);
    listView->setItemDelegate(itemDelegate);
    listView->setSelectionMode(QAbstractItemView::SingleSelection);
    layout->addWidget(listView);
    connectList();
    addFooter(*layout);
    listView->setStyleSheet(
        QStringLiteral("QListView::item:selected{background: %1} QListView::item:hover{background: %2}")
            .arg(QColor(248, 248, 248, 255).name(), QColor(201, 224, 226, 255).name()));
    if (!itemModel->producersFound())
        failToStart();
}

MainWindow::~MainWindow() = default;

void MainWindow::connectList()
{
    // Passes run beside the user's choice: an announcement that has been overtaken must not undo it.
    connect(itemModel, &DeviceItemModel::selectedChanged, listView, [this](const QModelIndex &current) {
        if (current == itemModel->currentIndex())
            listView->setCurrentIndex(current);
    });
    // The delegate first: it hears of a new current row before the model does.
    connect(listView, &DeviceListView::currentIndexChanged, itemDelegate,
            &DeviceItemDelegate::onSelectedChanged);
    connect(listView, &DeviceListView::currentIndexChanged, itemModel, &DeviceItemModel::setCurrentIndex);
    connect(listView, &QAbstractItemView::activated, this, &MainWindow::onCameraActivated);
    followRowCount();
}

// The model has no signals for rows that come and go. After a cut the view would keep its scroll range, blanks at the
// end, and a current row that has gone; a reset would lose the scroll position, the current row and the selection.
void MainWindow::followRowCount()
{
    connect(itemModel->updateWorker(), &UpdateWorker::updateDone, listView, [this, laidOut = 0]() mutable {
        const int rowCount = itemModel->rowCount();
        if (rowCount == std::exchange(laidOut, rowCount))
            return;
        listView->doItemsLayout();
        // The model's own current row is cleared by the pass, which also tells the view.
        if (listView->currentIndex().row() >= rowCount && !itemModel->currentIndex().isValid())
            listView->setCurrentIndex(QModelIndex());
    });
}

void MainWindow::addFooter(QVBoxLayout &layout)
{
    auto *const footer = new QHBoxLayout;
    footer->addWidget(new QLabel); // stays without a text
    footer->addStretch(0);
    footer->addWidget(new QLabel(QStringLiteral("torvane_gui v%1").arg(QStringLiteral("1.0.0.0"))));
    auto *const about = new LinkLabel(QStringLiteral("<a href=\"#aboutQt\">About Qt</a>"));
    about->setObjectName(QStringLiteral("aboutQt"));
    connect(about, &QLabel::linkActivated, this,
            [this] { QMessageBox::aboutQt(this, QStringLiteral("About Qt")); });
    footer->addWidget(about);
    layout.addLayout(footer);
}

void MainWindow::failToStart()
{
    showMessage(
        QStringLiteral("Could not open any CTI. Please make sure that the *.cti file is located in the same "
                       "folder as your application and restart the application."));
    auto *const timer = new QTimer(this);
    timer->start(failureDisplayMs);
    connect(timer, &QTimer::timeout, this, &QWidget::close);
}

void MainWindow::onCurrentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    itemModel->setCurrentIndex(current, previous);
}

void MainWindow::onCameraActivated(const QModelIndex &index)
{
    // A row that has gone, or that is another camera's by now: the view has not heard of it yet.
    if (itemModel->index(index.row(), index.column()) != index)
        return;
    if (!itemModel->data(index, DeviceItemModel::IsPasswordProtectedRole).toBool()) {
        showMessage(QStringLiteral("This camera is not password protected."));
        return;
    }
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    itemModel->switchCurrentIndex(index);
    const bool hasCamera = itemModel->openCurrentDevice();
    auto *const panel = new PasswordWidget(this, backEnd);
    if (hasCamera)
        itemModel->setOpenFor(panel);
    connect(panel, &PasswordWidget::lockChanged, itemModel, &DeviceItemModel::onCurrentLockChanged);
    connect(panel, &PasswordWidget::closed, itemModel, &DeviceItemModel::closeCurrentDevice);
    connect(itemModel, &DeviceItemModel::currentDeviceRemoved, panel,
            &PasswordWidget::onCurrentDeviceRemoved);
    QGuiApplication::restoreOverrideCursor();
    panel->show();
}
