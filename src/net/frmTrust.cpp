#include "net/frmTrust.h"

#include "core/BoxPlace.h"
#include "core/Buttons.h"
#include "core/Literals.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace varlo {

namespace {

QString Question(const net::DistrustedServer &server) {
    const QString why =
        server.IsOther
            ? u"The server [%1] shows another certificate than the one that you trust. The provider may have "
              "renewed it, or somebody is listening on the line."_s.arg(server.Name)
            : u"The certificate of the server [%1] cannot be verified. %2"_s.arg(server.Name, server.Why);
    return why +
           u" Nothing was sent.\n\nTrust it only if the provider or the server's administrator has told "
           "you the SHA-256 that stands below."_s;
}

QString Day(const QDateTime &time) {
    return QLocale::system().toString(time.toLocalTime().date(), QLocale::LongFormat);
}

QString Lines(const net::Certificate &shown) {
    return u"Name: %1\nIssued by: %2\nValid from: %3\nValid until: %4\nSHA-256: %5"_s.arg(
        shown.Subject, shown.Issuer, Day(shown.ValidFrom), Day(shown.ValidUntil),
        net::FingerprintText(shown.Sha256));
}

} // namespace

frmTrust::frmTrust(const net::DistrustedServer &server, QWidget *parent) : QDialog(parent) {
    CreateControls(server);
    LayOut();
    ConnectControls();
}

void frmTrust::CreateControls(const net::DistrustedServer &server) {
    setObjectName(u"frmTrust"_s);
    setWindowTitle(u"Unknown Certificate"_s);
    txtCertificate = new QPlainTextEdit(Question(server) + u"\n\n"_s + Lines(server.Shown));
    txtCertificate->setObjectName(u"txtCertificate"_s);
    txtCertificate->setAccessibleName(u"Certificate"_s);
    txtCertificate->setReadOnly(true);
    txtCertificate->setTabChangesFocus(true);
    cmdTrust = NewButton(nullptr, "cmdTrust", u"&Trust This Server"_s,
                         u"Accept this certificate for this server from now on"_s);
    cmdCancel = NewButton(nullptr, "cmdCancel", u"Cancel"_s, u"Do not trust this server"_s);
    cmdCancel->setDefault(true);
}

void frmTrust::LayOut() {
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdTrust);
    buttons->addWidget(cmdCancel);
    auto *all = new QVBoxLayout(this);
    all->addWidget(txtCertificate, 1);
    all->addLayout(buttons);
    const QFontMetrics letters = fontMetrics();
    resize(QSize(letters.averageCharWidth() * 80, letters.height() * 17).boundedTo(QSize(1000, 700)));
    cmdCancel->setFocus();
}

void frmTrust::ConnectControls() {
    connect(cmdTrust, &QPushButton::clicked, this, &frmTrust::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &frmTrust::reject);
}

bool AskTrustInWindow(const net::DistrustedServer &server) {
    frmTrust window(server, BoxParent());
    KeepAbove(window);
    return window.exec() == QDialog::Accepted;
}

} // namespace varlo
