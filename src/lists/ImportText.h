// The text box of the import, and what is pasted or dropped for it.
#pragma once

#include <QPlainTextEdit>
#include <QStringList>

class QMimeData;

namespace varlo {

// What a paste or a drop brings: files and folders of this machine, or else a text.
struct ImportData {
    QStringList Files;
    QString Text;

    bool IsEmpty() const { return Files.isEmpty() && Text.isEmpty(); }
};

ImportData ImportDataOf(const QMimeData &data);

// Takes texts up to a length that can still be edited at ease; what is longer, and files, it hands on.
class ImportText : public QPlainTextEdit {
    Q_OBJECT

public:
    static constexpr qsizetype kLongest = 100000; // characters

    explicit ImportText(QWidget *parent = nullptr);

Q_SIGNALS:
    void FilesPasted(const QStringList &paths);
    void LongTextPasted(const QString &text);

protected:
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
};

} // namespace varlo
