#include "core/WordWrap.h"

#include "core/Literals.h"
#include "core/Reporting.h"

#include <QStringView>

#include <algorithm>

namespace varlo {

namespace {

// Walks over the text line by line and copies it, so that no inserted break ever moves the rest of the text.
// What is before `line_` is never looked at again: a line's window begins where the line does.
class Wrapper {
public:
    Wrapper(QStringView text, qsizetype width) : text_(text), width_(width), nextBreak_(FindBreak(0)) {
        wrapped_.reserve(text.size() + text.size() / width + 2);
    }

    QString Run() {
        while (line_ < text_.size() - width_ && Step()) {
        }
        return wrapped_.append(text_.sliced(copied_));
    }

private:
    // Ends one line. False when nothing is left to break.
    bool Step() {
        if (nextBreak_ < line_)
            nextBreak_ = FindBreak(line_);
        if (nextBreak_ <= line_ + width_) // directly behind the last column counts, too
            return SkipBreak();
        // Wanted: the last column is the latest place for a break, so that a broken line is one character
        // shorter than one that ended by itself.
        const qsizetype blank = text_.sliced(line_, width_).lastIndexOf(u' ');
        return blank >= 0 ? BreakAt(line_ + blank) : EndLongWord();
    }

    // A word longer than the line stays whole; the line ends at the first blank or break behind it.
    bool EndLongWord() {
        const qsizetype column = line_ + width_;
        const qsizetype blank = text_.sliced(column, nextBreak_ - column).indexOf(u' ');
        if (blank >= 0)
            return BreakAt(column + blank);
        return nextBreak_ < text_.size() && SkipBreak();
    }

    bool SkipBreak() {
        line_ = nextBreak_ + 2;
        return true;
    }

    bool BreakAt(qsizetype blank) {
        wrapped_.append(text_.sliced(copied_, blank - copied_)).append(QStringView(u"\r\n"));
        copied_ = line_ = blank + 1;
        return true;
    }

    // The first CR LF at or behind `from`, or the end of the text. A search for the single CR first runs many
    // characters at a time.
    qsizetype FindBreak(qsizetype from) const {
        qsizetype at = text_.indexOf(u'\r', from);
        while (at >= 0 && !(at + 1 < text_.size() && text_[at + 1] == u'\n'))
            at = text_.indexOf(u'\r', at + 1);
        return at >= 0 ? at : text_.size();
    }

    const QStringView text_;
    const qsizetype width_;
    QString wrapped_;
    qsizetype copied_ = 0;    // the text before it is in wrapped_
    qsizetype line_ = 0;      // where the current line begins
    qsizetype nextBreak_ = 0; // a CR LF at or behind line_, or one that has to be looked for again
};

} // namespace

QString WrapAtBlanks(const QString &text, qint16 width) {
    if (text.isEmpty())
        return {};
    if (width < 1)
        throw RuntimeError(InvalidProcedureCall);
    return text.size() <= width ? text : Wrapper(text, width).Run();
}

QString WordWrap(Session &session, const QString &text, qint16 width) {
    QString wrapped;
    Trapped(session, u"Public.WordWrap"_s, [&] { wrapped = WrapAtBlanks(text, width); });
    return wrapped;
}

} // namespace varlo
