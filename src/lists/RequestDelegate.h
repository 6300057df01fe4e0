// Draws the requests of the Pending list: "+" and "-" with an icon and a colour of their own.
#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

namespace varlo {

// The sign stays in the text, so nothing is told by colour alone. Readable on light and dark backgrounds.
class RequestDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit RequestDelegate(QObject *parent = nullptr);

    // The colour of an entry on that background; invalid for one that is neither "+" nor "-".
    static QColor ColorOf(const QString &entry, const QColor &background);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    const QIcon add_;
    const QIcon remove_;
};

} // namespace varlo
