// Texts without a form of their own, and lists with one address a line.
#pragma once

#include "import/Pieces.h"

namespace varlo {

// The lines that hold an "@", without those of a mail's header that belong to machines.
class ProsePieces : public Pieces {
public:
    explicit ProsePieces(QStringView text) : lines_(text) {}

    bool Next(Piece &piece) override;
    qsizetype Position() const override { return lines_.Position(); }

private:
    Lines lines_;
    bool isHeader_ = false; // the line read last is a header field, or goes on with one
    bool isMachineHeader_ = false;
};

// Every line that is not blank, as a cell.
class LinePieces : public Pieces {
public:
    explicit LinePieces(QStringView text) : lines_(text) {}

    bool Next(Piece &piece) override;
    qsizetype Position() const override { return lines_.Position(); }

private:
    Lines lines_;
};

} // namespace varlo
