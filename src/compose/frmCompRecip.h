// The dialog that picks several mailing lists as recipients.
#pragma once

#include <QDialog>
#include <QStringList>

class QAction;
class QListWidget;
class QMenu;
class QPushButton;

namespace varlo {

class frmCompRecip : public QDialog {
    Q_OBJECT

public:
    // `listNames` become the rows, in their order; none is selected.
    explicit frmCompRecip(const QStringList &listNames, QWidget *parent = nullptr);

    // The names of the selected rows, in row order.
    QStringList SelectedLists() const;

private:
    void CreateControls();
    void LayOut();
    void ConnectControls();

    void mnuSelectNone_Click();
    void mnuSelectAll_Click();
    void mnuSelectInvert_Click();

    const QStringList listNames_;

    QListWidget *lstRecipients = nullptr;
    QPushButton *cmdListFunctions = nullptr;
    QMenu *mnuListFunctions = nullptr;
    QAction *mnuSelectNone = nullptr;
    QAction *mnuSelectAll = nullptr;
    QAction *mnuSelectInvert = nullptr;
    QPushButton *cmdOK = nullptr;
};

} // namespace varlo
