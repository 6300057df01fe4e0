#include "compose/SendTexts.h"

#include "core/modPublic.h"

namespace varlo {

QString Mailbox(const QString &name, const QString &address) {
    return u'"' + name + QStringLiteral("\" <") + address + u'>';
}

// Wanted: the percentage counts against the last index, so that the last recipient is sent to at 100%, while
// the estimate counts recipients.
int PercentComplete(qsizetype index, qsizetype count) {
    return count > 1 ? static_cast<int>(100 * index / (count - 1)) : 0;
}

QString ProgressCaption(qint64 elapsed, qsizetype index, qsizetype count) {
    const qint64 remaining = elapsed * (count - (index + 1)) / (index + 1);
    const QString suffix =
        remaining > 1 ? QStringLiteral(" (") + DurationText(remaining) + QStringLiteral(" remaining)")
                      : QStringLiteral(" (1 second remaining)");
    return QStringLiteral("Sending: ") + QString::number(PercentComplete(index, count)) +
           QStringLiteral("% Complete") + suffix;
}

QString SummaryText(qint64 seconds, qsizetype sent, qsizetype duplicates, qsizetype failed) {
    QString text = QStringLiteral("Message sending complete.\r\n\r\n- The sending process lasted ") +
                   DurationText(seconds) + QStringLiteral("\r\n- The message was sent to ") +
                   QString::number(sent) + QStringLiteral(" recipients");
    if (duplicates > 0)
        text += QStringLiteral("\r\n- ") + QString::number(duplicates) +
                QStringLiteral(" duplicate recipients were ignored");
    if (failed > 0)
        text += QStringLiteral("\r\n- The message could not be delivered to ") + QString::number(failed) +
                QStringLiteral(" recipients*\r\n\r\n* Failed addresses are added to the pending list flagged "
                               "for removal.");
    return text;
}

QString StoppedText(qsizetype done, qsizetype count) {
    return QStringLiteral("Sending stopped after ") + QString::number(done) + u'/' + QString::number(count) +
           QStringLiteral(" messages");
}

QString SmtpErrorText(int number, QString description) {
    description.replace(QStringLiteral("\r\n"), QStringLiteral(" "))
        .replace(u'\r', u' ')
        .replace(u'\n', u' ');
    return QStringLiteral("SMTP error ") + QString::number(number) + QStringLiteral(" - ") + description;
}

} // namespace varlo
