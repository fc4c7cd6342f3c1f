// SPDX-License-Identifier: MIT
// The list over simulated cameras as these tests have it: passes come when a test asks for one, not once a second, and
// what the model emits is written down in order. Message boxes are answered and kept.
#pragma once

#include "BackEnd.h"
#include "DeviceItemModel.h"
#include "Environment.h"
#include "Simulator.h"
#include "UpdateWorker.h"

#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QSemaphore>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The rows of a test, each a name and then the texts of the \p columns, of which the last ones may be missing.
inline void addRows(const std::vector<const char *> &columns,
                    const std::vector<std::vector<const char *>> &rows)
{
    for (const char *column : columns)
        QTest::addColumn<QString>(column);
    for (const auto &row : rows) {
        QTestData &data = QTest::newRow(row.front());
        for (std::size_t place = 1; place <= columns.size(); ++place)
            data << QString(place < row.size() ? row[place] : "");
    }
}

/// A configuration of cameras: "A B,lock=none / C" has A and B on one interface, and C on a second one. Of "//C" there
/// is the third interface alone.
inline std::string cameras(const QString &plan)
{
    static const QRegularExpression text("=(?!\\d+$)(.*)");
    QString toml;
    const QStringList interfaces = plan.split('/');
    for (int number = 0; number < interfaces.size(); ++number) {
        if (!interfaces[number].isEmpty())
            toml += QString("[[interface]]\nid = \"eth%1\"\n").arg(number);
        for (const QString &camera : interfaces[number].split(' ', Qt::SkipEmptyParts)) {
            toml += "[[interface.camera]]\n";
            for (QString &setting : ("id=" + camera).split(','))
                toml += setting.replace(text, "=\"\\1\"") + '\n';
        }
    }
    return toml.toStdString();
}

/// The simulated producer, found by the search of the back end, and one model over it.
class CameraList
{
public:
    explicit CameraList(const std::string &toml)
        : simulator(toml),
          path("GENICAM_GENTL64_PATH", std::filesystem::path(Simulator::cti()).parent_path().string())
    {
        // The current directory is searched too: it is one without a producer.
        std::filesystem::current_path(simulator.folder());
    }

    /// A whole pass, until the GUI thread has announced it; over other cameras, if there is a \p plan of them.
    void pass(const std::optional<QString> &plan = {})
    {
        plug(plan);
        QEventLoop announced;
        QObject::connect(model->updateWorker(), &UpdateWorker::updateDone, &announced, &QEventLoop::quit);
        tick();
        announced.exec();
    }

    /// The same, of which the GUI thread has not heard yet.
    void passUnheard(const std::optional<QString> &plan = {})
    {
        plug(plan);
        QSemaphore done;
        const auto connection = QObject::connect(
            model->updateWorker(), &UpdateWorker::updateDone, model->updateWorker(), [&] { done.release(); },
            Qt::DirectConnection);
        tick();
        done.acquire();
        QObject::disconnect(connection);
    }

    /// What the model has emitted since the last call, such as "dataChanged 0..1, selectedChanged 0 from -".
    QString takeEmitted() { return std::exchange(emitted, {}).join(", "); }

    QModelIndex row(int position) const { return model->index(position, 0); }
    QVariant value(int position, int role) const { return row(position).data(role); }

    /// The cameras of the rows by their serial numbers, which are their identifiers.
    QString shown() const
    {
        QStringList serials;
        for (int position = 0; position < model->rowCount(); ++position)
            serials << value(position, DeviceItemModel::SerialNumberRole).toString();
        return serials.join(' ');
    }

    Simulator simulator;
    Environment path;
    DeviceItemModel *model = nullptr;
    QStringList emitted;

protected:
    void follow(DeviceItemModel *followed)
    {
        model = followed;
        timer = model->findChild<QTimer *>();
        timer->stop();
        const auto place = [](const QModelIndex &index) {
            return index.isValid() ? QString::number(index.row()) : QString("-");
        };
        const auto listen = [this](auto signal, auto text) {
            QObject::connect(model, signal, &listener,
                             [=, this](const auto &...values) { emitted << text(values...); });
        };
        listen(&DeviceItemModel::dataChanged, [place](auto &first, auto &last, const QVector<int> &roles) {
            QString text = QString("dataChanged %1..%2").arg(place(first), place(last));
            for (const int role : roles)
                text += QString(" role %1").arg(role);
            return text;
        });
        listen(&DeviceItemModel::selectedChanged, [place](auto &current, auto &previous) {
            return QString("selectedChanged %1 from %2").arg(place(current), place(previous));
        });
        listen(&DeviceItemModel::currentLockChanged,
               [](bool lock) { return QString("currentLockChanged %1").arg(lock); });
        listen(&DeviceItemModel::currentDeviceRemoved, [] { return QString("currentDeviceRemoved"); });
    }

private:
    void plug(const std::optional<QString> &plan)
    {
        if (plan)
            simulator.configure(cameras(*plan));
    }

    /// One tick of the clock, which sends the worker into a pass.
    void tick() const { QMetaObject::invokeMethod(timer, "timeout"); }

    QTimer *timer = nullptr;
    QObject listener; // on the GUI thread, to which emissions of the update thread are queued
};

/// A model alone.
struct ModelList : CameraList
{
    explicit ModelList(const QString &plan) : CameraList(cameras(plan))
    {
        follow(&deviceModel);
        pass();
        takeEmitted();
    }

    std::shared_ptr<BackEnd> backEnd = std::make_shared<BackEnd>();
    DeviceItemModel deviceModel{nullptr, backEnd};
};

/// Answers each message box as soon as it is seen, and keeps what it showed.
class MessageBoxes : public QObject
{
public:
    MessageBoxes() { startTimer(5); }

    /// Their texts, and what else they have: "informative text", "icon 1", "CANCEL" by default. Of those of a parent:
    /// title and class of the parent.
    QStringList taken() { return std::exchange(texts, {}); }

    QMessageBox::StandardButton answer = QMessageBox::Ok;

protected:
    void timerEvent(QTimerEvent *) override
    {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        QStringList parts{box->text()};
        if (!box->informativeText().isEmpty())
            parts << box->informativeText();
        if (box->icon() != QMessageBox::NoIcon)
            parts << QString("icon %1").arg(box->icon());
        if (QPushButton *const cancel = qobject_cast<QPushButton *>(box->button(QMessageBox::Cancel)))
            parts << (box->defaultButton() == cancel ? "CANCEL" : "Cancel");
        if (box->parent())
            parts = QStringList{box->windowTitle(), "of", box->parent()->metaObject()->className()};
        texts << parts.join(' ');
        QTest::mouseClick(box->button(answer), Qt::LeftButton);
    }

private:
    QStringList texts;
};
