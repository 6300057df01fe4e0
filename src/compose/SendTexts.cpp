#include "compose/SendTexts.h"

#include "compose/LineEnds.h"
#include "core/Literals.h"
#include "core/modPublic.h"

namespace varlo {

QString SendingText(qsizetype index, qsizetype count) {
    return u"Sending message "_s + QString::number(index + 1) + u'/' + QString::number(count);
}

// Wanted: the percentage counts against the last index, so that the last recipient is sent to at 100%, while
// the estimate counts recipients.
int PercentComplete(qsizetype index, qsizetype count) {
    return count > 1 ? static_cast<int>(100 * index / (count - 1)) : 0;
}

QString ProgressCaption(qint64 elapsed, qsizetype index, qsizetype count) {
    const qint64 remaining = elapsed * (count - (index + 1)) / (index + 1);
    const QString suffix =
        remaining > 1 ? u" ("_s + DurationText(remaining) + u" remaining)"_s : u" (1 second remaining)"_s;
    return u"Sending: "_s + QString::number(PercentComplete(index, count)) + u"% Complete"_s + suffix;
}

QString SummaryText(qint64 seconds, qsizetype sent, qsizetype duplicates, qsizetype failed) {
    QString text = u"Message sending complete.\r\n\r\n- The sending process lasted "_s +
                   DurationText(seconds) + u"\r\n- The message was sent to "_s + QString::number(sent) +
                   u" recipients"_s;
    if (duplicates > 0)
        text += u"\r\n- "_s + QString::number(duplicates) + u" duplicate recipients were ignored"_s;
    if (failed > 0)
        text += u"\r\n- The message could not be delivered to "_s + QString::number(failed) +
                u" recipients*\r\n\r\n* Failed addresses are added to the pending list flagged "
                "for removal."_s;
    return text;
}

QString StoppedText(qsizetype done, qsizetype count) {
    return u"Sending stopped after "_s + QString::number(done) + u'/' + QString::number(count) +
           u" messages"_s;
}

QString AccountTroubleText(const QString &description) {
    return description +
           u"\r\n\r\nSending has stopped, and no recipient was marked as failed. Please correct "
           "the e-mail sending preferences, then send the message again."_s;
}

QString SmtpErrorText(int number, const QString &description) {
    return u"SMTP error "_s + QString::number(number) + u" - "_s + OnOneLine(description);
}

} // namespace varlo
