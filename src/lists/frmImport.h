// The window that takes addresses out of any text and puts them on the Pending list.
#pragma once

#include "core/Session.h"
#include "lists/ImportReview.h"
#include "lists/ImportSearch.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

class QComboBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace varlo {

class ImportText;
class NoticeBar;
class ReviewTable;
class StatusLabel;
struct ImportData;

// Shown with exec(). What is pasted, typed, dropped or opened is looked through at once, in slices between the events;
// OK puts what is new on the Pending list, and nothing is touched before.
class frmImport : public QDialog {
    Q_OBJECT

public:
    frmImport(Session &session, ListStore &lists, QWidget *parent = nullptr);

    // As if it were pasted.
    void Take(const ImportData &given);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void CreateControls();
    void CreateReview();
    void CreateButtons();
    void LayOutControls();
    void ConnectControls();
    void ConnectSearch();

    void TakeFiles(const QStringList &paths);
    void TakeLongText(const QString &text);
    void ShowSources();
    void StartSearch();
    void tmrImport_Timer();
    void EndSearch();
    QString CountsText() const;
    void UpdateControls();
    void cmdImportFile_Click();
    void cmdImportLeaveOut_Click();
    void cmdImportStop_Click();
    void cmdOK_Click();

    Session &session_;
    ListStore &lists_;
    ImportSearch search_;
    ImportReview review_;
    bool isStopped_ = false; // before everything was looked through
    QElapsedTimer sinceStart_;
    QTimer tmrTyped_;  // runs from a change of the text to a moment without one
    QTimer tmrImport_; // runs while something is to be looked through
    NoticeBar *barImport = nullptr;
    QLabel *lblImportText = nullptr;
    ImportText *txtImport = nullptr;
    QPushButton *cmdImportFile = nullptr;
    QListWidget *lstImportFiles = nullptr;
    QPushButton *cmdImportLeaveOut = nullptr;
    StatusLabel *lblImportCounts = nullptr;
    QProgressBar *prgImport = nullptr;
    QPushButton *cmdImportStop = nullptr;
    QLabel *lblImportShow = nullptr;
    QComboBox *cmbImportShow = nullptr;
    ReviewTable *tblImport = nullptr;
    QLabel *lblImportAs = nullptr;
    QComboBox *cmbImportAs = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};

} // namespace varlo
