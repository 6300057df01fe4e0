// A door to boxes that answers from a script and keeps what was shown.
#pragma once

#include "core/Dialogs.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

namespace varlo::test {

struct ShownBox {
    QString Title;
    QString Text;
    BoxButtons Buttons = BoxButtons::Ok;
    BoxIcon Icon = BoxIcon::None;

    bool operator==(const ShownBox &) const = default;
};

void PrintTo(const ShownBox &box, std::ostream *out);

// Boxes are answered from `Answers`, in order; without one left, an Ok box is answered with Ok and any other
// fails the test. Input boxes take from `Inputs`, file choosers from `Files` (nothing left: cancelled, as a
// failure).
class ScriptedDialogs : public Dialogs {
public:
    ~ScriptedDialogs() override;

    BoxAnswer MsgBox(const QString &text, BoxButtons buttons, BoxIcon icon, const QString &title) override;
    BoxAnswer AskToDestroy(const QString &text, BoxIcon icon, const QString &title) override;
    QString InputBox(const QString &prompt, const QString &title, const QString &text) override;
    QString OpenFileBox(const QString &filter, const QString &folder, const QString &title) override;
    QString SaveFileBox(const QString &filter, const QString &folder, const QString &title) override;
    QString FolderBox(const QString &folder, const QString &title) override;
    bool OpenUrl(const QUrl &url) override;
    void SetHourglass(bool on) override { Hourglass = on; }

    // The texts of all boxes shown so far.
    QStringList Texts() const;

    struct Input {
        QString Prompt;
        QString Title;
        QString Default;
        bool operator==(const Input &) const = default;
    };

    std::deque<BoxAnswer> Answers;
    std::deque<QString> Inputs;
    std::deque<QString> Files;
    std::vector<ShownBox> Shown;
    QStringList Destroying; // the texts of the questions that have No as their default
    std::vector<Input> Asked;
    std::vector<Input> FileBoxes; // Prompt holds the filter, Default the folder
    std::vector<QUrl> Opened;
    bool Hourglass = false;
    std::function<void(const QString &text)> OnBox;    // called while a message box is open
    std::function<void(const QString &title)> OnInput; // called while an input box is open

private:
    QString NextFile(const QString &filter, const QString &folder, const QString &title);
};

} // namespace varlo::test
