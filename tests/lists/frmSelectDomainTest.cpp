#include "lists/frmSelectDomain.h"

#include "core/Literals.h"
#include "lists/FramesFixture.h"

#include <QAction>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class frmSelectDomainTest : public test::FramesFixture {
protected:
    frmSelectDomainTest() { lists.Open.SetSortOrder(0); }
    // Opens the dialog by its menu entry and lets `work` answer it.
    void Open(const std::function<void(frmSelectDomain &)> &work) {
        bool isOpened = false;
        QTimer::singleShot(0, &host, [&] {
            auto *dialog = host.findChild<frmSelectDomain *>();
            ASSERT_NE(dialog, nullptr);
            isOpened = true;
            work(*dialog);
        });
        Find<QAction>("mnuListsSelectDomain")->trigger();
        EXPECT_TRUE(isOpened);
        EXPECT_EQ(host.findChild<frmSelectDomain *>(), nullptr);
    }
    static QListWidget *Rows(const QWidget &dialog) {
        return dialog.findChild<QListWidget *>(u"lstDomains"_s);
    }
    static QPushButton *Button(const QWidget &dialog, const QString &name) {
        return dialog.findChild<QPushButton *>(name);
    }
};

TEST_F(frmSelectDomainTest, SelectsTheAddressesOfTheChosenDomains) {
    OpenLists({{u"news"_s, Words("a@x.test b@y.test c@x.test odd")}});
    Open([](frmSelectDomain &dialog) {
        QStringList texts;
        for (int row = 0; row < Rows(dialog)->count(); ++row)
            texts << Rows(dialog)->item(row)->text();
        EXPECT_EQ(texts, QStringList({u"x.test (2)"_s, u"(no domain) (1)"_s, u"y.test (1)"_s}));
        EXPECT_FALSE(Button(dialog, u"cmdOK"_s)->isEnabled()) << "nothing is chosen";
        Rows(dialog)->item(0)->setSelected(true);
        Rows(dialog)->item(1)->setSelected(true);
        EXPECT_TRUE(Button(dialog, u"cmdOK"_s)->isEnabled());
        Button(dialog, u"cmdOK"_s)->click();
    });
    EXPECT_EQ(lists.SelectedRows(kChronological), (QList<int>{0, 2, 3}));
}

TEST_F(frmSelectDomainTest, CancelLeavesTheSelectionAlone) {
    OpenLists({{u"news"_s, Words("a@x.test b@y.test")}});
    lists.SelectRows(kChronological, {1});
    Open([](frmSelectDomain &dialog) {
        Rows(dialog)->item(0)->setSelected(true);
        Button(dialog, u"cmdCancel"_s)->click();
    });
    EXPECT_EQ(lists.SelectedRows(kChronological), (QList<int>{1}));
}

TEST_F(frmSelectDomainTest, ListsAreNotExchangedUnderIt) {
    OpenLists({{u"news"_s, Words("a@x.test")}});
    Open([this](frmSelectDomain &dialog) {
        EXPECT_TRUE(lists.Open.IsHeld());
        dialog.reject();
    });
    EXPECT_FALSE(lists.Open.IsHeld());
}

TEST_F(frmSelectDomainTest, EveryAddressOfAnotherDomainIsShownWithoutAWait) {
    QStringList entries;
    for (int i = 0; i < EntryListModel::kMostEntries; ++i)
        entries << u"a@d"_s + QString::number(i) + u".test"_s;
    frmSelectDomain dialog(CountDomains(entries));
    dialog.show();
    EXPECT_EQ(Rows(dialog)->count(), EntryListModel::kMostEntries);
    Rows(dialog)->selectAll();
    EXPECT_EQ(dialog.SelectedDomains().size(), EntryListModel::kMostEntries);
}

} // namespace
} // namespace varlo
