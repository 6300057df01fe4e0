// Where the controls of the Preferences window stand.

#include "core/Literals.h"
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
    control->setObjectName(u"%1_%2"_s.arg(QString::fromLatin1(name)).arg(index));
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
    QVBoxLayout *page = AddPage(0, u"General"_s, u"Miscellaneous settings"_s);
    auto *pending = NewLayout<QVBoxLayout>(AddGroup(page, u"Pending List Processing"_s));
    pending->addWidget(chkNotify);
    auto *logging = NewLayout<QVBoxLayout>(AddGroup(page, u"Logging"_s));
    logging->addWidget(chkLogStatus);
    logging->addWidget(chkLogEmails);
    auto *maintenance = new QHBoxLayout;
    maintenance->addWidget(NewLabel(u"&Maintenance:"_s, cmbMaintenance));
    maintenance->addWidget(cmbMaintenance);
    maintenance->addWidget(cmdLogGo);
    maintenance->addStretch();
    logging->addLayout(maintenance);
    page->addStretch();
}

void frmOptions::LayOutSending() {
    QVBoxLayout *page = AddPage(1, u"E-mail Sending"_s, u"Configure your SMTP e-mail account"_s);
    QFormLayout *rows = NewRows(AddGroup(page, u"Account"_s));
    AddServer(rows, u"SMTP &server:"_s, txtSMTPServer, txtSMTPPort);
    rows->addRow(NewLabel(u"Your &name:"_s, txtSMTPFrom), txtSMTPFrom);
    rows->addRow(NewLabel(u"Your &e-mail:"_s, txtSMTPEmail), txtSMTPEmail);
    auto *formatting = NewLayout<QHBoxLayout>(AddGroup(page, u"Formatting"_s));
    formatting->addWidget(NewLabel(u"&Wrap messages to"_s, txtSMTPWrap));
    formatting->addWidget(txtSMTPWrap);
    formatting->addWidget(NewLabel(u"characters per line"_s, nullptr));
    formatting->addWidget(cmdWrapDefault);
    formatting->addStretch();
    page->addStretch();
}

void frmOptions::LayOutReceiving() {
    QVBoxLayout *page = AddPage(2, u"E-mail Receiving"_s, u"Configure your POP3 e-mail account"_s);
    QFormLayout *rows = NewRows(AddGroup(page, u"Account"_s));
    AddServer(rows, u"POP3 &server:"_s, txtPOPServer, txtPOPPort);
    rows->addRow(NewLabel(u"&Username:"_s, txtPOPUsername), txtPOPUsername);
    rows->addRow(NewLabel(u"Pass&word:"_s, txtPOPPassword), txtPOPPassword);
    auto *extras = NewLayout<QVBoxLayout>(AddGroup(page, u"Options"_s));
    extras->addWidget(chkPOPDeleteAll);
    page->addStretch();
}

void frmOptions::LayOutNotification() {
    QVBoxLayout *page =
        AddPage(3, u"E-mail Notification"_s, u"Settings for notifying subscribers by e-mail"_s);
    AddNotification(page, u"Subscriptions"_s, {u"&Subject:"_s, u"&Body:"_s}, txtNotifySubSubject,
                    txtNotifySubBody);
    AddNotification(page, u"Unsubscriptions"_s, {u"S&ubject:"_s, u"B&ody:"_s}, txtNotifyUnsubSubject,
                    txtNotifyUnsubBody);
}

void frmOptions::LayOutCompose() {
    QVBoxLayout *page = AddPage(4, u"Compose"_s, u"Compose window settings"_s);
    auto *signature = NewLayout<QVBoxLayout>(AddGroup(page, u"Signature"_s));
    signature->addWidget(chkSignatureOn);
    signature->addWidget(NewLabel(u"Signature &text:"_s, txtSignature));
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
    row->addWidget(NewLabel(u"&Port:"_s, port));
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
