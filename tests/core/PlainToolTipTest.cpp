#include "core/PlainToolTip.h"

#include <QTextDocument>
#include <gtest/gtest.h>

namespace varlo {
namespace {

TEST(PlainToolTip, LeavesAnOrdinaryTextAsItIs) {
    EXPECT_EQ(PlainToolTip("news, R&D, a < b"), "news, R&D, a < b");
}

TEST(PlainToolTip, ShowsMarkupAsItStands) {
    for (const char *text : {"<b>bold</b>", "x <img src=\"file:///etc/passwd\"> y", "a &lt;b&gt; c"}) {
        QTextDocument shown;
        shown.setHtml(PlainToolTip(QString::fromLatin1(text)));
        EXPECT_TRUE(Qt::mightBeRichText(PlainToolTip(QString::fromLatin1(text))));
        EXPECT_EQ(shown.toPlainText(), text);
    }
}

TEST(LongToolTip, MarksEveryTextAsMarkupThatShowsItAsItStands) {
    for (const char *text : {"plain", "<b>bold</b>", "R&D\nnews"}) {
        QTextDocument shown;
        shown.setHtml(LongToolTip(QString::fromLatin1(text)));
        EXPECT_TRUE(Qt::mightBeRichText(LongToolTip(QString::fromLatin1(text))));
        EXPECT_EQ(shown.toPlainText(), text);
    }
}

} // namespace
} // namespace varlo
