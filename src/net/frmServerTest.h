// Shows a test of a server while it runs: step by step what worked, and the dialogue.
#pragma once

#include "net/ServerTest.h"

#include <QDialog>

#include <functional>
#include <memory>

class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace varlo {

// What a test needs of those who know the account. All but Make may be asked again and again; after TrustIt and
// AllowIt said yes the next test is made with what they have stored.
struct ServerTestDoor {
    std::function<std::unique_ptr<net::ServerTest>()> Make;
    // The certificate of a failed test is shown; true when the operator trusts it for this server, and that is stored.
    std::function<bool(const net::TestResult &result)> TrustIt;
    // The secret may cross the line to this server unencrypted: stored.
    std::function<void()> AllowIt;
};

// Begins at once; nothing in it waits, and closing it at any time ends the test.
class frmServerTest : public QDialog {
    Q_OBJECT

public:
    frmServerTest(const QString &title, ServerTestDoor door, QWidget *parent = nullptr);

private:
    void CreateControls();
    void LayOut();
    void ConnectControls();
    void Begin();
    void AddStep(const QString &text);
    void AddLine(net::ServerTest::Side side, const QString &text);
    void Test_Finished(const net::TestResult &result);
    void cmdTrust_Click();
    void cmdAllow_Click();

    const ServerTestDoor door_;
    std::unique_ptr<net::ServerTest> test_;
    net::TestResult result_;
    QListWidget *lstSteps = nullptr;
    QPlainTextEdit *txtDialogue = nullptr;
    QPushButton *cmdTrust = nullptr;
    QPushButton *cmdAllow = nullptr;
    QPushButton *cmdClose = nullptr;
};

} // namespace varlo
