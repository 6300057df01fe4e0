// The Preferences window: five pages of settings of the open profile, stored together on OK.
#pragma once

#include "core/Session.h"
#include "prefs/OptionsStore.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace varlo {

// Shown modally with exec(), made anew each time. A failure while it is filled is reported as "Prefs.Load"
// and the window still opens. When a port or the wrap column cannot be converted on OK, the error reaches the
// last resort and the window stays open with everything typed in it.
class frmOptions : public QDialog {
    Q_OBJECT

public:
    explicit frmOptions(Session &session, QWidget *parent = nullptr);

private:
    struct SwitchField;
    struct LineField;
    struct TextField;
    static const std::array<SwitchField, 5> kSwitchFields;
    static const std::array<LineField, 11> kLineFields;
    static const std::array<TextField, 3> kTextFields;

    void CreateControls();
    void CreateGeneral();
    void CreateSending();
    void CreateReceiving();
    void CreateNotification();
    void CreateCompose();
    void LayOut();
    void LayOutGeneral();
    void LayOutSending();
    void LayOutReceiving();
    void LayOutNotification();
    void LayOutCompose();
    void Connect();

    // The frame of page `index` and of its next group; return what their contents are laid out in.
    QVBoxLayout *AddPage(int index, const QString &title, const QString &description);
    QWidget *AddGroup(QVBoxLayout *page, const QString &title);
    void AddServer(QFormLayout *rows, const QString &caption, QLineEdit *server, QLineEdit *port);
    void AddNotification(QVBoxLayout *page, const QString &title, const QStringList &captions,
                         QLineEdit *subject, QPlainTextEdit *body);

    void Fill(const Options &options);
    Options Typed() const;
    void ShowFieldThatIsNoNumber();

    void lstOptions_Click();
    void cmdWrapDefault_Click();
    void cmdLogGo_Click();
    void cmdOK_Click();

    Session &session_;
    int groups_ = 0; // frames made so far; the next one's index

    QListWidget *lstOptions = nullptr;
    QStackedWidget *pages_ = nullptr;
    QCheckBox *chkNotify = nullptr;
    QCheckBox *chkLogStatus = nullptr;
    QCheckBox *chkLogEmails = nullptr;
    QComboBox *cmbMaintenance = nullptr;
    QPushButton *cmdLogGo = nullptr;
    QLineEdit *txtSMTPServer = nullptr;
    QLineEdit *txtSMTPPort = nullptr;
    QLineEdit *txtSMTPFrom = nullptr;
    QLineEdit *txtSMTPEmail = nullptr;
    QLineEdit *txtSMTPWrap = nullptr;
    QPushButton *cmdWrapDefault = nullptr;
    QLineEdit *txtPOPServer = nullptr;
    QLineEdit *txtPOPPort = nullptr;
    QLineEdit *txtPOPUsername = nullptr;
    QLineEdit *txtPOPPassword = nullptr;
    QCheckBox *chkPOPDeleteAll = nullptr;
    QLineEdit *txtNotifySubSubject = nullptr;
    QPlainTextEdit *txtNotifySubBody = nullptr;
    QLineEdit *txtNotifyUnsubSubject = nullptr;
    QPlainTextEdit *txtNotifyUnsubBody = nullptr;
    QCheckBox *chkSignatureOn = nullptr;
    QPlainTextEdit *txtSignature = nullptr;
    QLabel *lblTitle = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};

} // namespace varlo
