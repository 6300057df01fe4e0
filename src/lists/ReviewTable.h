// The table of what an import has found.
#pragma once

#include <QTableView>

namespace varlo {

// Enter and F2 correct the address of the current row where it can be corrected; Tab leaves the table.
class ReviewTable : public QTableView {
    Q_OBJECT

public:
    explicit ReviewTable(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace varlo
