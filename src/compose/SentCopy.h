// The copy of a sent message that is kept as a text file in the profile's "sent" folder.
#pragma once

#include "core/Session.h"

#include <QDateTime>
#include <QString>

namespace varlo {

// "26.03.04 @ 0506 - subject.txt": the moment and the subject without what a file name cannot hold. At most
// 248 bytes long; a longer subject loses its end.
QString SentCopyName(const QString &subject, const QDateTime &moment);

// The text of the copy: the headers, an empty line and the message as typed.
QString SentCopyText(const Session &session, const QString &toName, const QString &subject,
                     const QString &text);

// Writes the copy as one step; one of the same minute and subject is replaced. Throws RuntimeError (76 when
// the "sent" folder is gone, 61, 70).
void WriteSentCopy(const Session &session, const QString &toName, const QString &subject,
                   const QString &text);

} // namespace varlo
