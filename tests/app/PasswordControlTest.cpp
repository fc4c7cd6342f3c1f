// SPDX-License-Identifier: MIT
// One password field: its rules, when it applies them, what it tells its owner, and its looks.
#include "PasswordControl.h"

#include "PanelParts.h"

#include <QAction>
#include <QApplication>
#include <QSignalSpy>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>

using Setup = std::function<void(PasswordControl &)>;
Q_DECLARE_METATYPE(Setup)

namespace {

void compareWithSecret(PasswordControl &field)
{
    field.setCompareEnabled(true);
    field.setComparePasswordString("secret");
}

void excludeSecret(PasswordControl &field)
{
    field.setExcludeEnabled(true);
    field.setExcludePasswordString("secret");
}

void limitTo3And6(PasswordControl &field)
{
    field.setLengthLimits(3, 6);
}

void refuseUsed(PasswordControl &field)
{
    field.setCheckUsed(true);
    field.addUsedPassword("first1");
    field.addUsedPassword("\xc3\xa4\xc3\xb6\xc3\xbc");
}

} // namespace

class PasswordControlTest : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void verdict_data();
    void verdict();
    void verifiesAgain_data();
    void verifiesAgain();
    void tellsItsOwner();
    void looks_data();
    void looks();
    void captionFollowsATextThatNobodyTyped();
    void eye();
    void fontSetInPixels();
};

void PasswordControlTest::construction()
{
    QWidget parent;
    QFont font = parent.font();
    font.setPointSizeF(11);
    parent.setFont(font);
    const PasswordControl field(&parent);
    const FieldParts parts(&field);
    QVERIFY(parts.caption && parts.edit && parts.underline && parts.error);
    QCOMPARE(field.layout()->spacing(), 4);
    QCOMPARE(field.layout()->contentsMargins(), QMargins());
    QCOMPARE(parts.edit->styleSheet(), QString("QLineEdit { background-color: white; border: 1px white }"));
    QCOMPARE(parts.edit->echoMode(), QLineEdit::Password);
    QCOMPARE(parts.edit->minimumHeight(), 17);
    QCOMPARE(parts.caption->font().pointSizeF(), 9.35);
    QCOMPARE(parts.error->font(), parts.caption->font());
    QCOMPARE(parts.underline->frameStyle(), 20);
    QCOMPARE(parts.underline->lineWidth(), 1);
    QCOMPARE(parts.underline->styleSheet(), QString("QFrame {color: black}"));
    QVERIFY(!field.isValid());
    QVERIFY(field.checkLength());
    QVERIFY(!field.checkUsed() && !field.isCompareEnabled() && !field.isExcludeEnabled());
}

void PasswordControlTest::verdict_data()
{
    QTest::addColumn<Setup>("setup");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("message");

    const Setup nothing = [](PasswordControl &) {};
    const Setup all = [](PasswordControl &field) {
        compareWithSecret(field);
        field.setExcludeEnabled(true);
        field.setExcludePasswordString("x");
        limitTo3And6(field);
        refuseUsed(field);
    };
    const Setup allButCompare = [all](PasswordControl &field) {
        all(field);
        field.setCompareEnabled(false);
    };
    const Setup longUsed = [](PasswordControl &field) {
        refuseUsed(field);
        field.setLengthLimits(1, 5);
    };
    const QString mustMatch = "Passwords must match!";
    const QString mustDiffer = "New password must be different!";
    const QString tooShort = "Your password is to short. (min 3 characters)";
    const QString usedBefore = "This password has been used before.";

    QTest::newRow("default: one character") << nothing << "x" << true << "";
    QTest::newRow("default: empty") << nothing << "" << false << "";
    QTest::newRow("compare: differs") << Setup(compareWithSecret) << "secreT" << false << mustMatch;
    QTest::newRow("compare: equal") << Setup(compareWithSecret) << "secret" << true << "";
    QTest::newRow("compare: with nothing")
        << Setup([](PasswordControl &field) { field.setCompareEnabled(true); }) << "x" << true << "";
    QTest::newRow("compare: off") << Setup([](PasswordControl &field) {
        field.setComparePasswordString("secret");
    }) << "x" << true << "";
    QTest::newRow("compare: other words") << Setup([](PasswordControl &field) {
        compareWithSecret(field);
        field.setCompareMessage("not that");
    }) << "x" << false << "not that";
    QTest::newRow("exclude: equal") << Setup(excludeSecret) << "secret" << false << mustDiffer;
    QTest::newRow("exclude: differs") << Setup(excludeSecret) << "secret1" << true << "";
    QTest::newRow("exclude: off") << Setup([](PasswordControl &field) {
        field.setExcludePasswordString("secret");
    }) << "secret" << true << "";
    QTest::newRow("exclude: other words") << Setup([](PasswordControl &field) {
        excludeSecret(field);
        field.setExcludeMessage("not that");
    }) << "secret" << false << "not that";
    QTest::newRow("empty before exclude")
        << Setup([](PasswordControl &field) { field.setExcludeEnabled(true); }) << "" << false << "";
    QTest::newRow("length: below") << Setup(limitTo3And6) << "ab" << false << tooShort;
    QTest::newRow("length: minimum") << Setup(limitTo3And6) << "abc" << true << "";
    QTest::newRow("length: maximum, in characters")
        << Setup(limitTo3And6) << QString(6, QChar(0xe4)) << true << "";
    QTest::newRow("length: above") << Setup(limitTo3And6) << "abcdefg" << false
                                   << "Your password is too long. (max 6 characters)";
    QTest::newRow("length: limits of 64 bits")
        << Setup([](PasswordControl &field) { field.setLengthLimits(0x100000002, 0x200000000); }) << "abc"
        << false << "Your password is to short. (min 4294967298 characters)";
    QTest::newRow("length: off") << Setup([](PasswordControl &field) {
        limitTo3And6(field);
        field.setCheckLength(false);
    }) << "ab" << true << "";
    QTest::newRow("used: first") << Setup(refuseUsed) << "first1" << false << usedBefore;
    QTest::newRow("used: last, in UTF-8")
        << Setup(refuseUsed) << QString::fromUtf8("äöü") << false << usedBefore;
    QTest::newRow("used: new") << Setup(refuseUsed) << "other" << true << "";
    QTest::newRow("used: off") << Setup([](PasswordControl &field) { field.addUsedPassword("first1"); })
                               << "first1" << true << "";
    QTest::newRow("compare before the others") << all << "x" << false << mustMatch;
    QTest::newRow("exclude before length") << allButCompare << "x" << false << mustDiffer;
    QTest::newRow("length before used")
        << Setup(longUsed) << "first1" << false << "Your password is too long. (max 5 characters)";
}

void PasswordControlTest::verdict()
{
    QFETCH(Setup, setup);
    QFETCH(QString, text);
    PasswordControl field;
    const FieldParts parts(&field);
    setup(field);
    parts.type("another text");
    parts.type(text);
    QTEST(field.isValid(), "valid");
    QTEST(parts.error->text(), "message");
    QCOMPARE(field.text(), text);
}

void PasswordControlTest::verifiesAgain_data()
{
    QTest::addColumn<Setup>("setup");
    QTest::addColumn<Setup>("action");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");

    const Setup nothing = [](PasswordControl &) {};
    const Setup compareWithOther = [](PasswordControl &field) { field.setComparePasswordString("other"); };
    const Setup exclude = [](PasswordControl &field) { field.setExcludePasswordString("secret"); };
    const Setup use = [](PasswordControl &field) { field.addUsedPassword("secret"); };
    const Setup replaceUsed = [](PasswordControl &field) { field.setUsedPasswords({"one", "secret"}); };
    const auto with = [](void (PasswordControl::*rule)(bool)) {
        return Setup([rule](PasswordControl &field) { (field.*rule)(true); });
    };

    QTest::newRow("compare string") << Setup(compareWithSecret) << compareWithOther << true << false;
    QTest::newRow("compare string, rule off") << nothing << compareWithOther << true << true;
    QTest::newRow("exclude string") << with(&PasswordControl::setExcludeEnabled) << exclude << true << false;
    QTest::newRow("exclude string, rule off") << nothing << exclude << true << true;
    QTest::newRow("used password") << with(&PasswordControl::setCheckUsed) << use << true << false;
    QTest::newRow("used password, rule off") << nothing << use << true << true;
    QTest::newRow("used passwords") << with(&PasswordControl::setCheckUsed) << replaceUsed << true << false;
    QTest::newRow("used passwords, rule off") << nothing << replaceUsed << true << true;
    QTest::newRow("forgetting used passwords waits") << Setup([use](PasswordControl &field) {
        field.setCheckUsed(true);
        use(field);
    }) << Setup([](PasswordControl &field) { field.clearUsedPasswords(); })
                                                     << false << false;
    QTest::newRow("limits wait") << nothing
                                 << Setup([](PasswordControl &field) { field.setLengthLimits(9, 9); }) << true
                                 << true;
    QTest::newRow("switched-on rules wait") << Setup([](PasswordControl &field) {
        field.setComparePasswordString("other");
        field.setExcludePasswordString("secret");
        field.addUsedPassword("secret");
    }) << Setup([](PasswordControl &field) {
        field.setCompareEnabled(true);
        field.setExcludeEnabled(true);
        field.setCheckUsed(true);
    }) << true << true;
    QTest::newRow("told valid") << Setup(excludeSecret)
                                << Setup([](PasswordControl &field) { field.setValid(true); }) << false
                                << true;
    QTest::newRow("cleared") << nothing << Setup(&PasswordControl::clear) << true << false;
    QTest::newRow("cleared while not valid")
        << Setup(excludeSecret) << Setup(&PasswordControl::clear) << false << false;
    QTest::newRow("cleared while told valid") << Setup([](PasswordControl &field) {
        field.setCheckLength(false);
    }) << Setup([](PasswordControl &field) {
        field.clear();
        field.setValid(true);
        field.clear();
        field.setErrorText("left");
        field.clear();
        QCOMPARE(field.errorText(), QString());
    }) << true << false;
}

void PasswordControlTest::verifiesAgain()
{
    QFETCH(Setup, setup);
    QFETCH(Setup, action);
    QFETCH(bool, before);
    QFETCH(bool, after);
    PasswordControl field;
    setup(field);
    FieldParts(&field).type("secret");
    QCOMPARE(field.isValid(), before);
    QList<bool> told;
    connect(&field, &PasswordControl::passwordValidChanged, [&told](bool valid) { told.append(valid); });
    action(field);
    QCOMPARE(field.isValid(), after);
    QCOMPARE(told.isEmpty() ? before : told.last(), after);
    QVERIFY(before != after || told.isEmpty());
}

void PasswordControlTest::tellsItsOwner()
{
    PasswordControl field;
    const FieldParts parts(&field);
    const QSignalSpy textChanged(&field, &PasswordControl::textChanged);
    const QSignalSpy returnPressed(&field, &PasswordControl::returnPressed);
    const QSignalSpy editingFinished(&field, &PasswordControl::editingFinished);
    const QSignalSpy validChanged(&field, &PasswordControl::passwordValidChanged);
    QTest::keyClicks(parts.edit, "abc");
    QCOMPARE(textChanged.count(), 3);
    QCOMPARE(textChanged.last(), QVariantList{"abc"});
    QCOMPARE(validChanged.count(), 1);
    QCOMPARE(validChanged.last(), QVariantList{true});
    QTest::keyClick(parts.edit, Qt::Key_Return);
    QCOMPARE(returnPressed.count(), 1);
    QCOMPARE(editingFinished.count(), 1);
    QCOMPARE(editingFinished.last(), QVariantList{"abc"});
    field.clear();
    field.clear();
    QCOMPARE(validChanged.count(), 2);
    QCOMPARE(validChanged.last(), QVariantList{false});
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

// Each look is reached from another one, by real keys and a real change of the focus.
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
    limitTo3And6(field);
    field.setCaption("Name");
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    const FieldParts parts(&field);
    QTest::mouseClick(parts.edit, Qt::LeftButton);
    parts.type("x");
    parts.type(text);
    if (!focused)
        QTest::mouseClick(&other, Qt::LeftButton);
    QCOMPARE(parts.underline->styleSheet(), QString("QFrame {color: %1}").arg(color));
    QCOMPARE(parts.error->styleSheet(), QString("QLabel {color: %1}").arg(color));
    QCOMPARE(parts.caption->styleSheet(), QString("QLabel {color: %1}").arg(color));
    QCOMPARE(field.captionText(), QString(captionAbove ? "Name" : ""));
    QCOMPARE(parts.edit->placeholderText(), QString(captionAbove ? "" : "Name"));
    const QImage line = parts.underline->grab().toImage();
    QCOMPARE(line.pixelColor(line.rect().center()), QColor(color));
}

void PasswordControlTest::captionFollowsATextThatNobodyTyped()
{
    PasswordControl field;
    field.setCaption("Name");
    QCOMPARE(field.captionText(), QString());
    field.setText("secret");
    QCOMPARE(field.captionText(), QString("Name"));
    field.clear();
    QCOMPARE(field.captionText(), QString());
    QCOMPARE(FieldParts(&field).edit->placeholderText(), QString("Name"));
}

void PasswordControlTest::eye()
{
    PasswordControl field;
    const FieldParts parts(&field);
    field.show();
    QVERIFY(QTest::qWaitForWindowExposed(&field));
    const auto see = [&](const QString &text, const QString &icon, QLineEdit::EchoMode mode) {
        QCOMPARE(parts.edit->echoMode(), mode);
        QCOMPARE(parts.edit->actions().count(), 1);
        const QAction *action = parts.edit->actions().first();
        QCOMPARE(action->text(), text);
        QVERIFY(!action->icon().isNull());
        QCOMPARE(action->icon().pixmap(24).toImage(), QPixmap(icon).toImage());
    };
    see("Show plain text", ":/icons/eye.png", QLineEdit::Password);
    QTest::mouseClick(parts.edit->findChild<QToolButton *>(), Qt::LeftButton);
    see("Hide plain text", ":/icons/eye-off.png", QLineEdit::Normal);
    field.clear();
    see("Hide plain text", ":/icons/eye-off.png", QLineEdit::Normal);
    QTest::mouseClick(parts.edit->findChild<QToolButton *>(), Qt::LeftButton);
    see("Show plain text", ":/icons/eye.png", QLineEdit::Password);
}

// Then there is no point size to scale. Qt says so, and the field is there all the same.
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
    QCOMPARE(FieldParts(&field).caption->font().pixelSize(), 15);
    QCOMPARE(FieldParts(&field).edit->minimumHeight(), 0);
}

QTEST_MAIN(PasswordControlTest)
#include "PasswordControlTest.moc"
