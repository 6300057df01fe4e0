// Finds every address in a text of any form, a slice of time after another.
#pragma once

#include "core/AddressSyntax.h"
#include "import/AddressScan.h"
#include "import/Pieces.h"

#include <QHash>
#include <QList>
#include <QString>

#include <memory>

namespace varlo {

// An address, or what stands in the place of one. The same one again, letter case aside, only counts.
struct FoundAddress {
    QString Text;
    int Line = 0;  // where it stands first, from 1
    int Times = 1; // how often it stands there
    AddressFault Fault = AddressFault::None;

    bool operator==(const FoundAddress &) const = default;
};

class AddressFinder {
public:
    explicit AddressFinder(QString text);
    AddressFinder(const AddressFinder &) = delete;
    AddressFinder &operator=(const AddressFinder &) = delete;

    // Looks on for about that long. True when everything has been looked at.
    bool Step(int milliseconds);
    bool IsDone() const { return isDone_; }
    // How far it has come, of how many characters.
    qsizetype Position() const { return pieces_->Position(); }
    qsizetype Size() const { return text_.size(); }

    // In the order in which they stand in the text.
    const QList<FoundAddress> &Found() const { return found_; }

private:
    void TakeOne();
    void NextPiece();
    void TakeCell();
    void Note(const QString &address);

    const QString text_;
    const std::unique_ptr<Pieces> pieces_;
    Piece piece_;
    AddressScan scan_;
    bool isDone_ = false;
    QList<FoundAddress> found_;
    QHash<QString, qsizetype> places_; // in found_, from 1, by lower-cased text
};

// All of a short text at once.
QList<FoundAddress> FindAddresses(const QString &text);

} // namespace varlo
