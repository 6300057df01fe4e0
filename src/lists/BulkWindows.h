// Opens the windows that take addresses in and out by the thousand, for the menu, for Ctrl+V in a list box and for
// what is dropped on the lists.
#pragma once

#include "core/Session.h"
#include "lists/ImportText.h"

namespace varlo {

class ListStore;

class BulkWindows : public QObject {
    Q_OBJECT

public:
    // `page` holds the list boxes; the windows stand over it.
    BulkWindows(Session &session, ListStore &lists, QWidget &page);

    void Import();
    // True when the operator has taken the addresses.
    bool ImportText(const QString &text);
    void Export();
    void Compare();
    // While the lists are not for editing nothing is taken.
    void SetLocked(bool locked) { isLocked_ = locked; }

Q_SIGNALS:
    // There is one more list.
    void ListMade();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool ImportFrom(const ImportData &data);
    bool MayImport() const;
    void Paste();

    Session &session_;
    ListStore &lists_;
    QWidget &page_;
    bool isLocked_ = false;
};

} // namespace varlo
