#include "net/frmServerTest.h"

#include "core/Buttons.h"
#include "core/Literals.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace varlo {

namespace {

QLabel *NewLabel(const QString &caption, QWidget *buddy) {
    auto *label = new QLabel(caption);
    label->setBuddy(buddy);
    return label;
}

} // namespace

frmServerTest::frmServerTest(const QString &title, ServerTestDoor door, QWidget *parent)
    : QDialog(parent), door_(std::move(door)) {
    setWindowTitle(title);
    CreateControls();
    LayOut();
    ConnectControls();
    Begin();
}

void frmServerTest::CreateControls() {
    setObjectName(u"frmServerTest"_s);
    lstSteps = new QListWidget;
    lstSteps->setObjectName(u"lstSteps"_s);
    lstSteps->setAccessibleName(u"Steps"_s);
    lstSteps->setWordWrap(true);
    lstSteps->setSelectionMode(QAbstractItemView::SingleSelection);
    txtDialogue = new QPlainTextEdit;
    txtDialogue->setObjectName(u"txtDialogue"_s);
    txtDialogue->setReadOnly(true);
    txtDialogue->setTabChangesFocus(true);
    txtDialogue->setMaximumBlockCount(1000); // a server may talk for ever
    cmdTrust = NewButton(nullptr, "cmdTrust", u"Show &Certificate..."_s,
                         u"Look at the certificate of the server, and trust it"_s);
    cmdAllow = NewButton(nullptr, "cmdAllow", u"&Allow Without Encryption"_s,
                         u"Let the password go to this server on a line that others can read"_s);
    cmdClose = NewButton(nullptr, "cmdClose", u"C&lose"_s, u"End the test"_s);
    cmdClose->setDefault(true);
}

void frmServerTest::LayOut() {
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdTrust);
    buttons->addWidget(cmdAllow);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addWidget(NewLabel(u"&Steps:"_s, lstSteps));
    all->addWidget(lstSteps, 1);
    all->addWidget(NewLabel(u"&Dialogue:"_s, txtDialogue));
    all->addWidget(txtDialogue, 1);
    all->addLayout(buttons);
    const QFontMetrics letters = fontMetrics();
    resize(QSize(letters.averageCharWidth() * 80, letters.height() * 24).boundedTo(QSize(1000, 560)));
}

void frmServerTest::ConnectControls() {
    connect(cmdTrust, &QPushButton::clicked, this, &frmServerTest::cmdTrust_Click);
    connect(cmdAllow, &QPushButton::clicked, this, &frmServerTest::cmdAllow_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmServerTest::close);
}

void frmServerTest::Begin() {
    lstSteps->clear();
    txtDialogue->clear();
    cmdTrust->hide();
    cmdAllow->hide();
    test_ = door_.Make();
    connect(test_.get(), &net::ServerTest::Step, this, &frmServerTest::AddStep);
    connect(test_.get(), &net::ServerTest::Line, this, &frmServerTest::AddLine);
    connect(test_.get(), &net::ServerTest::Finished, this, &frmServerTest::Test_Finished);
    test_->Start();
}

void frmServerTest::AddStep(const QString &text) {
    lstSteps->addItem(text);
    lstSteps->setCurrentRow(lstSteps->count() - 1);
}

void frmServerTest::AddLine(net::ServerTest::Side side, const QString &text) {
    txtDialogue->appendPlainText((side == net::ServerTest::Side::Client ? u"> "_s : u"< "_s) + text);
}

void frmServerTest::Test_Finished(const net::TestResult &result) {
    result_ = result;
    AddStep(result.Trouble.isEmpty() ? u"Everything worked."_s : u"It did not work. "_s + result.Trouble);
    cmdTrust->setVisible(result.Distrusted.has_value());
    cmdAllow->setVisible(result.NeedsClearText);
}

void frmServerTest::cmdTrust_Click() {
    if (door_.TrustIt(result_))
        Begin();
}

void frmServerTest::cmdAllow_Click() {
    door_.AllowIt();
    Begin();
}

} // namespace varlo
