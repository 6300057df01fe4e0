#include "pop3/clsMessage.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "pop3/TrimBlanks.h"

#include <QStringTokenizer>

namespace varlo {

bool clsMessage::CreateFromText(const QString &strMessage) {
    const qsizetype emptyLine = strMessage.indexOf(u"\r\n\r\n"_s);
    if (emptyLine < 0)
        return false;
    To16Bit(emptyLine + 1); // positions count from 1; a colon further on in a line cannot lie beyond this one
    headers_ = strMessage.left(emptyLine);
    for (const QStringView line : QStringTokenizer(headers_, u"\r\n"))
        TakeLine(line);
    return true;
}

// A folded line begins with white space, so its "name" is none of the three and the value it continues stays
// short: wanted, a subject of two lines is no request.
void clsMessage::TakeLine(QStringView line) {
    const qsizetype colon = line.indexOf(u':');
    if (colon < 0)
        return;
    const QString name = line.first(colon).toString().toLower(); // not trimmed: "from :" is another name
    const QStringView value = line.sliced(colon + 1);
    if (name == u"message-id")
        messageID_ = TrimBlanks(value);
    else if (name == u"from")
        from_ = TrimBlanks(value);
    else if (name == u"subject")
        subject_ = TrimBlanks(value);
}

} // namespace varlo
