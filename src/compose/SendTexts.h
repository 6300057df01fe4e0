// The texts by which a send tells how far it is and how it went.
#pragma once

#include <QString>

namespace varlo {

// "Sending message 3/250": the recipient at `index` (from 0) has his turn.
QString SendingText(qsizetype index, qsizetype count);

// How much of `count` recipients is behind when the one at `index` (from 0) has its turn, in percent.
int PercentComplete(qsizetype index, qsizetype count);

// The window's caption at that moment, `elapsed` whole seconds after the start: the percentage and the
// estimate of the time that remains.
QString ProgressCaption(qint64 elapsed, qsizetype index, qsizetype count);

// The text of the box at the end. `seconds` is how long it took; the other three are numbers of recipients.
QString SummaryText(qint64 seconds, qsizetype sent, qsizetype duplicates, qsizetype failed);

// "Sending stopped after 3/250 messages".
QString StoppedText(qsizetype done, qsizetype count);

// For a box: what is wrong with the account, and what it means for the send.
QString AccountTroubleText(const QString &description);
// "SMTP error 550 - no such user", on one line whatever the server sent.
QString SmtpErrorText(int number, const QString &description);

} // namespace varlo
