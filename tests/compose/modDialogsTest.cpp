#include "compose/modDialogs.h"

#include "support/TestProfile.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using Box = test::ScriptedDialogs::Input;

TEST(modDialogs, TheFilterIsAPairSeparatedByNul) {
    EXPECT_EQ(AllFilesFilter(), QString::fromLatin1("All Files\0*.*\0", 14));
}

TEST(modDialogs, EachChooserPassesItsArgumentsOn) {
    test::TestProfile profile;
    profile.Boxes.Files = {"/a", "/b", "/c"};
    const QStringList chosen{OpenFile(profile.session, AllFilesFilter(), "/start", "Open it"),
                             SaveFile(profile.session, AllFilesFilter(), "/start", "Save it"),
                             BrowseFolder(profile.session, "/start", "Find it")};
    EXPECT_EQ(chosen, QStringList({"/a", "/b", "/c"}));
    EXPECT_EQ(profile.Boxes.FileBoxes, (std::vector<Box>{{AllFilesFilter(), "Open it", "/start"},
                                                         {AllFilesFilter(), "Save it", "/start"},
                                                         {"", "Find it", "/start"}}));
}

TEST(modDialogs, ACancelledChooserGivesAnEmptyPath) {
    test::TestProfile profile;
    profile.Boxes.Files = {""};
    EXPECT_EQ(OpenFile(profile.session, AllFilesFilter(), "/start", "Open it"), "");
}

} // namespace
} // namespace varlo
