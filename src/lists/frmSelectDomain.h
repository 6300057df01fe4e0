// The dialog that picks domains of the open list.
#pragma once

#include "lists/Domains.h"

#include <QDialog>

class QListWidget;
class QPushButton;

namespace varlo {

class frmSelectDomain : public QDialog {
    Q_OBJECT

public:
    // `domains` become the rows, in their order, each with its count; none is selected.
    explicit frmSelectDomain(const QList<DomainCount> &domains, QWidget *parent = nullptr);

    QSet<QString> SelectedDomains() const;

private:
    void CreateControls();
    void LayOut();

    const QList<DomainCount> domains_;

    QListWidget *lstDomains = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};

} // namespace varlo
