#include "core/StatusLabel.h"

#include "core/Literals.h"

#include <QHBoxLayout>
#include <QToolTip>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

// Counts the events of one kind that reach an object.
class EventCounter : public QObject {
public:
    EventCounter(QObject *watched, QEvent::Type type) : type_(type) { watched->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == type_)
            ++Count;
        return false;
    }
    int Count = 0;

private:
    QEvent::Type type_;
};

// What the label has painted on the screen.
QImage OnScreen(QWidget &window) {
    return window.windowHandle() ? window.screen()->grabWindow(window.winId()).toImage() : QImage();
}

class StatusLabelTest : public testing::Test {
protected:
    StatusLabelTest() {
        auto *row = new QHBoxLayout(&window_);
        row->addWidget(&label_);
        window_.resize(400, 60);
    }
    ~StatusLabelTest() override { label_.setParent(nullptr); }
    void Show() {
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
        QCoreApplication::processEvents();
    }

    // Until a new text may be painted at once.
    void Settle() {
        const auto *timer = label_.findChild<QTimer *>();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !timer->isActive(); }, 5000));
        QCoreApplication::processEvents();
    }

    QWidget window_;
    StatusLabel label_{u"Idle"_s};
};

TEST_F(StatusLabelTest, PaintsItselfWhileNoEventsAreHandled) {
    Show();
    const EventCounter paints(&label_, QEvent::Paint);
    const EventCounter others(&window_, QEvent::Timer);
    window_.startTimer(0);
    QElapsedTimer work;
    work.start();
    int texts = 0;
    while (paints.Count < 3 && !work.hasExpired(30000))
        label_.setText(u"Processing (%1)"_s.arg(++texts));
    EXPECT_EQ(paints.Count, 3);
    EXPECT_EQ(others.Count, 0) << "nothing else may happen in the middle of the work";
    EXPECT_GE(work.elapsed(), 300);
}

TEST_F(StatusLabelTest, TextIsReadableAtOnce) {
    Show();
    for (int i = 0; i < 100; ++i) {
        const QString text = u"Sending [%1]"_s.arg(i);
        label_.setText(text);
        ASSERT_EQ(static_cast<QLabel &>(label_).text(), text);
        ASSERT_EQ(label_.property("text").toString(), text);
    }
}

TEST_F(StatusLabelTest, TenThousandTextsArePaintedThirtyTimesASecondAtMost) {
    Show();
    const EventCounter paints(&label_, QEvent::Paint);
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 10'000 || (paints.Count < 5 && clock.elapsed() < 10'000); ++i) {
        label_.setText(u"Sending [%1]"_s.arg(i));
        QCoreApplication::processEvents();
    }
    const double seconds = static_cast<double>(clock.elapsed()) / 1000.0;
    EXPECT_LE(paints.Count, 30.0 * seconds + 2.0);
    EXPECT_GE(paints.Count, 5) << "the operator sees the texts pass";
}

TEST_F(StatusLabelTest, LastTextOfABurstIsPainted) {
    Show();
    for (int i = 0; i < 1000; ++i) {
        label_.setText(u"Sending [%1]"_s.arg(i));
        QCoreApplication::processEvents();
    }
    label_.setText(u"the last one"_s);
    const EventCounter paints(&label_, QEvent::Paint);
    ASSERT_TRUE(QTest::qWaitFor([&] { return paints.Count > 0; }, 5000));
    const QImage shown = OnScreen(window_);

    QWidget other;
    auto *row = new QHBoxLayout(&other);
    row->addWidget(new StatusLabel(u"the last one"_s));
    other.resize(window_.size());
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    QCoreApplication::processEvents();
    EXPECT_FALSE(shown.isNull());
    EXPECT_EQ(shown, OnScreen(other));
}

TEST_F(StatusLabelTest, FirstTextAfterAPauseIsPaintedAtOnce) {
    Show();
    Settle();
    const EventCounter paints(&label_, QEvent::Paint);
    label_.setText(u"Connecting..."_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.Count, 1);
}

TEST_F(StatusLabelTest, NoLayoutRunsBecauseOfAText) {
    Show();
    const EventCounter layouts(&window_, QEvent::LayoutRequest);
    for (int i = 0; i < 1000; ++i) {
        label_.setText(QString(i, u'W'));
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(layouts.Count, 0);
}

TEST_F(StatusLabelTest, SizeDoesNotDependOnTheText) {
    const QSize hint = label_.sizeHint();
    const QSize minimum = label_.minimumSizeHint();
    label_.setText(QString(5000, u'W'));
    EXPECT_EQ(label_.sizeHint(), hint);
    EXPECT_EQ(label_.minimumSizeHint(), minimum);
    EXPECT_LE(minimum.width(), hint.width());
    EXPECT_GT(minimum.height(), 0);
}

TEST_F(StatusLabelTest, StoringATextLeavesTheLabelAsVisibleAsItWas) {
    label_.setText(u"before"_s);
    EXPECT_FALSE(label_.isVisible());
    Show();
    label_.setText(u"while shown"_s);
    EXPECT_TRUE(label_.isVisible());
    EXPECT_FALSE(label_.isHidden());
    EXPECT_TRUE(label_.updatesEnabled());
    label_.hide();
    label_.setText(u"while hidden"_s);
    EXPECT_TRUE(label_.isHidden());
    label_.show();
    EXPECT_TRUE(label_.isVisible());
}

TEST_F(StatusLabelTest, TextThatFitsHasNoToolTip) {
    Show();
    label_.setText(u"short"_s);
    EXPECT_EQ(label_.toolTip(), QString());
}

TEST_F(StatusLabelTest, TextThatIsTooLongStandsEscapedInTheToolTip) {
    Show();
    Settle();
    label_.setText(u"<img src=x> & "_s + QString(300, u'W'));
    EXPECT_EQ(label_.toolTip(), u"<html>&lt;img src=x&gt; &amp; "_s + QString(300, u'W'));
}

TEST_F(StatusLabelTest, ToolTipFollowsTheWidth) {
    label_.setText(QString(30, u'W'));
    window_.resize(2000, 60);
    Show();
    EXPECT_EQ(label_.toolTip(), QString());
    window_.resize(100, 60);
    QCoreApplication::processEvents();
    EXPECT_EQ(label_.toolTip(), u"<html>"_s + QString(30, u'W'));
}

TEST_F(StatusLabelTest, TextOfFiftyMegabytesIsPaintedQuickly) {
    Show();
    Settle();
    const EventCounter paints(&label_, QEvent::Paint);
    label_.setText(QString(50'000'000, u'x'));
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.Count, 1);
    EXPECT_LT(label_.toolTip().size(), 10'000);
}

TEST_F(StatusLabelTest, MarkupIsPaintedAsItStands) {
    Show();
    label_.setText(u"<b></b>"_s);
    Settle();
    const QImage markup = OnScreen(window_);
    label_.setText(u" "_s);
    Settle();
    EXPECT_EQ(label_.textFormat(), Qt::PlainText);
    EXPECT_NE(markup, OnScreen(window_)) << "markup that became formatting would have left nothing to see";
}

TEST_F(StatusLabelTest, LineBreaksAreBlanksOnTheOneLine) {
    Show();
    label_.setText(u"one two"_s);
    Settle();
    const QImage blank = OnScreen(window_);
    label_.setText(u"one\ntwo"_s);
    Settle();
    EXPECT_EQ(blank, OnScreen(window_));
}

TEST_F(StatusLabelTest, ClickIsReported) {
    Show();
    QSignalSpy clicks(&label_, &StatusLabel::Clicked);
    QTest::mouseClick(&label_, Qt::LeftButton);
    EXPECT_EQ(clicks.count(), 1);
    QTest::mouseClick(&label_, Qt::RightButton);
    EXPECT_EQ(clicks.count(), 1);
}

TEST_F(StatusLabelTest, PressThatIsReleasedElsewhereIsNoClick) {
    Show();
    QSignalSpy clicks(&label_, &StatusLabel::Clicked);
    QTest::mousePress(&label_, Qt::LeftButton);
    QTest::mouseRelease(&label_, Qt::LeftButton, {}, QPoint(-20, -20));
    EXPECT_EQ(clicks.count(), 0);
}

} // namespace
} // namespace varlo::test
