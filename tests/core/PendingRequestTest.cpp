#include "core/PendingRequest.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

TEST(PendingRequestTest, AnEntryIsTheSignAndTheAddress) {
    EXPECT_EQ((PendingRequest{RequestKind::Subscribe, u"a@b.c"_s}.Entry()), u"+a@b.c"_s);
    EXPECT_EQ((PendingRequest{RequestKind::Unsubscribe, u"-a@b.c"_s}.Entry()), u"--a@b.c"_s);
}

TEST(PendingRequestTest, AnEntryIsReadBackAsItWasWritten) {
    const auto origin = RequestOrigin::FailedDelivery;
    for (const RequestKind kind : {RequestKind::Subscribe, RequestKind::Unsubscribe}) {
        const PendingRequest request{kind, u"+a@b.c"_s, origin};
        EXPECT_EQ(PendingRequest::FromEntry(request.Entry(), origin), request);
    }
}

TEST(PendingRequestTest, WithoutASignItIsUnknownAndKeepsItsText) {
    for (const QString &entry : {u"a@b.c"_s, QString()}) {
        const PendingRequest request = PendingRequest::FromEntry(entry);
        EXPECT_EQ(request.Kind, RequestKind::Unknown);
        EXPECT_EQ(request.Entry(), entry);
        EXPECT_EQ(request.Reversed(), request);
    }
}

TEST(PendingRequestTest, ReversedTwiceIsTheSameAgain) {
    const PendingRequest request{RequestKind::Subscribe, u"a@b.c"_s, RequestOrigin::Typed};
    EXPECT_EQ(request.Reversed().Entry(), u"-a@b.c"_s);
    EXPECT_EQ(request.Reversed().Reversed(), request);
}

TEST(ActivityText, LeavesOutWhatDidNotHappen) {
    EXPECT_EQ(ActivityText(3, 1), u"+3, -1"_s);
    EXPECT_EQ(ActivityText(3, 0), u"+3"_s);
    EXPECT_EQ(ActivityText(0, 1), u"-1"_s);
    EXPECT_EQ(ActivityText(0, 0), u"no activity"_s);
}

} // namespace
} // namespace varlo::test
