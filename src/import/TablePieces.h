// Tables as spreadsheets and address books write them: cells between commas, semicolons, tabs or bars, quotes around
// cells that hold such a character, a header row that names the columns.
#pragma once

#include "import/Pieces.h"

#include <QList>
#include <QString>

namespace varlo {

struct TableForm {
    QChar Delimiter;
    QList<int> Columns;  // those that hold addresses, from 0; none: the text is no such table
    qsizetype Start = 0; // where the header row begins
};

// The form of a text whose first row names a column for addresses ("E-mail", "Email Address") and whose rows agree
// with it.
TableForm TableFormOf(QStringView text);

// Goes through a table cell by cell.
class Cells {
public:
    Cells(QStringView text, QChar delimiter, qsizetype start = 0);

    // False at the end. An empty line is a row with one empty cell.
    bool Next();
    // Of the cell read last: its text without quotes, its column from 0, the line on which it begins, from 1.
    QStringView Text() const { return cell_; }
    int Column() const { return column_; }
    int Line() const { return line_; }
    bool IsRowEnd() const { return isRowEnd_; } // it is the last one of its row
    qsizetype Position() const { return at_; }

private:
    bool ReadQuoted();
    void ReadBare();
    void Finish();

    QStringView text_;
    QChar delimiter_;
    qsizetype at_ = 0;
    int lineNow_;
    bool isRowEnd_ = true;
    QStringView cell_;
    QString unquoted_;
    int column_ = 0;
    int line_;
};

// The cells that are not empty of the columns with addresses.
class TablePieces : public Pieces {
public:
    TablePieces(QStringView text, const TableForm &form);

    bool Next(Piece &piece) override;
    qsizetype Position() const override { return cells_.Position(); }

private:
    Cells cells_;
    QList<int> columns_;
    int headerLine_;
};

} // namespace varlo
