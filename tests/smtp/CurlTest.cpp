#include "smtp/Curl.h"

#include "core/Literals.h"

#include <gtest/gtest.h>

namespace OSSMTP {

TEST(CurlTest, FindsEveryFunctionThatIsCalled) {
    EXPECT_EQ(Curl().Problem, QString());
    EXPECT_NE(Curl().free, nullptr);
}

#ifndef Q_OS_WIN // there the functions are a part of the executable

TEST(CurlTest, ALibraryThatIsMissingIsNamed) {
    const CurlFunctions none(u"libnowhere.so.4"_s);
    EXPECT_TRUE(none.Problem.contains(u"libnowhere.so.4"_s)) << qPrintable(none.Problem);
}

TEST(CurlTest, ALibraryWithoutTheFunctionsIsAProblem) {
    const CurlFunctions other(u"libQt6Core.so.6"_s);
    EXPECT_TRUE(other.Problem.contains(u"curl_"_s)) << qPrintable(other.Problem);
}

#endif

} // namespace OSSMTP
