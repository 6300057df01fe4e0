#include "import/AddressFinder.h"

#include "core/Literals.h"
#include "core/modPublic.h"

#include <QElapsedTimer>

namespace varlo {

namespace {

constexpr int kBetweenLooks = 64; // finds between two looks at the clock
constexpr qsizetype kMostExpected = 1000000;
constexpr qsizetype kLongestFault = 320; // what is no address can be as long as the text

} // namespace

AddressFinder::AddressFinder(QString text) : text_(std::move(text)), pieces_(PiecesOf(text_)) {
    // A hash that grows by and by takes twice the time.
    places_.reserve(qMin(text_.count(u'@'), kMostExpected));
}

bool AddressFinder::Step(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!isDone_ && !timer.hasExpired(milliseconds))
        for (int i = 0; i < kBetweenLooks && !isDone_; ++i)
            TakeOne();
    return isDone_;
}

void AddressFinder::TakeOne() {
    if (const auto address = scan_.Next())
        Note(*address);
    else
        NextPiece();
}

void AddressFinder::NextPiece() {
    isDone_ = !pieces_->Next(piece_);
    if (isDone_)
        return;
    if (piece_.IsCell)
        TakeCell();
    else
        scan_ = AddressScan(piece_.Text);
}

// A cell is an address, or holds some; what holds none is told, so that it can be mended. The scan is more careful
// than the rules are, so where it finds nothing that can be used the cell as a whole may still do.
void AddressFinder::TakeCell() {
    const QString whole = piece_.Text.trimmed().toString();
    QStringList addresses;
    AddressScan scan(piece_.Text);
    while (const auto address = scan.Next())
        addresses << *address;
    const bool isUsable = std::any_of(addresses.begin(), addresses.end(), PassesAddressRules);
    if (!isUsable && (addresses.isEmpty() || PassesAddressRules(whole)))
        addresses = {whole};
    for (const QString &address : addresses)
        Note(address);
    scan_ = {};
}

void AddressFinder::Note(const QString &address) {
    const AddressFault fault = FaultOf(address);
    const bool isShown = fault == AddressFault::None || address.size() <= kLongestFault;
    const QString text = isShown ? address : address.first(kLongestFault) + u"\u2026"_s;
    const QString key = LowerCased(text);
    qsizetype &place = places_[key];
    if (place > 0) {
        ++found_[place - 1].Times;
        return;
    }
    found_.append({text, piece_.Line, 1, fault});
    place = found_.size();
}

QList<FoundAddress> FindAddresses(const QString &text) {
    AddressFinder finder(text);
    while (!finder.Step(1000)) {
    }
    return finder.Found();
}

} // namespace varlo
