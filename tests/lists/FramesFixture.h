// The page with the two lists in a window of its own.
#pragma once

#include "lists/CurrentListFrame.h"
#include "lists/ListsFixture.h"
#include "lists/ListsMenu.h"
#include "lists/ListsPage.h"
#include "lists/PendingListFrame.h"
#include "lists/PendingProcessing.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QWidget>
#include <gtest/gtest.h>

namespace varlo::test {

struct ShownPage {
    ShownPage(Session &session, FakeMailers &mailers) : page(session, mailers.Maker(), &host) {}
    ListStore &Lists() { return page.Lists(); }
    ListEditing &Editing() { return page.Editing(); }

    QWidget host;
    ListsPage page;
};

class FramesFixture : public ListsFixtureOf<ShownPage> {
protected:
    FramesFixture();

    // The list files exist and the chooser shows them; the first one is open when there is one.
    void OpenLists(const std::vector<std::pair<QString, QStringList>> &files);
    // The event turn in which the controls follow the lists.
    static void Turn() { QCoreApplication::sendPostedEvents(); }

    template<typename Control> Control *Find(const char *name) {
        auto *control = host.findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QComboBox *Chooser() { return Find<QComboBox>("cmbMList"); }
    QLineEdit *AddressBox() { return Find<QLineEdit>("txtAddEmail"); }
    QAbstractItemView *View(int box);
    // A click of the left button; a disabled button ignores it.
    void Click(const char *button);
    void ClickRow(int box, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Chooses a list as the operator does, from the chooser's pop-up.
    void Choose(const QString &name);
    void Type(const char *text);
    // What the chooser offers, and what it shows.
    QStringList Names();
    QString Chosen() { return Chooser()->currentText(); }
    bool IsEnabled(const char *name);
    // The text of a button or menu without its mnemonic, and its tooltip.
    std::pair<QString, QString> Wording(const char *button);

    QWidget &host = owner.host;
    PendingProcessing &processing = owner.page.Processing();
    CurrentListFrame &current = owner.page.Current();
    PendingListFrame &pending = owner.page.Pending();
    ListsMenu &menu = owner.page.Menu();
};

} // namespace varlo::test
