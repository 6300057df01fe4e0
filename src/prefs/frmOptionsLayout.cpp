// Where the controls of the Preferences window stand.

#include "prefs/frmOptions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace varlo {

namespace {

template<typename Control> Control *Numbered(const char *name, int index) {
    auto *control = new Control;
    control->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(name)).arg(index));
    return control;
}

QLabel *NewLabel(const QString &caption, QWidget *buddy) {
    auto *label = new QLabel(caption);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    return label;
}

void Enlarge(QLabel *label, double factor) {
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(true);
    label->setFont(font);
}

// The layout of a group's inner container; the frame around it has margins enough.
template<typename Layout> Layout *NewLayout(QWidget *inner) {
    auto *layout = new Layout(inner);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

QFormLayout *NewRows(QWidget *inner) {
    auto *rows = NewLayout<QFormLayout>(inner);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return rows;
}

} // namespace

void frmOptions::LayOut() {
    LayOutGeneral();
    LayOutSending();
    LayOutReceiving();
    LayOutNotification();
    LayOutCompose();
    Enlarge(lblTitle, 1.2);
    lstOptions->setFixedWidth(lstOptions->sizeHintForColumn(0) + 2 * lstOptions->frameWidth() + 24);
    for (int i = 0; i < lstOptions->count(); ++i)
        lstOptions->item(i)->setSizeHint(QSize(0, lstOptions->fontMetrics().height() + 12));
    auto *upper = new QHBoxLayout;
    upper->setSpacing(12);
    upper->addWidget(lstOptions);
    upper->addWidget(pages_, 1);
    auto *lower = new QHBoxLayout;
    lower->addWidget(lblTitle);
    lower->addStretch();
    lower->addWidget(cmdOK);
    lower->addWidget(cmdCancel);
    auto *all = new QVBoxLayout(this);
    all->addLayout(upper, 1);
    all->addLayout(lower);
    setSizeGripEnabled(true);
    resize(
        sizeHint().boundedTo(QSize(700, 500))); // the text boxes would ask for more than a small screen has
}

void frmOptions::LayOutGeneral() {
    QVBoxLayout *page = AddPage(0, QStringLiteral("General"), QStringLiteral("Miscellaneous settings"));
    auto *pending = NewLayout<QVBoxLayout>(AddGroup(page, QStringLiteral("Pending List Processing")));
    pending->addWidget(chkNotify);
    auto *logging = NewLayout<QVBoxLayout>(AddGroup(page, QStringLiteral("Logging")));
    logging->addWidget(chkLogStatus);
    logging->addWidget(chkLogEmails);
    auto *maintenance = new QHBoxLayout;
    maintenance->addWidget(NewLabel(QStringLiteral("&Maintenance:"), cmbMaintenance));
    maintenance->addWidget(cmbMaintenance);
    maintenance->addWidget(cmdLogGo);
    maintenance->addStretch();
    logging->addLayout(maintenance);
    page->addStretch();
}

void frmOptions::LayOutSending() {
    QVBoxLayout *page =
        AddPage(1, QStringLiteral("E-mail Sending"), QStringLiteral("Configure your SMTP e-mail account"));
    QFormLayout *rows = NewRows(AddGroup(page, QStringLiteral("Account")));
    AddServer(rows, QStringLiteral("SMTP &server:"), txtSMTPServer, txtSMTPPort);
    rows->addRow(NewLabel(QStringLiteral("Your &name:"), txtSMTPFrom), txtSMTPFrom);
    rows->addRow(NewLabel(QStringLiteral("Your &e-mail:"), txtSMTPEmail), txtSMTPEmail);
    auto *formatting = NewLayout<QHBoxLayout>(AddGroup(page, QStringLiteral("Formatting")));
    formatting->addWidget(NewLabel(QStringLiteral("&Wrap messages to"), txtSMTPWrap));
    formatting->addWidget(txtSMTPWrap);
    formatting->addWidget(NewLabel(QStringLiteral("characters per line"), nullptr));
    formatting->addWidget(cmdWrapDefault);
    formatting->addStretch();
    page->addStretch();
}

void frmOptions::LayOutReceiving() {
    QVBoxLayout *page =
        AddPage(2, QStringLiteral("E-mail Receiving"), QStringLiteral("Configure your POP3 e-mail account"));
    QFormLayout *rows = NewRows(AddGroup(page, QStringLiteral("Account")));
    AddServer(rows, QStringLiteral("POP3 &server:"), txtPOPServer, txtPOPPort);
    rows->addRow(NewLabel(QStringLiteral("&Username:"), txtPOPUsername), txtPOPUsername);
    rows->addRow(NewLabel(QStringLiteral("Pass&word:"), txtPOPPassword), txtPOPPassword);
    auto *extras = NewLayout<QVBoxLayout>(AddGroup(page, QStringLiteral("Options")));
    extras->addWidget(chkPOPDeleteAll);
    page->addStretch();
}

void frmOptions::LayOutNotification() {
    QVBoxLayout *page = AddPage(3, QStringLiteral("E-mail Notification"),
                                QStringLiteral("Settings for notifying subscribers by e-mail"));
    AddNotification(page, QStringLiteral("Subscriptions"),
                    {QStringLiteral("&Subject:"), QStringLiteral("&Body:")}, txtNotifySubSubject,
                    txtNotifySubBody);
    AddNotification(page, QStringLiteral("Unsubscriptions"),
                    {QStringLiteral("S&ubject:"), QStringLiteral("B&ody:")}, txtNotifyUnsubSubject,
                    txtNotifyUnsubBody);
}

void frmOptions::LayOutCompose() {
    QVBoxLayout *page = AddPage(4, QStringLiteral("Compose"), QStringLiteral("Compose window settings"));
    auto *signature = NewLayout<QVBoxLayout>(AddGroup(page, QStringLiteral("Signature")));
    signature->addWidget(chkSignatureOn);
    signature->addWidget(NewLabel(QStringLiteral("Signature &text:"), txtSignature));
    signature->addWidget(txtSignature, 1);
}

QVBoxLayout *frmOptions::AddPage(int index, const QString &title, const QString &description) {
    auto *page = Numbered<QWidget>("picFrame", index);
    auto *layout = NewLayout<QVBoxLayout>(page);
    layout->setSpacing(10);
    auto *heading = Numbered<QLabel>("lblFrameTitle", index);
    heading->setText(title);
    Enlarge(heading, 1.3);
    auto *band = Numbered<QFrame>("shpFrameDesc", index);
    band->setFrameShape(QFrame::StyledPanel);
    band->setAutoFillBackground(true);
    band->setBackgroundRole(QPalette::Base);
    auto *words = Numbered<QLabel>("lblFrameDesc", index);
    words->setText(description);
    words->setForegroundRole(QPalette::Text);
    auto *inBand = new QVBoxLayout(band);
    inBand->addWidget(words);
    layout->addWidget(heading);
    layout->addWidget(band);
    pages_->addWidget(page);
    return layout;
}

QWidget *frmOptions::AddGroup(QVBoxLayout *page, const QString &title) {
    auto *frame = Numbered<QGroupBox>("fraFrame", groups_);
    frame->setTitle(title);
    auto *inner = Numbered<QWidget>("picFrameCont", groups_++);
    auto *layout = new QVBoxLayout(frame);
    layout->addWidget(inner);
    page->addWidget(frame);
    return inner;
}

void frmOptions::AddServer(QFormLayout *rows, const QString &caption, QLineEdit *server, QLineEdit *port) {
    auto *row = new QHBoxLayout;
    row->addWidget(server, 1);
    row->addWidget(NewLabel(QStringLiteral("&Port:"), port));
    row->addWidget(port);
    rows->addRow(NewLabel(caption, server), row);
}

void frmOptions::AddNotification(QVBoxLayout *page, const QString &title, const QStringList &captions,
                                 QLineEdit *subject, QPlainTextEdit *body) {
    auto *rows = NewRows(AddGroup(page, title));
    rows->addRow(NewLabel(captions.first(), subject), subject);
    rows->addRow(NewLabel(captions.last(), body), body);
    body->setMinimumHeight(body->fontMetrics().lineSpacing() * 4);
}

} // namespace varlo
