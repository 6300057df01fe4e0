#include "compose/ElidedRows.h"

#include "core/Literals.h"

#include <QListWidget>
#include <QScrollBar>
#include <gtest/gtest.h>

namespace varlo {
namespace {

QImage PictureOf(const QString &row, Qt::TextElideMode mode) {
    QListWidget list;
    new ElidedRows(&list, mode);
    list.addItem(row);
    list.resize(200, 60);
    list.show();
    EXPECT_EQ(list.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(list.visualItemRect(list.item(0)).width(), list.viewport()->width());
    return list.viewport()->grab().toImage();
}

TEST(ElidedRowsTest, OfALongPathTheBeginningAndTheNameOfTheFileStay) {
    const QString middle(300, u'm');
    const QImage picture = PictureOf(u"/home/"_s + middle + u"/report.pdf"_s, Qt::ElideMiddle);
    EXPECT_EQ(picture, PictureOf(u"/home/"_s + middle + u"m/report.pdf"_s, Qt::ElideMiddle));
    EXPECT_NE(picture, PictureOf(u"/home/"_s + middle + u"/invoice.pdf"_s, Qt::ElideMiddle));
    EXPECT_NE(picture, PictureOf(u"/root/"_s + middle + u"/report.pdf"_s, Qt::ElideMiddle));
}

TEST(ElidedRowsTest, OfALongNameTheBeginningStays) {
    const QString name(300, u'm');
    EXPECT_EQ(PictureOf(name + u'a', Qt::ElideRight), PictureOf(name + u'b', Qt::ElideRight));
    EXPECT_NE(PictureOf(u'a' + name, Qt::ElideRight), PictureOf(u'b' + name, Qt::ElideRight));
}

} // namespace
} // namespace varlo
