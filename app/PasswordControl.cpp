// SPDX-License-Identifier: MIT
#include "PasswordControl.h"

#include "Wipe.h"

#include <QAction>
#include <QEvent>
#include <QFrame>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QValidator>
#include <algorithm>
#include <initializer_list>

namespace {

// By Unicode, and the end of a text in C.
bool endsLine(QChar character)
{
    static const QString ends = QStringLiteral("\n\v\f\r\u0085\u2028\u2029") + QChar::Null;
    return ends.contains(character);
}

// Nobody can type a line end, so what comes with one stops there. Whatever is typed, pasted, dropped, composed or set
// passes a line edit's validator, which may change it, and stands between the text and its signals.
class FirstLine : public QValidator
{
public:
    using QValidator::QValidator;

    // The cursor stands behind what has come. What is behind the cursor was there before.
    State validate(QString &text, int &cursor) const override
    {
        const auto end = static_cast<int>(std::ranges::find_if(text, endsLine) - text.begin());
        text.remove(end, (end < cursor ? cursor : text.size()) - end);
        cursor = std::min(cursor, end);
        return Acceptable;
    }
};

} // namespace

PasswordControl::PasswordControl(QWidget *parent)
    : QWidget(parent),
      captionLabel(new QLabel(this)),
      errorLabel(new QLabel(this)),
      lineEdit(new QLineEdit(this))
{
    lineEdit->setStyleSheet(QStringLiteral("QLineEdit { background-color: white; border: 1px white }"));
    lineEdit->setEchoMode(QLineEdit::Password);
    lineEdit->setValidator(new FirstLine(lineEdit));
    connect(lineEdit, &QLineEdit::textChanged, this, &PasswordControl::textChanged);
    connect(lineEdit, &QLineEdit::returnPressed, this, &PasswordControl::returnPressed);
    connect(lineEdit, &QLineEdit::textChanged, this, &PasswordControl::verifyPassword);
    connect(lineEdit, &QLineEdit::editingFinished, this, &PasswordControl::onEditingFinished);

    underline = new QFrame(this);
    underline->setFrameShape(QFrame::HLine);
    underline->setFrameShadow(QFrame::Plain);
    underline->setLineWidth(1);
    underline->setStyleSheet(QStringLiteral("QFrame {color: black}"));

    setSizes();
    lineEdit->installEventFilter(this);

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    layout->setMargin(0);
    for (QWidget *part : std::initializer_list<QWidget *>{captionLabel, lineEdit, underline, errorLabel})
        layout->addWidget(part);

    excludeMessage = QStringLiteral("New password must be different!");
    compareMessage = QStringLiteral("Passwords must match!");
    createEyeActions();
}

// A font that is set in pixels has a point size of -1, which Qt refuses to scale: then the labels are not smaller, and
// the line edit is as high as it likes.
void PasswordControl::setSizes()
{
    QFont smallFont = captionLabel->font();
    const qreal pointSize = smallFont.pointSizeF();
    smallFont.setPointSizeF(pointSize * 0.85);
    captionLabel->setFont(smallFont);
    errorLabel->setFont(smallFont);
    lineEdit->setMinimumHeight(static_cast<int>(pointSize * 1.6));
}

void PasswordControl::createEyeActions()
{
    hideAction =
        new QAction(QIcon(QStringLiteral(":/icons/eye-off.png")), QStringLiteral("Hide plain text"), this);
    connect(hideAction, &QAction::triggered, this, &PasswordControl::onHidePlainPassword);
    showAction =
        new QAction(QIcon(QStringLiteral(":/icons/eye.png")), QStringLiteral("Show plain text"), this);
    connect(showAction, &QAction::triggered, this, &PasswordControl::onShowPlainPassword);
    lineEdit->addAction(showAction, QLineEdit::TrailingPosition);
}

bool PasswordControl::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        focused = event->type() == QEvent::FocusIn;
        updateDisplay();
    }
    return QObject::eventFilter(watched, event);
}

QString PasswordControl::text() const
{
    return lineEdit->text();
}

void PasswordControl::setText(const QString &text)
{
    lineEdit->setText(text);
}

void PasswordControl::setValid(bool newValid)
{
    if (newValid != valid) {
        valid = newValid;
        emit passwordValidChanged(valid);
    }
    updateDisplay();
}

void PasswordControl::clear()
{
    lineEdit->setText(QString()); // unlike its clear(), leaves nothing to undo
    errorLabel->clear();
    setValid(false);
}

void PasswordControl::setCaption(const QString &newCaption)
{
    caption = newCaption;
    updateCaption();
}

QString PasswordControl::captionText() const
{
    return captionLabel->text();
}

QString PasswordControl::errorText() const
{
    return errorLabel->text();
}

void PasswordControl::setErrorText(const QString &text)
{
    errorLabel->setText(text);
}

void PasswordControl::setLengthLimits(std::uint64_t minimum, std::uint64_t maximum)
{
    minimumLength = minimum;
    maximumLength = maximum;
}

void PasswordControl::setUsedPasswords(const std::vector<std::string> &passwords)
{
    clearUsedPasswords();
    usedPasswords_.assign(passwords.begin(), passwords.end());
    if (checkUsed_)
        verifyPassword(text());
}

void PasswordControl::addUsedPassword(const std::string &password)
{
    usedPasswords_.push_back(password);
    if (checkUsed_)
        verifyPassword(text());
}

void PasswordControl::clearUsedPasswords()
{
    std::ranges::for_each(usedPasswords_, [](std::string &password) { wipe(password); });
    usedPasswords_.clear();
}

void PasswordControl::setComparePasswordString(const QString &comparePasswordString)
{
    comparePasswordString_ = comparePasswordString;
    if (compareEnabled)
        verifyPassword(text());
}

void PasswordControl::setExcludePasswordString(const QString &excludePasswordString)
{
    excludePasswordString_ = excludePasswordString;
    if (excludeEnabled)
        verifyPassword(text());
}

void PasswordControl::verifyPassword(const QString &password)
{
    const std::optional<QString> fault = findFault(password);
    errorLabel->setText(fault.value_or(QString()));
    setValid(!fault);
}

// The complaint of the first rule that fails; nothing when all are kept.
std::optional<QString> PasswordControl::findFault(const QString &password) const
{
    if (password.isEmpty())
        return QString();
    if (compareEnabled && !comparePasswordString_.isEmpty() && password != comparePasswordString_)
        return compareMessage;
    if (excludeEnabled && password == excludePasswordString_)
        return excludeMessage;
    const auto length = static_cast<std::uint64_t>(password.length());
    if (checkLength_ && length < minimumLength)
        return QStringLiteral("Your password is to short. (min %1 characters)").arg(minimumLength);
    if (checkLength_ && length > maximumLength)
        return QStringLiteral("Your password is too long. (max %1 characters)").arg(maximumLength);
    const auto isPassword = [&](const std::string &used) { return QString::fromStdString(used) == password; };
    if (checkUsed_ && std::ranges::any_of(usedPasswords_, isPassword))
        return QStringLiteral("This password has been used before.");
    return std::nullopt;
}

void PasswordControl::onEditingFinished()
{
    emit editingFinished(lineEdit->text());
}

void PasswordControl::onShowPlainPassword()
{
    lineEdit->setEchoMode(QLineEdit::Normal);
    lineEdit->removeAction(showAction);
    lineEdit->addAction(hideAction, QLineEdit::TrailingPosition);
}

void PasswordControl::onHidePlainPassword()
{
    lineEdit->setEchoMode(QLineEdit::Password);
    lineEdit->removeAction(hideAction);
    lineEdit->addAction(showAction, QLineEdit::TrailingPosition);
}

void PasswordControl::updateDisplay()
{
    updateColors();
    updateCaption();
}

void PasswordControl::updateColors()
{
    QString color = QStringLiteral("black");
    if (!lineEdit->text().isEmpty() && !valid)
        color = errorColor.name();
    else if (focused)
        color = focusColor.name();
    underline->setStyleSheet(QStringLiteral("QFrame {color: %1}").arg(color));
    errorLabel->setStyleSheet(QStringLiteral("QLabel {color: %1}").arg(color));
    captionLabel->setStyleSheet(QStringLiteral("QLabel {color: %1}").arg(color));
}

void PasswordControl::updateCaption()
{
    const bool isInside = lineEdit->text().isEmpty() && !focused;
    captionLabel->setText(isInside ? QString() : caption);
    lineEdit->setPlaceholderText(isInside ? caption : QString());
}
