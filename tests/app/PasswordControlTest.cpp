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
        {"exclude", [](auto &to, const auto &) { to.setExcludeEnabled(true); }},
        {"exclude=", [](auto &to, const auto &text) { to.setExcludePasswordString(text); }},
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
    void rules_data();
    void rules();
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

// The complaint of the text, then what is told when something else than the text changes.
void PasswordControlTest::rules_data()
{
    QTest::addColumn<QString>("rules");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QString>("then");
    QTest::addColumn<QVariantList>("told");
    const char *const all =
        "compare=y exclude exclude=x maximum=6 used used=first used=\u00e4\u00f6 used=ab ";
    const char *const differ = "New password must be different!";
    const char *const match = "Passwords must match!";
    const char *const tooShort = "Your password is to short. (min 3 characters)";
    const char *const tooShort64 = "Your password is to short. (min 4294967298 characters)";
    const char *const tooLong = "Your password is too long. (max 6 characters)";
    const char *const used = "This password has been used before.";
    const struct
    {
        const char *name, *rules, *text, *error = "", *then = "";
        QVariantList told = {};
    } rows[] = {
        {"default: one character", "", "x"},
        {"default: empty", "", ""},
        {"compare: differs", "compare compare=secret", "secreT", match},
        {"compare: equal, then not", "compare compare=secret", "secret", "", "compare=other", {false}},
        {"compare: with nothing", "compare", "x"},
        {"compare: off", "compare=secret", "x", "", "compare=other"},
        {"exclude: equal", "exclude exclude=secret", "secret", differ},
        {"exclude: differs, then not", "exclude exclude=secret", "secret1", "", "exclude=secret1", {false}},
        {"exclude: off", "exclude=secret", "secret", "", "exclude=secret"},
        {"length: below, rule waits", "minimum=3", "ab", tooShort, "anyLength"},
        {"length: minimum, limits wait", "minimum=3", "abc", "", "minimum=4"},
        {"length: maximum, in characters", "maximum=6", "\u00e4bcd\u00f6\u00fc"},
        {"length: above", "maximum=6", "abcdefg", tooLong},
        {"length: limits of 64 bits", "minimum=4294967298", "abc", tooShort64},
        {"length: off", "minimum=3 anyLength", "ab"},
        {"used: first", "used used=first used=b", "first", used, "onlyUsed=b", {true}},
        {"used: last, forgetting waits", "used used=a used=\u00e4", "\u00e4", used, "forgetUsed"},
        {"used: forgotten", "used used=a", "a", used, "forgetUsed used=b", {true}},
        {"used: new, then not", "used used=first", "other", "", "used=other", {false}},
        {"used: new, then replaced", "used used=first", "other", "", "onlyUsed=other", {false}},
        {"used: off", "used=first", "first", "", "used=first onlyUsed=first"},
        {"empty before the others", "compare compare=y exclude minimum=3", ""},
        {"compare before exclude", "compare compare=y exclude exclude=x", "x", match},
        {"exclude before length", all, "x", differ},
        {"length before used", all, "ab", tooShort},
        {"rules wait", "compare=y exclude=x used=x", "x", "", "compare exclude used"},
        {"told valid", "minimum=3", "x", tooShort, "valid valid", {true}},
        {"clear", "", "x", "", "error=left clear clear", {false}},
        {"clear while not valid", "minimum=3", "ab", tooShort, "clear"},
        {"clear while told valid", "", "", "", "valid error=left clear", {true, false}},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << QString(row.rules) << QString(row.text) << QString(row.error)
                                << QString(row.then) << row.told;
}

void PasswordControlTest::rules()
{
    QFETCH(QString, rules);
    QFETCH(QString, text);
    QFETCH(QString, error);
    QFETCH(QString, then);
    QFETCH(QVariantList, told);
    PasswordControl field;
    apply(field, rules);
    FieldParts(&field).type("another text");
    FieldParts(&field).type(text);
    QCOMPARE(field.errorText(), error);
    const bool isValid = error.isEmpty() && !text.isEmpty();
    QCOMPARE(field.isValid(), isValid);

    QVariantList heard;
    connect(&field, &PasswordControl::passwordValidChanged, [&heard](bool valid) { heard.append(valid); });
    apply(field, then);
    QCOMPARE(heard, told);
    QCOMPARE(field.isValid(), told.isEmpty() ? isValid : told.last().toBool());
    QVERIFY(!then.endsWith("clear") || (field.errorText() + field.text()).isEmpty());
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
