// The console: a running transcript of the status messages of the whole run.
#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>

class QPlainTextEdit;

namespace varlo {

struct Session;

// Listens to `session.Status` from the moment it is made, and keeps the last kMostLines lines. While it is hidden, lines are only collected; they
// are put into the text box when it is shown, and while it is visible by a short timer, so that a run of ten
// thousand messages does not lay out ten thousand times.
class frmConsole : public QWidget {
    Q_OBJECT

public:
    // What is older is in the status log, if anywhere.
    static constexpr int kMostLines = 100'000;
    // In characters: several times what that many lines usually are, but a server can make them long.
    static constexpr qsizetype kMostText = qsizetype(32) * 1024 * 1024;

    explicit frmConsole(Session &session, QWidget *parent = nullptr);

    // Shows the window, modeless and in front, with the caret at the end of its text.
    void ShowAtEnd();

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    // Refused while the program runs: the window is hidden instead, so that the transcript survives.
    void closeEvent(QCloseEvent *event) override;

private:
    void CreateControls();
    void LayOut();
    void ConnectControls();

    void Collect(const QString &line);
    void Flush();
    void ForgetOldest();
    void txtConsole_Change();

    Session &session_;
    QPlainTextEdit *txtConsole = nullptr;
    QTimer flushTimer_{this};
    QString collected_; // lines with their ends, not yet in the text box
    qsizetype collectedLines_ = 0;
};

} // namespace varlo
