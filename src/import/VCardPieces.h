// Address cards (vCard 2.1, 3.0 and 4.0), with whatever text stands around them.
#pragma once

#include "import/Pieces.h"

#include <QString>

namespace varlo {

bool HoldsVCards(QStringView text);

// The value of each EMAIL property, and outside of the cards the lines that hold an "@".
class VCardPieces : public Pieces {
public:
    explicit VCardPieces(QStringView text) : text_(text), lines_(text) {}

    bool Next(Piece &piece) override;
    qsizetype Position() const override { return lines_.Position(); }

private:
    bool IsContinued(QStringView line, bool isQuotedPrintable) const;
    int ReadProperty();
    bool TakeValue();

    QStringView text_;
    Lines lines_;
    bool isInCard_ = false;
    QString property_; // unfolded
    QString value_;
};

} // namespace varlo
