// The window that sets two lists side by side.
#pragma once

#include "core/Session.h"
#include "lists/ListComparison.h"

#include <QDialog>
#include <QStringListModel>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QVBoxLayout;

namespace varlo {

class ListStore;
class NameChooser;
class NoticeBar;
class StatusLabel;

// Shown with exec(). The open list is taken as it stands, unsaved changes included; others from their files. The
// window stays for more than one use of what it shows; a bar tells what was done.
class frmCompare : public QDialog {
    Q_OBJECT

public:
    frmCompare(Session &session, ListStore &lists, QWidget *parent = nullptr);

Q_SIGNALS:
    // There is one more list.
    void ListMade();

private:
    void CreateControls();
    void CreateParts();
    void CreateUses();
    void LayOutControls();
    void LayOutUses(QVBoxLayout *column);
    void ConnectControls();

    QStringList EntriesOf(const QString &name);
    void Compare();
    QStringList Chosen() const;
    void UpdateControls();
    void cmdCompareSelect_Click();
    void cmdComparePending_Click();
    void cmdCompareMake_Click();

    Session &session_;
    ListStore &lists_;
    ListComparison comparison_;
    NoticeBar *barCompare = nullptr;
    QLabel *lblCompareList[2] = {};
    NameChooser *cmbCompareList[2] = {};
    std::array<QCheckBox *, kParts> chkCompare{};
    std::array<QListView *, kParts> lstCompare{};
    std::array<QStringListModel, kParts> parts_;
    StatusLabel *lblCompareChosen = nullptr;
    QPushButton *cmdCompareSelect = nullptr;
    QPushButton *cmdComparePending = nullptr;
    QLabel *lblCompareAs = nullptr;
    QComboBox *cmbCompareAs = nullptr;
    QLabel *lblCompareName = nullptr;
    QLineEdit *txtCompareName = nullptr;
    QPushButton *cmdCompareMake = nullptr;
    QPushButton *cmdClose = nullptr;
};

} // namespace varlo
