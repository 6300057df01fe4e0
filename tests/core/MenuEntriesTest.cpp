#include "core/MenuEntries.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QMenu>
#include <gtest/gtest.h>

namespace varlo {

TEST(MenuEntriesTest, EntryHasItsNameAndCaption) {
    QMenu menu;
    const QAction *entry = AddEntry(&menu, "mnuSave", u"&Save"_s);
    EXPECT_EQ(entry->objectName(), u"mnuSave"_s);
    EXPECT_EQ(entry->text(), u"&Save"_s);
}

TEST(MenuEntriesTest, WhatIsAddedStandsBelowWhatIsThere) {
    QMenu menu;
    AddEntry(&menu, "mnuSave", u"&Save"_s);
    AddLine(&menu, "mnuLine1");
    AddEntry(&menu, "mnuExit", u"E&xit"_s);
    QStringList names;
    for (const QAction *action : menu.actions())
        names << (action->isSeparator() ? u"--"_s : QString()) + action->objectName();
    EXPECT_EQ(names, QStringList({u"mnuSave"_s, u"--mnuLine1"_s, u"mnuExit"_s}));
}

} // namespace varlo
