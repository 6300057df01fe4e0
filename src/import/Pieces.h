// A text cut into what addresses are looked for in.
#pragma once

#include <QStringView>

#include <memory>

namespace varlo {

struct Piece {
    QStringView Text; // valid until the next piece is asked for
    int Line = 0;     // where it begins, from 1
    // A cell holds an address and nothing else, so that one without an address is told; prose may hold any number.
    bool IsCell = false;
};

// Hands out the pieces one after another. The text has to outlive it.
class Pieces {
public:
    virtual ~Pieces() = default;

    // False at the end.
    virtual bool Next(Piece &piece) = 0;
    // How much of the text has been handed out.
    virtual qsizetype Position() const = 0;
};

// The pieces of a text as its form demands: address cards, a table with a header row, a list with one address a
// line, or prose.
std::unique_ptr<Pieces> PiecesOf(QStringView text);

// Goes through a text line by line: LF, CR LF or CR.
class Lines {
public:
    explicit Lines(QStringView text) : text_(text) {}

    // False at the end; the last line counts with or without an end.
    bool Next(QStringView &line);
    int Number() const { return number_; } // of the line handed out last, from 1
    qsizetype Position() const { return at_; }

private:
    QStringView text_;
    qsizetype at_ = 0;
    int number_ = 0;
};

} // namespace varlo
