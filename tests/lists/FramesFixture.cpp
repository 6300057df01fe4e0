#include "lists/FramesFixture.h"

#include "core/Literals.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QTest>

namespace varlo::test {

FramesFixture::FramesFixture() {
    auto *row = new QHBoxLayout(&host);
    row->addWidget(&owner.page);
    host.resize(760, 520);
    host.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&host));
}

void FramesFixture::OpenLists(const std::vector<std::pair<QString, QStringList>> &files) {
    for (const auto &[name, entries] : files)
        WriteListFile(name, FileBytes(entries));
    current.RefreshListNames();
    if (!files.empty())
        current.ChooseList(0);
    TakeStatus();
    Turn();
}

QAbstractItemView *FramesFixture::View(int box) {
    Turn();
    return Find<QAbstractItemView>((u"lstEmailList_"_s + QString::number(box)).toLatin1().constData());
}

void FramesFixture::Click(const char *button) {
    Turn();
    QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
    Turn();
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
    Turn();
    if (auto *action = host.findChild<QAction *>(QString::fromLatin1(name)))
        return action->isEnabled();
    return Find<QWidget>(name)->isEnabled();
}

std::pair<QString, QString> FramesFixture::Wording(const char *button) {
    const auto *found = Find<QAbstractButton>(button);
    return {found->text().remove(u'&'), found->toolTip()};
}

} // namespace varlo::test
