// Every window can be worked without a mouse and read to somebody who does not see it.

#include "app/EveryWindow.h"
#include "core/Literals.h"
#include "support/KnownSettings.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

using testing::ValuesIn;

// What an operator works with, whatever it says of its focus.
bool IsForHands(const QWidget *control) {
    const bool hasHandles =
        qobject_cast<const QAbstractButton *>(control) || qobject_cast<const QLineEdit *>(control) ||
        qobject_cast<const QComboBox *>(control) || qobject_cast<const QAbstractItemView *>(control) ||
        qobject_cast<const QPlainTextEdit *>(control);
    return control->isVisible() && control->isEnabled() &&
           (hasHandles || (control->focusPolicy() & Qt::TabFocus));
}

class AccessibilityTest : public testing::TestWithParam<std::string> {
protected:
    AccessibilityTest() { window.Show(); }

    QStringList Names(const QSet<QWidget *> &controls) const {
        QStringList names;
        for (const QWidget *control : controls)
            names << control->objectName();
        names.sort();
        return names;
    }
    QSet<QWidget *> Controls() const {
        QSet<QWidget *> controls;
        for (QWidget *control : window.Visible<QWidget>())
            if (IsForHands(control))
                controls << control;
        return controls;
    }
    // The controls that get the focus when the key is pressed again and again.
    QSet<QWidget *> Walk(QWidget *start, Qt::Key key, Qt::KeyboardModifiers modifiers) const {
        QSet<QWidget *> reached;
        start->setFocus();
        for (QWidget *now = start; now && !reached.contains(now); now = window->focusWidget()) {
            reached << now;
            QTest::keyClick(now, key, modifiers);
        }
        return reached;
    }

    OpenWindow window{GetParam()};
};

// What a screen reader says of the control besides its contents.
QString SpokenName(QWidget *control) {
    QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(control);
    if (!spoken)
        return {};
    // A drop-down list names its current entry; what it is for stands in its own name or in its label.
    if (control->accessibleName().isEmpty())
        for (const auto &[other, relation] : spoken->relations(QAccessible::Label))
            if (qobject_cast<QLabel *>(other->object())) // a frame around many controls names none of them
                return other->text(QAccessible::Name);
    if (qobject_cast<QComboBox *>(control))
        return control->accessibleName();
    return spoken->text(QAccessible::Name);
}

TEST_P(AccessibilityTest, EveryControlThatTakesTheFocusHasAName) {
    QStringList nameless;
    for (QWidget *control : Controls())
        if (SpokenName(control).trimmed().isEmpty())
            nameless << control->objectName() + u' ' +
                            QString::fromLatin1(control->metaObject()->className());
    EXPECT_EQ(nameless, QStringList());
    EXPECT_FALSE(Controls().isEmpty());
}

TEST_P(AccessibilityTest, TabReachesEveryControl) {
    QWidget *start = window->focusWidget();
    ASSERT_TRUE(start) << "the focus is somewhere when the window opens";
    EXPECT_EQ(Names(Controls() - Walk(start, Qt::Key_Tab, Qt::NoModifier)), QStringList());
    EXPECT_EQ(Names(Controls() - Walk(start, Qt::Key_Backtab, Qt::ShiftModifier)), QStringList());
}

// The letters that work with Alt, each with what it stands for.
QMultiMap<QString, QString> Mnemonics(const OpenWindow &window) {
    QMultiMap<QString, QString> found;
    const auto note = [&found](const QString &text) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty())
            found.insert(key.toString(), text);
    };
    for (const QAbstractButton *button : window.Visible<QAbstractButton>())
        note(button->text());
    for (const QLabel *label : window.Visible<QLabel>())
        if (label->buddy())
            note(label->text());
    for (const QGroupBox *frame : window.Visible<QGroupBox>())
        note(frame->title());
    for (const QMenuBar *bar : window.Visible<QMenuBar>())
        for (const QAction *menu : bar->actions())
            note(menu->text());
    return found;
}

QStringList Twice(const QMultiMap<QString, QString> &mnemonics) {
    QStringList twice;
    for (const QString &key : mnemonics.uniqueKeys())
        if (mnemonics.count(key) > 1)
            twice << key + u": "_s + QStringList(mnemonics.values(key)).join(u", "_s);
    return twice;
}

TEST_P(AccessibilityTest, NoLetterStandsForTwoThings) {
    QStringList expected;
    if (GetParam().starts_with(
            "frmCompose")) // wanted: the captions are given; Alt+E goes from one menu to the other
        expected << u"Alt+E: &Edit, M&essage"_s;
    EXPECT_EQ(Twice(Mnemonics(window)), expected);
}

TEST_P(AccessibilityTest, NoLetterStandsForTwoEntriesOfAMenu) {
    for (const QMenu *menu : window->findChildren<QMenu *>()) {
        QMultiMap<QString, QString> letters;
        for (const QAction *entry : menu->actions())
            if (const QKeySequence key = QKeySequence::mnemonic(entry->text()); !key.isEmpty())
                letters.insert(key.toString(), entry->text());
        EXPECT_EQ(Twice(letters), QStringList()) << menu->objectName().toStdString();
    }
}

TEST_P(AccessibilityTest, EveryButtonFieldAndEntryOfAMenuHasALetter) {
    QStringList without;
    const auto note = [&without](const QString &name, const QString &text) {
        if (!text.isEmpty() && QKeySequence::mnemonic(text).isEmpty())
            without << name + u": "_s + text;
    };
    for (const QAbstractButton *button : window.Visible<QAbstractButton>())
        note(button->objectName(), button->text());
    for (const QLabel *label : window.Visible<QLabel>())
        if (label->buddy())
            note(label->buddy()->objectName(), label->text());
    for (const QMenu *menu : window->findChildren<QMenu *>())
        for (const QAction *entry : menu->actions())
            note(entry->objectName(), entry->text());
    without.removeIf([](const QString &each) { // Enter, Escape, Del; and a button without a word
        return each.endsWith(u": OK"_s) || each.endsWith(u": Cancel"_s) ||
               each.startsWith(u"cmdListDelete_"_s) || each == u"cmdListSwap: +/-"_s;
    });
    EXPECT_EQ(without, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Windows, AccessibilityTest, ValuesIn(WindowNames()),
                         [](const auto &look) { return look.param; });

using ToolTips = QMap<QString, QString>;

// The tooltips of a window; those of the status lines follow their text.
ToolTips ToolTipsOf(const char *name) {
    const OpenWindow window(name);
    window.Show();
    ToolTips tips;
    for (const QWidget *control : window.Visible<QWidget>())
        if (!control->toolTip().isEmpty() && !control->objectName().startsWith(u"lblStatus"_s))
            tips[control->objectName()] = control->toolTip();
    return tips;
}

ToolTips Table(std::initializer_list<std::pair<const char *, const char *>> rows) {
    ToolTips tips;
    for (const auto &[name, tip] : rows)
        tips[QString::fromLatin1(name)] = QString::fromLatin1(tip);
    return tips;
}

// What is not as it should be, control by control.
QStringList Differences(const ToolTips &found, const ToolTips &expected) {
    QStringList lines;
    const QStringList names = found.keys() + expected.keys();
    for (const QString &name : names)
        if (found.value(name) != expected.value(name))
            lines << name + u" has ["_s + found.value(name) + u"], not ["_s + expected.value(name) + u']';
    return lines;
}

TEST(ToolTipsTest, OfTheMainWindow) {
    EXPECT_EQ(Differences(ToolTipsOf("frmMain"),
                          Table({{"cmbMList", "The mailing list that is open"},
                                 {"cmdFileNew", "Create new mailing list"},
                                 {"cmdFileRename", "Rename current list"},
                                 {"cmdFileDelete", "Delete current list"},
                                 {"cmdFileSave", "Save current list"},
                                 {"cmdListEdit_0", "Edit selected items"},
                                 {"cmdListEdit_1", "Edit selected items"},
                                 {"cmdListDelete_0", "Delete selected items"},
                                 {"cmdListDelete_1", "Delete selected items"},
                                 {"cmdListFind", "Search through list"},
                                 {"cmdListSort", "Change sort order"},
                                 {"cmdListSwap", "Reverse +/- status of selected addresses"},
                                 {"txtAddEmail", "Enter e-mail addresses here"},
                                 {"cmdEmailAdd_0", "Add to list"},
                                 {"cmdEmailAdd_1", "Remove from list"},
                                 {"cmdEmailValidate", "Validate address"},
                                 {"cmdCapture", "Capture new e-mail addresses from the clipboard"},
                                 {"cmdAutoAdd", "Automatic download of e-mail addresses from a POP3 account"},
                                 {"cmdCapturesAdd", "Add to current list and clear pending"},
                                 {"chkInstantAdd", "Check to automatically process the pending list"}})),
              QStringList());
}

TEST(ToolTipsTest, OfTheProfileManager) {
    EXPECT_EQ(Differences(ToolTipsOf("frmProfile"),
                          Table({{"cmdProfileNew", "Create new profile"},
                                 {"cmdProfileRename", "Rename profile"},
                                 {"cmdProfileDelete", "Delete profile"},
                                 {"chkAutoStart", "Check this box to skip the profile manager at startup"}})),
              QStringList());
}

TEST(ToolTipsTest, OfThePreferences) {
    for (int page = 0; page < 5; ++page) {
        ToolTips known =
            Table({{"cmdOK", "Save and exit options"}, {"cmdCancel", "Exit options without saving"}});
        for (const KnownSetting &row : KnownSettings())
            if (row.Page == page && *row.Tip)
                known[QString::fromLatin1(row.Control)] = QString::fromLatin1(row.Tip);
        EXPECT_EQ(Differences(ToolTipsOf(qPrintable(u"frmOptions_%1"_s.arg(page))), known), QStringList());
    }
}

} // namespace
} // namespace varlo::test
