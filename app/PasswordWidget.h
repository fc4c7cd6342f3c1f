// SPDX-License-Identifier: MIT
// The panel in which the user acts on one camera, a dialog over the list: lock or unlock, change the password, reset to
// factory settings. A camera that is still on its factory default password offers nothing but the change. The panel
// acts on the device that is selected in the back end, which somebody else has opened and will close.
//
// What is shown follows from three facts: locked, defaultPassword (both as of the last reset()) and changeMode.
//
// Thread: the GUI thread. Each operation blocks it for the length of its traffic with the camera.
#pragma once

#include <QWidget>
#include <memory>
#include <string>

class BackEnd;
class PasswordControl;
class QLabel;
class QPushButton;

class PasswordWidget : public QWidget
{
    Q_OBJECT

public:
    /// \param parent  the window whose input the panel blocks while it is shown
    /// \param backEnd  its selected device is open; if not, the panel says so, and its buttons are disabled
    PasswordWidget(QWidget *parent, std::shared_ptr<BackEnd> backEnd);

signals:
    /// Nothing emits it.
    void lockRequested();
    /// Nothing emits it.
    void passwordInputChanged(const QString &text);
    /// The camera was locked, unlocked or given a new password here.
    void lockChanged();
    /// The panel has been closed, by Escape too, which hides it. Its fields are emptied.
    void closed();

public slots:
    /// Says that the camera is gone and closes the panel, unless a reset here has sent the camera away.
    void onCurrentDeviceRemoved();
    /// Keeps the verdict of the field that sends it.
    void onPasswordValidChanged(bool valid);
    void onForgotPasswordLink();

private slots:
    void reset();
    void onButtonLockUnlock();
    void onButtonChangePassword();
    void onButtonFactoryReset();
    void onPasswordEditFinished();
    void onButtonOk();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createButtons();
    void createFields();
    void createInputBox();
    void layOut();
    void clearFields();
    void dropHiddenFocus();
    bool canAccept() const;
    void lockDevice();
    void unlockDevice();
    void changePassword();
    void sendChange();
    void reportChange(int result, const std::string &newPassword);
    void finish(const QString &message);
    void refusePassword();

    QPushButton *lockButton;
    QPushButton *changeButton;
    QPushButton *resetButton;
    bool locked = true;
    bool defaultPassword = false;
    bool changeMode = false; // OK means change, not unlock
    bool resetDone = false;  // the device's going away is expected
    bool passwordValid = false;
    bool newPasswordValid = false;
    bool confirmValid = false;
    PasswordControl *passwordControl;
    PasswordControl *newPasswordControl;
    PasswordControl *confirmControl;
    QWidget *inputBox;
    QWidget *buttonRow;
    QPushButton *okButton;
    QPushButton *cancelButton;
    QLabel *statusLabel;
    std::shared_ptr<BackEnd> backEnd;
};
