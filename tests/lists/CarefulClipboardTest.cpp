#include "lists/CarefulClipboard.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

using namespace std::chrono_literals;

// A clipboard that another program holds for the next so many looks at it.
struct HeldClipboard {
    QString Content;
    int HeldFor = 0;

    bool TakesLook() { return HeldFor > 0 && HeldFor-- > 0; }
    RawClipboard Raw() {
        return {.Text = [this] { return TakesLook() ? QString() : Content; },
                .Clear =
                    [this] {
                        if (!TakesLook())
                            Content = QString();
                    },
                .OffersText = [this] { return !Content.isNull(); },
                .IsHeld = [this] { return HeldFor > 0; }};
    }
};

TEST(CarefulClipboard, AFreeOneIsReadAndCleared) {
    HeldClipboard clipboard{.Content = u"ab@x.test"_s};
    const ClipboardAccess careful = Careful(clipboard.Raw());
    EXPECT_EQ(careful.Text(), u"ab@x.test"_s);
    careful.Clear();
    EXPECT_EQ(careful.Text(), QString());
}

TEST(CarefulClipboard, OneThatIsLetGoInTimeIsRead) {
    HeldClipboard clipboard{.Content = u"ab@x.test"_s, .HeldFor = 3};
    EXPECT_EQ(Careful(clipboard.Raw(), 10s).Text(), u"ab@x.test"_s);
}

TEST(CarefulClipboard, OneThatStaysHeldIsReportedAndNotTakenForEmpty) {
    HeldClipboard clipboard{.Content = u"ab@x.test"_s, .HeldFor = 1000};
    const ClipboardAccess careful = Careful(clipboard.Raw(), 30ms);
    EXPECT_EQ(ErrorOf([&] { careful.Text(); }), kClipboardHeld);
    EXPECT_EQ(ErrorOf([&] { careful.Clear(); }), kClipboardHeld);
    EXPECT_EQ(clipboard.Content, u"ab@x.test"_s);
}

TEST(CarefulClipboard, AnEmptyTextIsATextOfItsOwn) {
    HeldClipboard clipboard{.Content = u""_s};
    EXPECT_EQ(Careful(clipboard.Raw(), 30ms).Text(), QString());
}

class HeldCaptureTest : public ListsFixture {
protected:
    HeldClipboard clipboard{.Content = u"ab@x.test"_s, .HeldFor = 1000};
    ClipboardCapture capture{session, lists, Careful(clipboard.Raw(), 1ms)};
};

TEST_F(HeldCaptureTest, NothingIsLostWhileAnotherProgramHoldsTheClipboard) {
    EXPECT_EQ(capture.Tick(), QString());
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(profile.Boxes.Texts().size(), 1);
    clipboard.HeldFor = 0;
    EXPECT_EQ(capture.Tick(), u"1 e-mail addresses captured"_s);
    EXPECT_EQ(Pending(), QStringList(u"+ab@x.test"_s));
}

TEST_F(HeldCaptureTest, WhatCannotBeClearedIsReported) {
    capture.Begin();
    EXPECT_EQ(clipboard.Content, u"ab@x.test"_s);
    EXPECT_EQ(profile.Boxes.Texts().size(), 1);
}

} // namespace
} // namespace varlo::test
