// SPDX-License-Identifier: MIT
// One password field: its rules, when it applies them, what it tells its owner, and its looks.
#include "PasswordControl.h"

#include "AppFixture.h"
#include "PanelParts.h"

#include <QAction>
#include <QClipboard>
#include <QSignalSpy>
#include <QToolButton>
#include <QVBoxLayout>

class PasswordControlTest : public QObject
{
    Q_OBJECT

private slots:
    void rules();
    void lengths();
    void told();
    void editingFinished();
    void oneLine();
    void looks();
    void eye();
};

// What the field says of a text that replaces another one.
static QString verdictOn(const QString &text, const PasswordControl &field)
{
    FieldParts(&field).type("another text");
    FieldParts(&field).type(text);
    return field.isValid() ? "valid" + field.errorText() : field.errorText();
}

// The first one that is broken counts. Those that are switched wait for another text.
void PasswordControlTest::rules()
{
    const QString text = "\u00e4";
    PasswordControl field;
    field.setCompareEnabled(true); // with nothing
    QCOMPARE(verdictOn(text, field), QString("valid"));
    field.setComparePasswordString("other");
    field.setExcludeEnabled(true);
    field.setExcludePasswordString(text);
    field.setLengthLimits(3, 6);
    field.setCheckUsed(true);
    field.setUsedPasswords({"other"});
    field.addUsedPassword(text.toStdString());
    QCOMPARE(verdictOn("", field), QString());
    QCOMPARE(verdictOn(text, field), QString("Passwords must match!"));
    field.setCompareEnabled(false);
    QCOMPARE(field.errorText(), QString("Passwords must match!"));
    QCOMPARE(verdictOn(text, field), QString("New password must be different!"));
    field.setExcludeEnabled(false);
    QCOMPARE(verdictOn(text, field), QString("Your password is to short. (min 3 characters)"));
    field.setCheckLength(false);
    QCOMPARE(verdictOn(text, field), QString("This password has been used before."));
    field.clearUsedPasswords();
    QCOMPARE(field.errorText(), QString("This password has been used before."));
    QCOMPARE(verdictOn(text, field), QString("valid"));
}

// In characters.
void PasswordControlTest::lengths()
{
    PasswordControl field;
    field.setLengthLimits(3, 6);
    QCOMPARE(verdictOn("abc", field), QString("valid"));
    QCOMPARE(verdictOn("\u00e4bcd\u00f6\u00fc", field), QString("valid"));
    QCOMPARE(verdictOn("abcdefg", field), QString("Your password is too long. (max 6 characters)"));
    field.setLengthLimits(4294967298, 5000000000);
    QCOMPARE(verdictOn("abc", field), QString("Your password is to short. (min 4294967298 characters)"));
}

// At each change of the verdict, by whatever.
void PasswordControlTest::told()
{
    PasswordControl field;
    QString told;
    connect(&field, &PasswordControl::passwordValidChanged, [&](bool valid) { told += valid ? '1' : '0'; });
    field.setText("secret");
    field.setCompareEnabled(true);
    field.setComparePasswordString("other");
    field.setComparePasswordString("secret");
    field.setExcludeEnabled(true);
    field.setExcludePasswordString("secret");
    field.setExcludePasswordString("other");
    field.setCheckUsed(true);
    field.addUsedPassword("secret");
    field.setUsedPasswords({"other"});
    field.setUsedPasswords({"secret"});
    for (int time = 0; time < 2; ++time)
        field.setValid(true);
    for (int time = 0; time < 2; ++time)
        field.clear();
    QCOMPARE(told, QString("1010101010"));
    QCOMPARE(field.text() + field.errorText(), QString());
}

// Nobody listens to it; the panel's tests need the other signals.
void PasswordControlTest::editingFinished()
{
    PasswordControl field;
    const QSignalSpy finished(&field, &PasswordControl::editingFinished);
    QTest::keyClicks(FieldParts(&field).edit, "abc");
    QVERIFY(finished.isEmpty());
    QTest::keyClick(FieldParts(&field).edit, Qt::Key_Return);
    QCOMPARE(finished.value(0), QVariantList{"abc"});
}

// However a text comes into the field, between "x" and "yz": it ends at its first line end, and nothing else goes.
void PasswordControlTest::oneLine()
{
    const std::vector<std::pair<QString, QString>> rows{
        {"ab\tc", "xab\tcyz"}, {"ab\rcd\n", "xabyz"}, {"ab\u2028cd", "xabyz"}, {"\nab", "xyz"}};
    for (const auto &[pasted, text] : rows) {
        PasswordControl field;
        const QSignalSpy told(&field, &PasswordControl::textChanged);
        field.setText("xyz");
        FieldParts(&field).edit->setCursorPosition(1);
        QGuiApplication::clipboard()->setText(pasted);
        FieldParts(&field).edit->paste();
        QCOMPARE(field.text(), text);
        QCOMPARE(told.last(), QVariantList{text});
    }
    PasswordControl field;
    for (const QString &end : {QString("\n"), QString(QChar::Null)}) {
        field.setText("ab" + end + "cd");
        QCOMPARE(field.text(), QString("ab"));
    }
}

// Each look is reached from another one, by real keys and a real change of the focus; then without them.
void PasswordControlTest::looks()
{
    QWidget window;
    QVBoxLayout layout(&window);
    PasswordControl field;
    QLineEdit other;
    layout.addWidget(&other);
    layout.addWidget(&field);
    field.setLengthLimits(3, 6);
    field.setCaption("Name");
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const FieldParts parts(&field);
    const auto expect = [&](const QString &text, bool hasFocus) {
        const QString color = text == "ab" ? "#c40f00" : hasFocus ? "#008a96" : "black";
        const bool isInside = text.isEmpty() && !hasFocus;
        QCOMPARE(parts.caption->styleSheet(), QString("QLabel {color: %1}").arg(color));
        QCOMPARE(field.captionText(), QString(isInside ? "" : "Name"));
        QCOMPARE(parts.edit->placeholderText(), QString(isInside ? "Name" : ""));
        const QImage line = parts.underline->grab().toImage();
        QCOMPARE(line.pixelColor(line.rect().center()), QColor(color));
    };
    for (const char *const text : {"", "secret", "ab"}) {
        for (const bool hasFocus : {true, false}) {
            QTest::mouseClick(parts.edit, Qt::LeftButton);
            parts.type("x");
            parts.type(text);
            if (!hasFocus)
                QTest::mouseClick(&other, Qt::LeftButton);
            expect(text, hasFocus);
            field.clear();
            field.setText(text);
            expect(text, hasFocus);
        }
    }
}

void PasswordControlTest::eye()
{
    PasswordControl field;
    const QLineEdit *edit = FieldParts(&field).edit;
    field.show();
    const auto see = [edit](const QString &text, const QString &icon, QLineEdit::EchoMode mode) {
        QCOMPARE(edit->echoMode(), mode);
        QCOMPARE(edit->actions().count(), 1);
        QCOMPARE(edit->actions().first()->text(), text);
        QVERIFY(!QPixmap(icon).isNull());
        QCOMPARE(edit->actions().first()->icon().pixmap(24).toImage(), QPixmap(icon).toImage());
    };
    see("Show plain text", ":/icons/eye.png", QLineEdit::Password);
    QTest::mouseClick(edit->findChild<QToolButton *>(), Qt::LeftButton);
    see("Hide plain text", ":/icons/eye-off.png", QLineEdit::Normal);
    field.clear();
    see("Hide plain text", ":/icons/eye-off.png", QLineEdit::Normal);
    QTest::mouseClick(edit->findChild<QToolButton *>(), Qt::LeftButton);
    see("Show plain text", ":/icons/eye.png", QLineEdit::Password);
}

QTEST_MAIN(PasswordControlTest)
#include "PasswordControlTest.moc"
