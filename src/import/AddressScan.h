// Finds what looks like an e-mail address in a text.
#pragma once

#include <QString>

#include <optional>

namespace varlo {

// Goes through a text from "@" to "@". An address that its surroundings only touch (brackets, quotes, the points and
// commas of prose, "mailto:" and "?subject=") comes out alone. Where part of it would be no address that anybody has
// ("a+b@x.org" without its "a+"), all of it comes out, though lists do not take it: a wrong address is worse than one
// that is asked about. What is no address of anybody is passed over: names of the kind "@anna", the display name before
// an address in brackets, user names of web addresses, pictures in mails ("cid:").
class AddressScan {
public:
    AddressScan() = default;
    // The text has to outlive the scan.
    explicit AddressScan(QStringView text) : text_(text) {}

    // The next one, usable or not; nothing at the end.
    std::optional<QString> Next();

private:
    struct Span {
        qsizetype Start = 0;
        qsizetype End = 0;
        bool IsEmpty() const { return End <= Start; }
    };

    std::optional<QString> At(qsizetype at);
    qsizetype LocalStart(qsizetype at) const;
    qsizetype DomainEnd(qsizetype start) const;
    qsizetype OpeningQuote(qsizetype from) const;
    qsizetype ClosingQuote(qsizetype at) const;
    std::optional<QString> Quoted(qsizetype at);
    qsizetype EndOfMany(qsizetype end) const;
    bool IsDisplayName(qsizetype end) const;
    bool IsOfWebAddress(qsizetype start) const;
    Span TrimLocal(Span local) const;
    QString Clean(qsizetype start, qsizetype end) const;

    QStringView text_;
    qsizetype at_ = 0; // everything before it is done
};

} // namespace varlo
