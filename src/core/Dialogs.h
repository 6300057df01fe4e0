// The one door through which every box, question and file chooser goes, so that tests can answer them.
#pragma once

#include "core/Literals.h"

#include <QString>
#include <QUrl>

namespace varlo {

inline const QString kApplicationTitle = u"Varlo Pro"_s;
inline const QString kErrorTitle = u"Varlo Pro Error"_s;

enum class BoxIcon { None, Information, Exclamation, Critical, Question };
enum class BoxButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Cancel, Yes, No };

// Every text is plain text: markup in it is shown as it stands.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    // Shows a message box and waits for its answer. Closing the box counts as Cancel or Ok; a question with
    // only Yes and No cannot be closed. When the program ends under it: Cancel, No or Ok.
    virtual BoxAnswer MsgBox(const QString &text, BoxButtons buttons = BoxButtons::Ok,
                             BoxIcon icon = BoxIcon::None, const QString &title = kApplicationTitle) = 0;

    // A question with Yes and No before something is gone for good: Enter alone says No.
    virtual BoxAnswer AskToDestroy(const QString &text, BoxIcon icon = BoxIcon::Question,
                                   const QString &title = kApplicationTitle) {
        return MsgBox(text, BoxButtons::YesNo, icon, title);
    }

    // Asks for one line of text; empty when cancelled.
    virtual QString InputBox(const QString &prompt, const QString &title, const QString &text = {}) = 0;

    // File choosers; the full path, empty when cancelled. `filter` is pairs of description and pattern,
    // separated by NUL characters.
    virtual QString OpenFileBox(const QString &filter, const QString &folder, const QString &title) = 0;
    virtual QString SaveFileBox(const QString &filter, const QString &folder, const QString &title) = 0;
    virtual QString FolderBox(const QString &folder, const QString &title) = 0;

    // Hands a file, folder or address to the desktop. False when nothing there opens it.
    virtual bool OpenUrl(const QUrl &url) = 0;

    // The mouse pointer of the whole program: the hourglass, or back to the default.
    virtual void SetHourglass(bool on) = 0;
};

// The hourglass as long as it lives.
class Hourglass {
public:
    explicit Hourglass(Dialogs &boxes) : boxes_(boxes) { boxes_.SetHourglass(true); }
    ~Hourglass() { boxes_.SetHourglass(false); }
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;

private:
    Dialogs &boxes_;
};

} // namespace varlo
