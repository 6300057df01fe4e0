// A page of the Preferences window: heading, description, groups, and fields that are tied to settings.
#pragma once

#include "core/Preferences.h"

#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

namespace varlo {

// The places of the pages in the window; each ends the names of its page's parts ("picFrame_1").
namespace Page {
enum Number { General, Sending, Receiving, Notification, Compose };
}

// The numbers that end the names of the groups' parts ("fraFrame_3"). A group keeps its number for good,
// wherever it stands: a new one takes the next that is free.
namespace Group {
enum Number {
    PendingListProcessing = 0,
    Logging = 1,
    SendingAccount = 2,
    Formatting = 3,
    ReceivingAccount = 4,
    ReceivingOptions = 5,
    Subscriptions = 6,
    Unsubscriptions = 7,
    Signature = 8,
    SendingSecurity = 9,
    ReceivingSecurity = 10,
    Passwords = 11,
};
}

// A page makes its controls, lays them out and ties each to the member of Preferences that it edits.
class PreferencesPage : public QWidget {
    Q_OBJECT

public:
    PreferencesPage(Page::Number number, const QString &title, const QString &description);

    // Shows the values in the tied fields.
    void Fill(const Preferences &values) const;

    // Takes what is typed, field by field in the order in which they were tied. Throws RuntimeError 13 or 6 at
    // the first number that cannot be converted; what was taken before stays in `values`.
    void Take(Preferences &values) const;

    // The field that Take fails at, or nothing.
    QWidget *FieldThatIsNoNumber() const;
    // The first field that holds more than comes back from the file, or nothing.
    QWidget *FieldThatIsTooLong() const;

Q_SIGNALS:
    // The operator wants to see whether the account that is typed works.
    void TestWanted();

protected:
    // A frame with that title at the end of the page; returns what its contents are laid out in.
    QWidget *AddGroup(Group::Number number, const QString &title);
    // The button of TestWanted.
    QPushButton *NewTestButton(const char *name, const QString &tip);
    // Ends a page without a field that grows.
    void AddStretch();

    // A text is kept without the blanks around it, which nobody types on purpose; a password as it is.
    void Tie(QCheckBox *box, int Preferences::*member);
    void Tie(QComboBox *choice, int Preferences::*member);
    void Tie(QLineEdit *line, QString Preferences::*member);
    void Tie(QLineEdit *line, qint16 Preferences::*member);
    void Tie(QPlainTextEdit *box, QString Preferences::*member);

private:
    struct Field {
        QWidget *Control;
        std::function<void(const Preferences &)> Show;
        std::function<void(Preferences &)> Take;
        std::function<qsizetype()> Length; // of the text in the file; nothing for what is no text
    };

    QVBoxLayout *layout_;
    std::vector<Field> fields_;
};

} // namespace varlo
