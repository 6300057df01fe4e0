// The recipients of a message: read from the lists that the operator chooses in the drop-down `cmbTo`.
#pragma once

#include "core/Session.h"

#include <QObject>
#include <QStringList>

#include <functional>

namespace varlo {

// What a row of `cmbTo` stands for. The rows are the lists, then the others in this order.
enum class RecipientSource { OneList, Separator, AllLists, SelectLists, CurrentSelection };

// The row `index` of a drop-down with `listCount` lists. A row that is none of them is like the separator.
RecipientSource RecipientSourceAt(qsizetype index, qsizetype listCount);

// The texts of all rows; "Current Selection" is there only when `withSelection`.
QStringList RecipientSourceTexts(const QStringList &listNames, bool withSelection);

// The tooltip that tells of several lists: "a, b".
QString ListNamesText(const QStringList &names);

// "250 Recipients".
QString RecipientCountText(qsizetype count);

// A choice in `cmbTo`, with what the window knows of the main window at that moment.
struct RecipientChoice {
    qsizetype Index = -1;          // the chosen row
    QStringList ListNames;         // every list, in the order of the rows
    QString CurrentListName;       // of the list that is open
    QStringList SelectedAddresses; // the selected rows of the visible list box, from first to last
    // Shows the dialog `frmCompRecip` and returns the lists that are selected when it closes; it sets the
    // tooltip itself.
    std::function<QStringList()> PickLists;
};

// Holds the recipients of one compose window: the lines of the chosen lists as they stand, blank ones and
// repeated ones included, as they were when they were chosen. There is no upper limit.
class Recipients : public QObject {
    Q_OBJECT

public:
    explicit Recipients(Session &session, QObject *parent = nullptr);

    // Replaces the addresses by those of the choice. A list that cannot be read is reported as
    // "Compose.cmbTo" and adds nothing; the others are read all the same. Events are processed: a choice that
    // is made meanwhile wins, and the object may be destroyed.
    void Choose(const RecipientChoice &choice);

    const QStringList &Addresses() const { return addresses_; }

Q_SIGNALS:
    void StatusChanged(const QString &text);  // for the window's own status label
    void ToolTipChanged(const QString &text); // which lists they are, plain text
    void CountChanged(const QString &text);   // "250 Recipients"

private:
    QStringList ListsOf(const RecipientChoice &choice, RecipientSource source);
    void ReadList(const QString &name);
    void Status(const QString &text);

    Session &session_;
    QStringList addresses_;
    int choices_ = 0; // how many were begun
};

} // namespace varlo
