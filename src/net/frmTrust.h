// Shows a certificate that nobody vouches for, and asks whether it is the server's all the same.
#pragma once

#include "net/Certificate.h"

#include <QDialog>

class QPlainTextEdit;
class QPushButton;

namespace varlo {

// Shown modally; accepted when the operator trusts the certificate for this server. Enter alone does not.
class frmTrust : public QDialog {
    Q_OBJECT

public:
    explicit frmTrust(const net::DistrustedServer &server, QWidget *parent = nullptr);

private:
    void CreateControls(const net::DistrustedServer &server);
    void LayOut();
    void ConnectControls();

    QPlainTextEdit *txtCertificate = nullptr;
    QPushButton *cmdTrust = nullptr;
    QPushButton *cmdCancel = nullptr;
};

// The same over whatever window the operator sees.
bool AskTrustInWindow(const net::DistrustedServer &server);

} // namespace varlo
