#include "compose/SentCopy.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/ProfileLayout.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

namespace varlo {

namespace {

// File systems end a name at 255 bytes, and the temporary file that a safe write begins with adds seven to it
// (".XXXXXX"). A subject has no limit: without a cut, a long one would fail the copy and with it the send.
constexpr qsizetype kLongestName = 255 - 7;

// Control characters do not come from a keyboard but may be pasted; no system can be relied on to take them.
bool FitsFileName(QChar c) {
    return c >= u' ' && c != u'\x7F' && !kForbiddenInNames.contains(c);
}

QString CutToBytes(QString text, qsizetype bytes) {
    text.truncate(bytes); // no character takes less than one byte
    while (text.toUtf8().size() > bytes || (!text.isEmpty() && text.back().isHighSurrogate()))
        text.chop(1);
    return text;
}

} // namespace

QString SentCopyName(const QString &subject, const QDateTime &moment) {
    const QString begin = moment.toString(u"yy.MM.dd @ HHmm - "_s);
    const QString end = u".txt"_s;
    QString name;
    for (QChar c : subject)
        if (FitsFileName(c))
            name += c;
    return begin + CutToBytes(name, kLongestName - begin.size() - end.size()) + end;
}

QString SentCopyText(const Session &session, const QString &toName, const QString &subject,
                     const QString &text) {
    return u"From: "_s + session.Prefs.SMTPEmail + u"\r\nTo: "_s + toName + u"\r\nSubject: "_s + subject +
           u"\r\n\r\n"_s + text + u"\r\n"_s;
}

void WriteSentCopy(const Session &session, const QString &toName, const QString &subject,
                   const QString &text) {
    WriteFile(ProfileLayout::SentCopy(session, SentCopyName(subject, session.Now())),
              EncodeText(SentCopyText(session, toName, subject, text)));
}

} // namespace varlo
