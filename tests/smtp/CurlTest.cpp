#include "smtp/Curl.h"

#include <gtest/gtest.h>

namespace OSSMTP {

TEST(CurlTest, FindsEveryFunctionThatIsCalled) {
    EXPECT_EQ(Curl().Problem, QString());
    EXPECT_NE(Curl().free, nullptr);
}

#ifndef Q_OS_WIN // there the functions are a part of the executable

TEST(CurlTest, ALibraryThatIsMissingIsNamed) {
    const CurlFunctions none(QStringLiteral("libnowhere.so.4"));
    EXPECT_TRUE(none.Problem.contains(QStringLiteral("libnowhere.so.4"))) << qPrintable(none.Problem);
}

TEST(CurlTest, ALibraryWithoutTheFunctionsIsAProblem) {
    const CurlFunctions other(QStringLiteral("libQt6Core.so.6"));
    EXPECT_TRUE(other.Problem.contains(QStringLiteral("curl_"))) << qPrintable(other.Problem);
}

#endif

} // namespace OSSMTP
