// SPDX-License-Identifier: MIT
// One password field: its rules, when it applies them, what it tells its owner, and its looks.
#include "PasswordControl.h"

#include "PanelParts.h"

#include <QAction>
#include <QSignalSpy>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <map>

// Applies a text like "compare compare=secret limits=3-6" to a field, word by word.
static void apply(PasswordControl &field, const QString &words)
{
    using Step = std::function<void(PasswordControl &, const QString &)>;
    static const std::map<QString, Step> steps{
        {"compare", [](auto &to, const auto &) { to.setCompareEnabled(true); }},
        {"compare=", [](auto &to, const auto &text) { to.setComparePasswordString(text); }},
        {"compareMessage=", [](auto &to, const auto &text) { to.setCompareMessage(text); }},
        {"exclude", [](auto &to, const auto &) { to.setExcludeEnabled(true); }},
        {"exclude=", [](auto &to, const auto &text) { to.setExcludePasswordString(text); }},
        {"excludeMessage=", [](auto &to, const auto &text) { to.setExcludeMessage(text); }},
        {"anyLength", [](auto &to, const auto &) { to.setCheckLength(false); }},
        {"minimum=", [](auto &to, const auto &text) { to.setLengthLimits(text.toULongLong(), 5000000000); }},
        {"maximum=", [](auto &to, const auto &text) { to.setLengthLimits(3, text.toULongLong()); }},
        {"used", [](auto &to, const auto &) { to.setCheckUsed(true); }},
        {"used=", [](auto &to, const auto &text) { to.addUsedPassword(text.toStdString()); }},
        {"onlyUsed=", [](auto &to, const auto &text) { to.setUsedPasswords({text.toStdString()}); }},
        {"forgetUsed", [](auto &to, const auto &) { to.clearUsedPasswords(); }},
        {"error=", [](auto &to, const auto &text) { to.setErrorText(text); }},
        {"valid", [](auto &to, const auto &) { to.setValid(true); }},
        {"clear", [](auto &to, const auto &) { to.clear(); }}};
    for (const QString &word : words.split(' ', Qt::SkipEmptyParts)) {
        const int name = word.indexOf('=') + 1;
        steps.at(name ? word.left(name) : word)(field, word.mid(name));
    }
}

class PasswordControlTest : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void fontSetInPixels();
    void verdict_data();
    void verdict();
    void verifiesAgain_data();
    void verifiesAgain();
    void tellsItsOwner();
    void looks_data();
    void looks();
    void eye();
};

void PasswordControlTest::construction()
{
    QWidget parent;
    parent.setFont(QFont("Sans", 11));
    const PasswordControl field(&parent);
    const FieldParts parts(&field);
    QVERIFY(parts.caption && parts.edit && parts.underline && parts.error);
    QCOMPARE(field.layout()->spacing(), 4);
    QCOMPARE(field.layout()->contentsMargins(), QMargins());
    QCOMPARE(parts.edit->styleSheet(), QString("QLineEdit { background-color: white; border: 1px white }"));
    QCOMPARE(parts.edit->minimumHeight(), 17);
    QCOMPARE(parts.caption->font().pointSizeF(), 9.35);
    QCOMPARE(parts.error->font(), parts.caption->font());
    QCOMPARE(parts.underline->frameStyle(), 20);
    QCOMPARE(parts.underline->styleSheet(), QString("QFrame {color: black}"));
}

// There is no point size to scale then. Qt says so, and the field is there all the same.
void PasswordControlTest::fontSetInPixels()
{
    QWidget parent;
    QFont font = parent.font();
    font.setPixelSize(15);
    parent.setFont(font);
    QTest::ignoreMessage(QtWarningMsg,
                         "QFont::setPointSizeF: Point size <= 0 (-0.850000), must be greater than 0");
    QTest::ignoreMessage(QtWarningMsg,
                         "QWidget::setMinimumSize: (/QLineEdit) Negative sizes (0,-1) are not possible");
    const PasswordControl field(&parent);
    QCOMPARE(FieldParts(&field).error->font().pixelSize(), 15);
    QCOMPARE(FieldParts(&field).edit->minimumHeight(), 0);
}

void PasswordControlTest::verdict_data()
{
    QTest::addColumn<QString>("rules");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    const QString all = "compare=y exclude exclude=x maximum=6 used used=first used=\u00e4\u00f6\u00fc ";
    const QString match = "Passwords must match!";
    const QString differ = "New password must be different!";
    const QString tooShort = "Your password is to short. (min 3 characters)";
    const QString tooLong = "Your password is too long. (max 6 characters)";
    const QString tooShort64 = "Your password is to short. (min 4294967298 characters)";
    const QString used = "This password has been used before.";
    const struct
    {
        const char *name;
        QString rules, text, message;
    } rows[] = {
        {"default: one character", "", "x", ""},
        {"default: empty", "", "", ""},
        {"compare: differs", "compare compare=secret", "secreT", match},
        {"compare: equal", "compare compare=secret", "secret", ""},
        {"compare: with nothing", "compare", "x", ""},
        {"compare: off", "compare=secret", "x", ""},
        {"compare: own words", "compare compare=y compareMessage=No!", "x", "No!"},
        {"exclude: equal", "exclude exclude=secret", "secret", differ},
        {"exclude: differs", "exclude exclude=secret", "secret1", ""},
        {"exclude: off", "exclude=secret", "secret", ""},
        {"exclude: own words", "exclude exclude=x excludeMessage=No!", "x", "No!"},
        {"length: below", "minimum=3", "ab", tooShort},
        {"length: minimum", "minimum=3", "abc", ""},
        {"length: maximum, in characters", "maximum=6", "\u00e4bcd\u00f6\u00fc", ""},
        {"length: above", "maximum=6", "abcdefg", tooLong},
        {"length: off", "minimum=3 anyLength", "ab", ""},
        {"length: limits of 64 bits", "minimum=4294967298", "abc", tooShort64},
        {"used: first", all, "first", used},
        {"used: last, in UTF-8", all, "\u00e4\u00f6\u00fc", used},
        {"used: new", all, "other", ""},
        {"used: off", "used=first", "first", ""},
        {"empty before the others", all + "compare exclude=", "", ""},
        {"compare before exclude", all + "compare", "x", match},
        {"exclude before length", all, "x", differ},
        {"length before used", all + "used=ab", "ab", tooShort},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.rules << row.text << row.message;
}

// Valid is what nothing complains of, but for an empty text.
void PasswordControlTest::verdict()
{
    QFETCH(QString, rules);
    QFETCH(QString, text);
    QFETCH(QString, message);
    PasswordControl field;
    apply(field, rules);
    FieldParts(&field).type("another text");
    FieldParts(&field).type(text);
    QCOMPARE(field.errorText(), message);
    QCOMPARE(field.isValid(), message.isEmpty() && !text.isEmpty());
}

void PasswordControlTest::verifiesAgain_data()
{
    QTest::addColumn<QString>("rules");
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("before");
    QTest::addColumn<QVariantList>("told");
    const struct
    {
        const char *name, *rules, *action;
        bool before;
        QVariantList told;
    } rows[] = {
        {"compare string", "compare compare=secret", "compare=other", true, {false}},
        {"compare string, rule off", "", "compare=other", true, {}},
        {"exclude string", "exclude", "exclude=secret", true, {false}},
        {"exclude string, rule off", "", "exclude=secret", true, {}},
        {"used password", "used", "used=secret", true, {false}},
        {"used password, rule off", "", "used=secret", true, {}},
        {"used ones replaced", "used used=secret", "onlyUsed=b", false, {true}},
        {"used ones replaced, rule off", "", "onlyUsed=secret", true, {}},
        {"forgetting used ones waits", "used used=secret", "forgetUsed", false, {}},
        {"used ones forgotten", "used used=secret", "forgetUsed used=b", false, {true}},
        {"limits wait", "", "minimum=9", true, {}},
        {"length rule waits", "minimum=9", "anyLength", false, {}},
        {"other rules wait", "compare=y exclude=secret used=secret", "compare exclude used", true, {}},
        {"told valid", "minimum=9", "valid valid", false, {true}},
        {"clear", "", "error=left clear clear", true, {false}},
        {"clear while not valid", "minimum=9", "clear", false, {}},
        {"clear while told valid", "minimum=9", "clear valid error=left clear", false, {true, false}},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << QString(row.rules) << QString(row.action) << row.before << row.told;
}

void PasswordControlTest::verifiesAgain()
{
    QFETCH(QString, rules);
    QFETCH(QString, action);
    QFETCH(bool, before);
    QFETCH(QVariantList, told);
    PasswordControl field;
    apply(field, rules);
    FieldParts(&field).type("secret");
    QCOMPARE(field.isValid(), before);
    QVariantList heard;
    connect(&field, &PasswordControl::passwordValidChanged, [&heard](bool valid) { heard.append(valid); });
    apply(field, action);
    QCOMPARE(heard, told);
    QCOMPARE(field.isValid(), told.isEmpty() ? before : told.last().toBool());
    QVERIFY(!action.endsWith("clear") || (field.errorText() + field.text()).isEmpty());
}

void PasswordControlTest::tellsItsOwner()
{
    PasswordControl field;
    const QSignalSpy textChanged(&field, &PasswordControl::textChanged);
    const QSignalSpy returnPressed(&field, &PasswordControl::returnPressed);
    const QSignalSpy editingFinished(&field, &PasswordControl::editingFinished);
    const QSignalSpy validChanged(&field, &PasswordControl::passwordValidChanged);
    QTest::keyClicks(FieldParts(&field).edit, "abc");
    QCOMPARE(textChanged.count(), 3);
    QCOMPARE(textChanged.last(), QVariantList{"abc"});
    QCOMPARE(validChanged.count(), 1);
    QTest::keyClick(FieldParts(&field).edit, Qt::Key_Return);
    QCOMPARE(returnPressed.count(), 1);
    QCOMPARE(editingFinished.count(), 1);
    QCOMPARE(editingFinished.last(), QVariantList{"abc"});
}

void PasswordControlTest::looks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("focused");
    QTest::addColumn<QString>("color");
    QTest::addColumn<bool>("captionAbove");
    QTest::newRow("empty") << "" << false << "black" << false;
    QTest::newRow("empty, focused") << "" << true << "#008a96" << true;
    QTest::newRow("valid") << "secret" << false << "black" << true;
    QTest::newRow("valid, focused") << "secret" << true << "#008a96" << true;
    QTest::newRow("invalid") << "ab" << false << "#c40f00" << true;
    QTest::newRow("invalid, focused") << "ab" << true << "#c40f00" << true;
}

// Each look is reached from another one, by real keys and a real change of the focus; then without them.
void PasswordControlTest::looks()
{
    QFETCH(QString, text);
    QFETCH(bool, focused);
    QFETCH(QString, color);
    QFETCH(bool, captionAbove);
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
        QCOMPARE(parts.underline->styleSheet(), QString("QFrame {color: %1}").arg(color));
        QCOMPARE(parts.error->styleSheet(), QString("QLabel {color: %1}").arg(color));
        QCOMPARE(parts.caption->styleSheet(), QString("QLabel {color: %1}").arg(color));
        QCOMPARE(field.captionText(), QString(captionAbove ? "Name" : ""));
        QCOMPARE(parts.edit->placeholderText(), QString(captionAbove ? "" : "Name"));
        const QImage line = parts.underline->grab().toImage();
        QCOMPARE(line.pixelColor(line.rect().center()), QColor(color));
    };
    QTest::mouseClick(parts.edit, Qt::LeftButton);
    parts.type("x");
    parts.type(text);
    if (!focused)
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
