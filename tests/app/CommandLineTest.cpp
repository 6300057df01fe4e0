#include "app/CommandLine.h"

#include "core/Literals.h"
#include "core/Product.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

using Wish = CommandLine::Wish;

Wish WishOf(const QStringList &arguments) {
    return ReadCommandLine(arguments).Wanted;
}

TEST(CommandLine, NothingStartsTheProgram) {
    EXPECT_EQ(WishOf({}), Wish::Start);
    EXPECT_EQ(ReadCommandLine({}).Text, QString());
}

TEST(CommandLine, VersionIsPrinted) {
    const CommandLine line = ReadCommandLine({u"/profile"_s, u"--version"_s});
    EXPECT_EQ(line.Wanted, Wish::Print);
    EXPECT_EQ(
        line.Text,
        u"Varlo Pro %1.%2 (Build %3)\n"_s.arg(Product::kMajor).arg(Product::kMinor).arg(Product::kRevision));
}

TEST(CommandLine, HelpNamesEveryOption) {
    for (const QString &option : {u"--help"_s, u"-h"_s}) {
        const CommandLine line = ReadCommandLine({option});
        EXPECT_EQ(line.Wanted, Wish::Print);
        EXPECT_TRUE(line.Text.startsWith(u"Usage: varlo-pro [options]\n"_s));
        for (const char *known : {"/profile", "--help", "-h", "--version", "-platform"})
            EXPECT_TRUE(line.Text.contains(QString::fromLatin1(known))) << known;
    }
}

TEST(CommandLine, AnUnknownOptionIsRefusedWithALine) {
    const CommandLine line = ReadCommandLine({u"/profile"_s, u"--profil"_s});
    EXPECT_EQ(line.Wanted, Wish::Refuse);
    EXPECT_EQ(line.Text, u"varlo-pro: unknown option --profil (see varlo-pro --help)\n"_s);
    EXPECT_EQ(WishOf({u"-x"_s}), Wish::Refuse);
    EXPECT_EQ(WishOf({u"--Version"_s}), Wish::Refuse);
}

TEST(CommandLine, TheProfileSwitchIsFoundAnywhere) {
    EXPECT_EQ(WishOf({u"/profile"_s}), Wish::Start);
    EXPECT_EQ(WishOf({u"--x=/profiles"_s}), Wish::Start);
    EXPECT_EQ(WishOf({u"/PROFILE"_s, u"file"_s, u"-"_s}), Wish::Start);
}

TEST(CommandLine, OptionsOfTheToolkitPass) {
    EXPECT_EQ(WishOf({u"-platform"_s, u"offscreen"_s, u"--style=fusion"_s, u"-reverse"_s, u"-session"_s,
                      u"10ab_c"_s}),
              Wish::Start);
    EXPECT_EQ(WishOf({u"-platform"_s, u"-odd"_s}), Wish::Start) << "the value of an option is none itself";
    EXPECT_EQ(WishOf({u"-platform=x"_s, u"-odd"_s}), Wish::Refuse);
}

TEST(CommandLine, AnswersGoToTheirStreamsWithTheirCodes) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(Answer({Wish::Print, u"text\n"_s}), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "text\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Answer({Wish::Refuse, u"no\n"_s}), 2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "no\n");
}

} // namespace
} // namespace varlo::test
