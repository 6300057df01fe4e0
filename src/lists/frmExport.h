// The window that takes addresses out: as a file or to the clipboard.
#pragma once

#include "core/Session.h"
#include "lists/ListExport.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;

namespace varlo {

class ListStore;

// Shown with exec(). Offers what there is of: the open list, what is selected of it, the Pending list.
class frmExport : public QDialog {
    Q_OBJECT

public:
    frmExport(Session &session, const ListStore &lists, QWidget *parent = nullptr);

private:
    void CreateControls();
    void LayOutControls();
    void ConnectControls();
    void AddChoices();

    QList<ExportEntry> Entries() const;
    ExportForm Form() const;
    void cmdExportSave_Click();
    void cmdExportCopy_Click();

    Session &session_;
    const ListStore &lists_;
    QLabel *lblExportWhat = nullptr;
    QComboBox *cmbExportWhat = nullptr;
    QLabel *lblExportForm = nullptr;
    QComboBox *cmbExportForm = nullptr;
    QPushButton *cmdExportSave = nullptr;
    QPushButton *cmdExportCopy = nullptr;
    QPushButton *cmdCancel = nullptr;
};

} // namespace varlo
