#include "core/NameChooser.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

const QString kLong = u"<b>R&D  team "_s + QString(200, u'W');

class NameChooserTest : public testing::Test {
protected:
    NameChooserTest() {
        chooser.addItems({u"News"_s, kLong});
        chooser.resize(chooser.sizeHint());
        chooser.show();
    }
    NameChooser chooser{20};
};

TEST_F(NameChooserTest, ANameThatFitsIsShownAsItIs) {
    EXPECT_EQ(chooser.ShownText(), u"News"_s);
    EXPECT_EQ(chooser.toolTip(), QString());
}

TEST_F(NameChooserTest, ALongNameEndsInDotsAndHasItsWholeAsATooltip) {
    const int width = chooser.sizeHint().width();
    chooser.setCurrentIndex(1);
    EXPECT_TRUE(chooser.ShownText().startsWith(u"<b>R&D  team W"_s));
    EXPECT_TRUE(chooser.ShownText().endsWith(QChar(0x2026)));
    EXPECT_EQ(chooser.toolTip(), u"<html>"_s + kLong.toHtmlEscaped());
    EXPECT_EQ(chooser.currentText(), kLong);
    EXPECT_EQ(chooser.sizeHint().width(), width);
}

TEST_F(NameChooserTest, WhatItIsForStandsThereWhileTheNameFits) {
    NameChooser told(20, nullptr, u"The profile"_s);
    told.addItems({u"News"_s, kLong});
    told.resize(told.sizeHint());
    EXPECT_EQ(told.toolTip(), u"The profile"_s);
    told.setCurrentIndex(1);
    EXPECT_EQ(told.toolTip(), u"<html>"_s + kLong.toHtmlEscaped());
    told.setCurrentIndex(0);
    EXPECT_EQ(told.toolTip(), u"The profile"_s);
}

TEST_F(NameChooserTest, TheWheelChoosesOnlyWithTheFocusAndDoesNotTakeIt) {
    const auto turn = [this] {
        QWheelEvent down(QPointF(5, 5), chooser.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                         Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&chooser, &down);
        return chooser.currentIndex();
    };
    QApplication::setActiveWindow(&chooser);
    chooser.clearFocus();
    EXPECT_EQ(turn(), 0);
    EXPECT_NE(chooser.focusPolicy(), Qt::WheelFocus);
    chooser.setFocus();
    EXPECT_EQ(turn(), 1);
}

TEST_F(NameChooserTest, MoreRoomShowsMore) {
    chooser.setCurrentIndex(1);
    chooser.resize(20'000, chooser.height());
    EXPECT_EQ(chooser.ShownText(), kLong);
    EXPECT_EQ(chooser.toolTip(), QString());
}

TEST_F(NameChooserTest, WhatIsPaintedIsTheTextThatFits) {
    chooser.setCurrentIndex(1);
    const QImage cut = chooser.grab().toImage();
    NameChooser same{20};
    same.addItem(chooser.ShownText());
    same.resize(chooser.size());
    EXPECT_EQ(same.grab().toImage(), cut);
}

TEST_F(NameChooserTest, LooksAsAnyOtherBoxWhereTheNameFits) {
    NameChooser own{20};
    QComboBox other;
    for (QComboBox *box : {static_cast<QComboBox *>(&own), &other}) {
        box->addItem(u"News"_s);
        box->resize(chooser.size());
    }
    EXPECT_EQ(own.grab().toImage(), other.grab().toImage());
}

} // namespace
} // namespace varlo::test
