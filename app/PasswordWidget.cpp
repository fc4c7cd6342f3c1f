// SPDX-License-Identifier: MIT
#include "PasswordWidget.h"

#include "BackEnd.h"
#include "PasswordControl.h"
#include "Wipe.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <cstdint>
#include <utility>

PasswordWidget::PasswordWidget(QWidget *parent, std::shared_ptr<BackEnd> backEnd)
    : QWidget(parent, Qt::Dialog), backEnd(std::move(backEnd))
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowModality(Qt::WindowModal);
    setMinimumSize(520, 440);
    createButtons();
    createFields();
    createInputBox();
    layOut();
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    reset();
    if (this->backEnd->selectedIsClosed())
        statusLabel->setText(
            QStringLiteral("The camera could not be opened. Another program may be using it."));
}

void PasswordWidget::createButtons()
{
    lockButton = new QPushButton(QStringLiteral("Unlock"), this);
    changeButton = new QPushButton(QStringLiteral("Change password"), this);
    resetButton = new QPushButton(QStringLiteral("Factory reset"), this);
    connect(lockButton, &QPushButton::clicked, this, &PasswordWidget::onButtonLockUnlock);
    connect(changeButton, &QPushButton::clicked, this, &PasswordWidget::onButtonChangePassword);
    connect(resetButton, &QPushButton::clicked, this, &PasswordWidget::onButtonFactoryReset);
}

void PasswordWidget::createFields()
{
    const std::uint64_t minimum = backEnd->minPasswordLength();
    const std::uint64_t maximum = backEnd->maxPasswordLength();

    passwordControl = new PasswordControl(this);
    passwordControl->setCaption(QStringLiteral("Password"));
    passwordControl->setLengthLimits(minimum, maximum);
    passwordControl->setExcludeMessage(QStringLiteral("Unlocking failed! Wrong password?"));
    connect(passwordControl, &PasswordControl::returnPressed, this, &PasswordWidget::onPasswordEditFinished);
    connect(passwordControl, &PasswordControl::passwordValidChanged, this,
            &PasswordWidget::onPasswordValidChanged);

    newPasswordControl = new PasswordControl(this);
    newPasswordControl->setCaption(QStringLiteral("New password"));
    newPasswordControl->setLengthLimits(minimum, maximum);
    newPasswordControl->setCheckUsed(true);
    // The rule behind this stays off: the back end refuses a new password that is the old one.
    connect(passwordControl, &PasswordControl::textChanged, newPasswordControl,
            &PasswordControl::setExcludePasswordString);
    connect(newPasswordControl, &PasswordControl::passwordValidChanged, this,
            &PasswordWidget::onPasswordValidChanged);

    confirmControl = new PasswordControl(this);
    confirmControl->setCaption(QStringLiteral("Confirm password"));
    confirmControl->setCompareEnabled(true);
    connect(newPasswordControl, &PasswordControl::textChanged, confirmControl,
            &PasswordControl::setComparePasswordString);
    connect(confirmControl, &PasswordControl::passwordValidChanged, this,
            &PasswordWidget::onPasswordValidChanged);
}

void PasswordWidget::createInputBox()
{
    inputBox = new QWidget(this);
    inputBox->setStyleSheet(QStringLiteral("QWidget{background-color: white}"));
    okButton = new QPushButton(QStringLiteral("OK"), this);
    cancelButton = new QPushButton(QStringLiteral("Cancel"), this);
    for (QPushButton *button : {okButton, cancelButton})
        button->setStyleSheet(QStringLiteral("QPushButton{background: lightgray}"));
    connect(okButton, &QPushButton::clicked, this, &PasswordWidget::onButtonOk);
    connect(cancelButton, &QPushButton::clicked, this, &PasswordWidget::reset);
    statusLabel = new QLabel(this);
    connect(statusLabel, &QLabel::linkActivated, this, &PasswordWidget::onForgotPasswordLink);
}

void PasswordWidget::layOut()
{
    buttonRow = new QWidget(this);
    auto *buttons = new QHBoxLayout(buttonRow);
    buttons->addWidget(lockButton);
    buttons->addWidget(changeButton);
    buttons->addWidget(resetButton);

    auto *input = new QVBoxLayout(inputBox);
    input->setSpacing(16);
    for (PasswordControl *control : {passwordControl, newPasswordControl, confirmControl})
        input->addWidget(control);
    auto *answers = new QHBoxLayout;
    answers->addWidget(okButton);
    answers->addWidget(cancelButton);
    input->addLayout(answers);

    auto *panel = new QVBoxLayout(this);
    panel->addWidget(buttonRow);
    panel->addWidget(inputBox);
    panel->addStretch();
    panel->addWidget(statusLabel);
}

void PasswordWidget::onCurrentDeviceRemoved()
{
    if (resetDone)
        return;
    QMessageBox box;
    box.setText(QStringLiteral("The camera has been removed..."));
    box.exec();
    close();
}

void PasswordWidget::onPasswordValidChanged(bool valid)
{
    if (sender() == passwordControl)
        passwordValid = valid;
    else if (sender() == newPasswordControl)
        newPasswordValid = valid;
    else if (sender() == confirmControl)
        confirmValid = valid;
    okButton->setEnabled(canAccept());
}

bool PasswordWidget::canAccept() const
{
    return changeMode ? passwordValid && newPasswordValid && confirmValid : passwordValid;
}

void PasswordWidget::onForgotPasswordLink()
{
    QMessageBox box;
    box.setText(QStringLiteral("Forgot password?"));
    box.setInformativeText(
        QStringLiteral("You can reset the password to factory defaults with 'FactoryReset'.\n"
                       "Attention! This also resets all other camera parameters.\n\n"
                       "Alternatively, contact the TVN support team."));
    box.setStandardButtons(QMessageBox::Ok);
    box.setIcon(QMessageBox::Information);
    box.exec();
}

void PasswordWidget::reset()
{
    inputBox->hide();
    dropHiddenFocus();
    okButton->setEnabled(false);
    for (PasswordControl *control : {passwordControl, newPasswordControl, confirmControl})
        control->hide();
    clearFields();
    statusLabel->clear();
    // A closed camera is not operated: it could not be opened, or has gone.
    const bool isClosed = backEnd->selectedIsClosed();
    buttonRow->setEnabled(!isClosed);
    changeMode = false;

    locked = backEnd->selectedIsLocked();
    lockButton->setText(locked ? QStringLiteral("Unlock") : QStringLiteral("Lock"));
    defaultPassword = !isClosed && backEnd->selectedIsDefaultPassword();
    lockButton->setVisible(!defaultPassword);
    resetButton->setVisible(!defaultPassword);
    if (!defaultPassword)
        return;
    // The change clears this message before anybody can see it.
    statusLabel->setText(
        QStringLiteral("Default password! You need to change the password before you can use the camera..."));
    onButtonChangePassword();
}

// Of all passwords: what a field is compared with empties with the field that it follows.
void PasswordWidget::clearFields()
{
    for (PasswordControl *control : {passwordControl, newPasswordControl, confirmControl})
        control->clear();
    newPasswordControl->clearUsedPasswords();
    passwordControl->setExcludeEnabled(false);
    passwordControl->setExcludePasswordString(QString());
}

// Qt leaves the focus on a hidden widget when it finds no other one, and keys still go there: another Return after an
// unlock would try an empty password.
void PasswordWidget::dropHiddenFocus()
{
    QWidget *const holder = focusWidget();
    if (holder && inputBox->isAncestorOf(holder))
        holder->clearFocus();
}

void PasswordWidget::onButtonLockUnlock()
{
    if (!locked) {
        lockDevice();
        return;
    }
    statusLabel->clear();
    inputBox->show();
    passwordControl->setCaption(QStringLiteral("Password"));
    passwordControl->show();
    buttonRow->setEnabled(false);
}

void PasswordWidget::lockDevice()
{
    if (backEnd->lock())
        finish(QStringLiteral("Successfully locked!"));
    else
        statusLabel->setText(QStringLiteral("Locking failed!"));
}

void PasswordWidget::onButtonChangePassword()
{
    passwordControl->setCaption(defaultPassword ? QStringLiteral("Default password")
                                                : QStringLiteral("Old password"));
    buttonRow->setEnabled(false);
    statusLabel->clear();
    inputBox->show();
    for (PasswordControl *control : {passwordControl, newPasswordControl, confirmControl})
        control->show();
    changeMode = true;
}

void PasswordWidget::onButtonFactoryReset()
{
    QMessageBox box;
    box.setText(QStringLiteral("Factory reset."));
    box.setInformativeText(QStringLiteral("The camera must reboot. This can take a while...\n"
                                          "Attention! This also resets all other camera parameters."));
    box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Cancel);
    box.setIcon(QMessageBox::Warning);
    if (box.exec() != QMessageBox::Ok)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    resetDone = true;
    backEnd->factoryResetSelected();
    QGuiApplication::restoreOverrideCursor();
    close();
}

// Whatever the verdict on the text: the camera judges it.
void PasswordWidget::onPasswordEditFinished()
{
    if (!changeMode)
        onButtonOk();
}

void PasswordWidget::onButtonOk()
{
    if (changeMode)
        changePassword();
    else
        unlockDevice();
}

void PasswordWidget::unlockDevice()
{
    std::string password = passwordControl->text().toStdString();
    const WipeAtEnd wipesPassword(password);
    std::string proved = backEnd->unlock(password, false);
    const WipeAtEnd wipesProved(proved);
    if (proved.empty())
        refusePassword();
    else
        finish(QStringLiteral("Successfully unlocked!"));
}

// The OK button asks for three valid fields already; the messages stand for whatever else comes here.
void PasswordWidget::changePassword()
{
    if (!passwordControl->isValid())
        statusLabel->setText(QStringLiteral("You must enter a valid password!"));
    else if (!newPasswordControl->isValid())
        statusLabel->setText(QStringLiteral("You must enter a valid new password!"));
    else if (!confirmControl->isValid())
        statusLabel->setText(QStringLiteral("New password and confirmation password must match!"));
    else
        sendChange();
}

void PasswordWidget::sendChange()
{
    std::string oldPassword = passwordControl->text().toStdString();
    const WipeAtEnd wipesOld(oldPassword);
    std::string newPassword = newPasswordControl->text().toStdString();
    const WipeAtEnd wipesNew(newPassword);
    reportChange(backEnd->changePassword(oldPassword, newPassword), newPassword);
}

// The results of BackEnd::changePassword.
void PasswordWidget::reportChange(int result, const std::string &newPassword)
{
    switch (result) {
    case 0:
        finish(QStringLiteral("Successfully changed the password!"));
        break;
    case 1:
        refusePassword();
        break;
    case 2:
        statusLabel->setText(QStringLiteral("Could not set password."));
        newPasswordControl->addUsedPassword(newPassword);
        break;
    default:
        statusLabel->setText(QStringLiteral("Changing the password failed!"));
    }
}

void PasswordWidget::finish(const QString &message)
{
    emit lockChanged();
    reset();
    statusLabel->setText(message);
}

// The text that has failed is refused by the field itself from now on, without another try on the camera.
void PasswordWidget::refusePassword()
{
    passwordControl->setExcludeEnabled(true);
    passwordControl->setExcludePasswordString(passwordControl->text());
    statusLabel->setText(QStringLiteral("Unlocking failed! %1")
                             .arg(QStringLiteral("<a href=\"#forgotPassword\">Forgot password?</a>")));
}

void PasswordWidget::closeEvent(QCloseEvent *)
{
    emit closed();
    clearFields(); // the panel is only hidden, and stays
}
