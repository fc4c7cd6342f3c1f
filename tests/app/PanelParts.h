// SPDX-License-Identifier: MIT
// The widgets of the panel and of its fields as a user sees them: by their places from the top.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

/// The widget of type \p T at \p place of the layout of \p parent; null if another one stands there.
template <class T>
T *partOf(const QWidget *parent, int place)
{
    QLayoutItem *item = parent->layout()->itemAt(place);
    return item ? qobject_cast<T *>(item->widget()) : nullptr;
}

/// The button of that label which is shown on the \p panel; null if there is none.
inline QPushButton *shownButton(const QWidget *panel, const QString &label)
{
    for (QPushButton *button : panel->findChildren<QPushButton *>())
        if (button->text() == label && button->isVisible())
            return button;
    return nullptr;
}

/// One PasswordControl.
struct FieldParts
{
    explicit FieldParts(const QWidget *control)
        : caption(partOf<QLabel>(control, 0)),
          edit(partOf<QLineEdit>(control, 1)),
          underline(partOf<QFrame>(control, 2)),
          error(partOf<QLabel>(control, 3))
    {}

    /// Replaces the text, key by key.
    void type(const QString &text) const
    {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        for (const QChar character : text)
            QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(character), Qt::NoModifier);
    }

    QLabel *caption;
    QLineEdit *edit;
    QFrame *underline;
    QLabel *error;
};
