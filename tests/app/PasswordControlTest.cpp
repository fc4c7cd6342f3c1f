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
#include <functional>
#include <map>

// Applies a text like "compare compare=secret minimum=3" to a field, word by word.
static void apply(PasswordControl &field, const QString &words)
{
    using Step = std::function<void(PasswordControl &, const QString &)>;
    static const std::map<QString, Step> steps{
        {"compare", [](auto &to, auto &) { to.setCompareEnabled(true); }},
        {"compare=", [](auto &to, auto &text) { to.setComparePasswordString(text); }},
        {"exclude", [](auto &to, auto &) { to.setExcludeEnabled(true); }},
        {"exclude=", [](auto &to, auto &text) { to.setExcludePasswordString(text); }},
        {"anyLength", [](auto &to, auto &) { to.setCheckLength(false); }},
        {"minimum=", [](auto &to, auto &text) { to.setLengthLimits(text.toULongLong(), 5000000000); }},
        {"maximum=", [](auto &to, auto &text) { to.setLengthLimits(3, text.toULongLong()); }},
        {"used", [](auto &to, auto &) { to.setCheckUsed(true); }},
        {"used=", [](auto &to, auto &text) { to.addUsedPassword(text.toStdString()); }},
        {"onlyUsed=", [](auto &to, auto &text) { to.setUsedPasswords({text.toStdString()}); }},
        {"forgetUsed", [](auto &to, auto &) { to.clearUsedPasswords(); }},
        {"valid", [](auto &to, auto &) { to.setValid(true); }},
        {"clear", [](auto &to, auto &) { to.clear(); }}};
    for (const QString &word : words.split(' ', Qt::SkipEmptyParts)) {
        const int name = word.indexOf('=') + 1;
        steps.at(name ? word.left(name) : word)(field, word.mid(name));
    }
}

class PasswordControlTest : public QObject
{
    Q_OBJECT

private slots:
    void rules_data();
    void rules();
    void editingFinished();
    void oneLine();
    void looks_data();
    void looks();
    void eye();
};

// The complaint of the text, then what is told when something else than the text changes.
void PasswordControlTest::rules_data()
{
    const char *const differ = "New password must be different!";
    const char *const match = "Passwords must match!";
    const char *const tooShort = "Your password is to short. (min 3 characters)";
    const char *const tooShort64 = "Your password is to short. (min 4294967298 characters)";
    const char *const tooLong = "Your password is too long. (max 6 characters)";
    const char *const used = "This password has been used before.";
    addRows({"rules", "text", "error", "then", "told"},
            {{"compare: equal, then not", "compare compare=secret", "secret", "", "compare=other", "0"},
             {"compare: with nothing", "compare", "x"},
             {"exclude: differs, then not", "exclude exclude=secret", "secret1", "", "exclude=secret1", "0"},
             {"length: below, rule waits", "minimum=3", "ab", tooShort, "anyLength"},
             {"length: minimum, limits wait", "minimum=3", "abc", "", "minimum=4"},
             {"length: maximum, in characters", "maximum=6", "\u00e4bcd\u00f6\u00fc"},
             {"length: above", "maximum=6", "abcdefg", tooLong},
             {"length: limits of 64 bits", "minimum=4294967298", "abc", tooShort64},
             {"length: off", "minimum=3 anyLength", "ab"},
             {"used: first, then not", "used used=first used=b", "first", used, "onlyUsed=b", "1"},
             {"used: last, forgetting waits", "used used=a used=\u00e4", "\u00e4", used, "forgetUsed"},
             {"used: new, then not", "used used=first", "other", "", "used=other", "0"},
             {"empty before the others", "compare compare=y exclude minimum=3", ""},
             {"compare before exclude", "compare compare=y exclude exclude=x", "x", match},
             {"exclude before length", "exclude exclude=x minimum=3", "x", differ},
             {"length before used", "minimum=3 used used=ab", "ab", tooShort},
             {"rules wait", "compare=y exclude=x used=x", "x", "", "compare exclude used"},
             {"told valid", "minimum=3", "x", tooShort, "valid valid", "1"},
             {"clear", "", "x", "", "clear clear", "0"},
             {"clear while told valid", "minimum=3", "ab", tooShort, "valid clear", "1 0"}});
}

void PasswordControlTest::rules()
{
    QFETCH(QString, rules);
    QFETCH(QString, text);
    QFETCH(QString, error);
    QFETCH(QString, then);
    PasswordControl field;
    apply(field, rules);
    FieldParts(&field).type("another text");
    FieldParts(&field).type(text);
    QTEST(field.errorText(), "error");
    QCOMPARE(field.isValid(), error.isEmpty() && !text.isEmpty());

    QStringList told(field.isValid() ? "1" : "0");
    connect(&field, &PasswordControl::passwordValidChanged,
            [&told](bool valid) { told << QString::number(valid); });
    apply(field, then);
    QCOMPARE(told.last(), QString::number(field.isValid()));
    QTEST(told.mid(1).join(' '), "told");
    QVERIFY(!then.endsWith("clear") || (field.errorText() + field.text()).isEmpty());
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

void PasswordControlTest::looks_data()
{
    addRows({"text", "focus", "color", "caption", "placeholder"},
            {{"empty", "", "", "black", "", "Name"},
             {"empty, focused", "", "yes", "#008a96", "Name"},
             {"valid", "secret", "", "black", "Name"},
             {"valid, focused", "secret", "yes", "#008a96", "Name"},
             {"invalid", "ab", "", "#c40f00", "Name"},
             {"invalid, focused", "ab", "yes", "#c40f00", "Name"}});
}

// Each look is reached from another one, by real keys and a real change of the focus; then without them.
void PasswordControlTest::looks()
{
    QFETCH(QString, text);
    QFETCH(QString, focus);
    QFETCH(QString, color);
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
    const auto look = [&] {
        QCOMPARE(parts.caption->styleSheet(), QString("QLabel {color: %1}").arg(color));
        QTEST(field.captionText(), "caption");
        QTEST(parts.edit->placeholderText(), "placeholder");
        const QImage line = parts.underline->grab().toImage();
        QCOMPARE(line.pixelColor(line.rect().center()), QColor(color));
    };
    QTest::mouseClick(parts.edit, Qt::LeftButton);
    parts.type("x");
    parts.type(text);
    if (focus.isEmpty())
        QTest::mouseClick(&other, Qt::LeftButton);
    look();
    field.clear();
    field.setText(text);
    look();
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
