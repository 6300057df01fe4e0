// The window "History": the versions of a list, what tells them apart, and the way back to one.
#pragma once

#include "history/Timeline.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTreeWidget;

namespace varlo {

class NameChooser;
class StatusLabel;

class frmHistory : public QDialog {
    Q_OBJECT

public:
    // `lists` are the lists that there are; those that were deleted and left a history are offered behind them.
    // Shows the history of `current` first.
    frmHistory(Session &session, const QStringList &lists, const QString &current, QWidget *parent = nullptr);

Q_SIGNALS:
    // The operator wants what a version held in the place of what the list holds. The window closes then.
    void BringBackWanted(const QString &list, const QStringList &entries);

private:
    void CreateControls();
    void CreateButtons();
    void LayOutControls();
    void ConnectControls();
    void FillLists(const QString &current);

    void cmbHistoryList_Click();
    void tblHistory_Click();
    void cmdHistoryFind_Click();
    void cmdHistoryBringBack_Click();
    void chkHistory_Click();

    void AddRow(const History::TimelineRow &row);
    void ShowDifference(const History::TimelineRow &older, const History::TimelineRow &newer);
    void Tell(const QString &caption, const QStringList &lines);
    QString ChosenList() const;
    // The selected rows, the oldest first.
    QList<History::TimelineRow> SelectedRows() const;

    Session &session_;
    const QStringList lists_;
    QList<History::TimelineRow> rows_; // the oldest first; shown the other way round
    QLabel *lblHistoryList = nullptr;
    NameChooser *cmbHistoryList = nullptr;
    QTreeWidget *tblHistory = nullptr;
    StatusLabel *lblHistoryDifference = nullptr;
    QPlainTextEdit *txtHistoryDifference = nullptr;
    QLabel *lblHistoryFind = nullptr;
    QLineEdit *txtHistoryFind = nullptr;
    QPushButton *cmdHistoryFind = nullptr;
    QCheckBox *chkHistory = nullptr;
    QPushButton *cmdHistoryBringBack = nullptr;
    QPushButton *cmdHistoryClose = nullptr;
};

} // namespace varlo
