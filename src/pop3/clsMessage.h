// One downloaded mail message: its header block and the three values that the program reads from it.
#pragma once

#include <QString>

namespace varlo {

// A minimal reader on purpose: three header names, no decoding of encoded words, no joining of folded lines.
// The body is neither read nor kept.
class clsMessage {
public:
    // Fills the object, once, from a whole message with CR LF line ends. False for a message without an empty
    // line: every field is empty then. Throws RuntimeError 6 for a header block longer than 32,766
    // characters; the fields are empty then, too.
    [[nodiscard]] bool CreateFromText(const QString &strMessage);

    // Everything before the first empty line.
    const QString &Headers() const { return headers_; }
    // The values of the last header line of that name, without blanks around them, otherwise unchanged.
    const QString &From() const { return from_; }
    const QString &Subject() const { return subject_; }
    const QString &MessageID() const { return messageID_; }

private:
    void TakeLine(QStringView line);

    QString headers_;
    QString from_;
    QString subject_;
    QString messageID_;
};

} // namespace varlo
