#include "lists/FramesFixture.h"

#include "core/Literals.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QTest>

namespace varlo::test {

FramesFixture::FramesFixture() {
    auto *row = new QHBoxLayout(&host);
    row->addWidget(&current);
    row->addWidget(&pending);
    QObject::connect(&lists, &ListStore::ControlsOutdated, &host, [this] { UpdateControls(); });
    QObject::connect(&menu, &ListsMenu::SortOrderChanged, &host, [this] {
        menu.ShowSortOrder();
        current.ShowSortOrder();
    });
    UpdateControls();
    host.resize(760, 520);
    host.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&host));
}

void FramesFixture::UpdateControls() {
    const ControlStates states = ComputeControlStates({
        .HasLists = !current.ListNames().isEmpty(),
        .HasOpenList = !current.ChosenName().isEmpty(),
        .HasTypedAddress = pending.HasTypedAddress(),
        .HasCurrent = lists.lstEmailList(kChronological).Count() > 0,
        .HasCurrentSelection = lists.SelectedCount(lists.VisibleBox()) > 0,
        .HasPending = lists.lstEmailList(kPending).Count() > 0,
        .HasPendingSelection = lists.SelectedCount(kPending) > 0,
    });
    current.Apply(states);
    pending.Apply(states);
    menu.Apply(states);
}

void FramesFixture::OpenLists(const std::vector<std::pair<QString, QStringList>> &files) {
    for (const auto &[name, entries] : files)
        WriteListFile(name, FileBytes(entries));
    current.RefreshListNames();
    lists.UpdateControls();
    if (!files.empty())
        current.ChooseList(0);
    TakeStatus();
}

QAbstractItemView *FramesFixture::View(int box) {
    return Find<QAbstractItemView>((u"lstEmailList_"_s + QString::number(box)).toLatin1().constData());
}

void FramesFixture::Click(const char *button) {
    QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
}

void FramesFixture::ClickRow(int box, int row, Qt::KeyboardModifiers modifiers) {
    QAbstractItemView *view = View(box);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers,
                      view->visualRect(view->model()->index(row, 0)).center());
}

void FramesFixture::Choose(const QString &name) {
    const int row = Chooser()->findText(name);
    ASSERT_GE(row, 0) << name.toStdString() << " is not offered";
    Chooser()->showPopup();
    QAbstractItemView *popup = Chooser()->view();
    popup->setCurrentIndex(popup->model()->index(row, 0));
    QTest::keyClick(popup, Qt::Key_Return);
}

void FramesFixture::Type(const char *text) {
    QTest::keyClicks(AddressBox(), QString::fromUtf8(text));
}

QStringList FramesFixture::Names() {
    return current.ListNames();
}

bool FramesFixture::IsEnabled(const char *name) {
    if (auto *action = host.findChild<QAction *>(QString::fromLatin1(name)))
        return action->isEnabled();
    return Find<QWidget>(name)->isEnabled();
}

std::pair<QString, QString> FramesFixture::Wording(const char *button) {
    const auto *found = Find<QAbstractButton>(button);
    return {found->text().remove(u'&'), found->toolTip()};
}

} // namespace varlo::test
