// SPDX-License-Identifier: MIT
// One password field of the panel: a caption that floats, a masked line edit with an eye button, a line under it, and
// room for one complaint. It judges its text on every keystroke by the rules that its owner has switched on, colours
// itself by the verdict, and tells the owner when the verdict changes. It knows nothing of cameras: limits and texts to
// compare with come from outside.
//
// While it is empty and without the keyboard focus, the caption stands in the line edit; else it stands above.
#pragma once

#include <QColor>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <vector>

class QAction;
class QFrame;
class QLabel;
class QLineEdit;

class PasswordControl : public QWidget
{
    Q_OBJECT

public:
    explicit PasswordControl(QWidget *parent = nullptr);
    /// Wipes the used passwords.
    ~PasswordControl() override { clearUsedPasswords(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

    /// One line: whatever comes in ends at its first line end or U+0000.
    QString text() const;
    void setText(const QString &text);
    /// The verdict on the text. An empty text is never valid, though nothing complains of it.
    bool isValid() const { return valid; }
    /// Sets the verdict as the end of a verification does.
    void setValid(bool valid);
    /// Empties the field, which is invalid then, for good: undo brings nothing back. Whether the text is masked stays as
    /// it is.
    void clear();

    /// The name of the field.
    void setCaption(const QString &caption);
    /// What stands above the field now.
    QString captionText() const;
    /// What stands below the field now.
    QString errorText() const;
    void setErrorText(const QString &text);

    // The rules, in the order in which they are tried. These setters leave the verdict as it is until the next
    // verification, unless they say otherwise.

    /// The text must equal comparePasswordString(), unless that is empty. Initially off.
    void setCompareEnabled(bool enabled) { compareEnabled = enabled; }
    bool isCompareEnabled() const { return compareEnabled; }
    QString comparePasswordString() const { return comparePasswordString_; }
    void setCompareMessage(const QString &message) { compareMessage = message; }

    /// The text must not equal excludePasswordString(). Initially off.
    void setExcludeEnabled(bool enabled) { excludeEnabled = enabled; }
    bool isExcludeEnabled() const { return excludeEnabled; }
    QString excludePasswordString() const { return excludePasswordString_; }
    void setExcludeMessage(const QString &message) { excludeMessage = message; }

    /// The length must lie within the limits. Initially on.
    void setCheckLength(bool check) { checkLength_ = check; }
    bool checkLength() const { return checkLength_; }
    /// In QString's length, both included. Initially 1 and 0x7fffffff.
    void setLengthLimits(std::uint64_t minimum, std::uint64_t maximum);

    /// The text must not be one of usedPasswords(). Initially off.
    void setCheckUsed(bool check) { checkUsed_ = check; }
    bool checkUsed() const { return checkUsed_; }
    /// In UTF-8.
    std::vector<std::string> usedPasswords() const { return {usedPasswords_.begin(), usedPasswords_.end()}; }
    /// Verifies the text again if the rule is on.
    void setUsedPasswords(const std::vector<std::string> &passwords);
    /// Verifies the text again if the rule is on.
    void addUsedPassword(const std::string &password);
    void clearUsedPasswords();

signals:
    void textChanged(const QString &text);
    void returnPressed();
    void editingFinished(const QString &text);
    /// The verdict is another one than before.
    void passwordValidChanged(bool valid);

public slots:
    /// Verifies the text again if the rule is on.
    void setComparePasswordString(const QString &comparePasswordString);
    /// Verifies the text again if the rule is on.
    void setExcludePasswordString(const QString &excludePasswordString);

private slots:
    void verifyPassword(const QString &password);
    void onEditingFinished();
    void onShowPlainPassword();
    void onHidePlainPassword();

private:
    void createEyeActions();
    void setSizes();
    std::optional<QString> findFault(const QString &password) const;
    void updateDisplay();
    void updateColors();
    void updateCaption();

    QLabel *captionLabel;
    QLabel *errorLabel;
    QLineEdit *lineEdit;
    QFrame *underline;
    QString caption;
    QString comparePasswordString_;
    QString excludePasswordString_;
    QString compareMessage;
    QString excludeMessage;
    QColor focusColor{QStringLiteral("#008a96")};
    QColor errorColor{196, 15, 0, 255};
    std::uint64_t maximumLength = 0x7fffffff;
    std::uint64_t minimumLength = 1;
    bool checkLength_ = true;
    bool checkUsed_ = false;
    std::list<std::string> usedPasswords_; // its texts never move, which would leave copies behind
    bool compareEnabled = false;
    bool excludeEnabled = false;
    bool valid = false;
    bool focused = false;
    QAction *showAction; // on the line edit while the text is masked
    QAction *hideAction; // on it while the text is in the clear
};
