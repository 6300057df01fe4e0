#include "lists/frmCompare.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/NameChooser.h"
#include "core/NoticeBar.h"
#include "core/Reporting.h"
#include "core/StatusLabel.h"
#include "core/modPublic.h"
#include "lists/ImportReview.h"
#include "lists/ListLibrary.h"
#include "lists/ListStore.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace varlo {

namespace {

const std::array<QString, kParts> kCaptions{u"Only in f&irst"_s, u"In &both"_s, u"Only in sec&ond"_s};

} // namespace

frmCompare::frmCompare(Session &session, ListStore &lists, QWidget *parent)
    : QDialog(parent), session_(session), lists_(lists) {
    CreateControls();
    CreateParts();
    CreateUses();
    LayOutControls();
    ConnectControls();
    Compare();
}

void frmCompare::CreateControls() {
    setObjectName(u"frmCompare"_s);
    setWindowTitle(u"Compare Lists"_s);
    barCompare = new NoticeBar("barCompare", this);
    const QStringList names = ListLibrary::Names(session_);
    const qsizetype open = qMax<qsizetype>(0, names.indexOf(lists_.Open.Name()));
    for (int i : {0, 1}) {
        lblCompareList[i] = new QLabel(i == 0 ? u"&First list:"_s : u"Se&cond list:"_s, this);
        cmbCompareList[i] = new NameChooser(12, this);
        cmbCompareList[i]->setObjectName(u"cmbCompareList_"_s + QString::number(i));
        cmbCompareList[i]->addItems(names);
        lblCompareList[i]->setBuddy(cmbCompareList[i]);
    }
    cmbCompareList[0]->setCurrentIndex(static_cast<int>(open));
    cmbCompareList[1]->setCurrentIndex(open == 0 && names.size() > 1 ? 1 : 0);
}

void frmCompare::CreateParts() {
    for (size_t part = 0; part < kParts; ++part) {
        chkCompare[part] = new QCheckBox(kCaptions[part], this);
        chkCompare[part]->setObjectName(u"chkCompare_"_s + QString::number(part));
        lstCompare[part] = new QListView(this);
        lstCompare[part]->setObjectName(u"lstCompare_"_s + QString::number(part));
        lstCompare[part]->setAccessibleName(QString(kCaptions[part]).remove(u'&'));
        lstCompare[part]->setEditTriggers(QAbstractItemView::NoEditTriggers);
        lstCompare[part]->setUniformItemSizes(true);
        lstCompare[part]->setModel(&parts_[part]);
    }
    chkCompare[kOnlyFirst]->setChecked(true);
    lblCompareChosen = new StatusLabel(this);
    lblCompareChosen->setObjectName(u"lblCompareChosen"_s);
}

void frmCompare::CreateUses() {
    cmdCompareSelect = NewButton(this, "cmdCompareSelect", u"&Select"_s, u"Select them in the open list"_s);
    cmdComparePending =
        NewButton(this, "cmdComparePending", u"To &Pending"_s, u"Put them on the Pending list"_s);
    lblCompareAs = new QLabel(u"&as:"_s, this);
    cmbCompareAs = new QComboBox(this);
    cmbCompareAs->setObjectName(u"cmbCompareAs"_s);
    cmbCompareAs->addItems({u"\"+\", to be added"_s, u"\"-\", to be removed"_s});
    lblCompareAs->setBuddy(cmbCompareAs);
    lblCompareName = new QLabel(u"&New list:"_s, this);
    txtCompareName = new QLineEdit(this);
    txtCompareName->setObjectName(u"txtCompareName"_s);
    lblCompareName->setBuddy(txtCompareName);
    cmdCompareMake = NewButton(this, "cmdCompareMake", u"&Make List"_s, u"Make a list of them"_s);
    cmdClose = NewButton(this, "cmdClose", u"C&lose"_s);
}

void frmCompare::LayOutControls() {
    auto *lists = new QHBoxLayout;
    for (int i : {0, 1}) {
        lists->addWidget(lblCompareList[i]);
        lists->addWidget(cmbCompareList[i], 1);
    }
    auto *parts = new QGridLayout;
    for (int part = 0; part < kParts; ++part) {
        parts->addWidget(chkCompare[static_cast<size_t>(part)], 0, part);
        parts->addWidget(lstCompare[static_cast<size_t>(part)], 1, part);
        parts->setColumnStretch(part, 1);
    }
    auto *column = new QVBoxLayout(this);
    column->addWidget(barCompare);
    column->addLayout(lists);
    column->addLayout(parts, 1);
    LayOutUses(column);
    resize(680, 520);
}

void frmCompare::LayOutUses(QVBoxLayout *column) {
    auto *uses = new QHBoxLayout;
    uses->addWidget(lblCompareChosen, 1);
    uses->addWidget(cmdCompareSelect);
    uses->addWidget(cmdComparePending);
    uses->addWidget(lblCompareAs);
    uses->addWidget(cmbCompareAs);
    auto *make = new QHBoxLayout;
    make->addWidget(lblCompareName);
    make->addWidget(txtCompareName, 1);
    make->addWidget(cmdCompareMake);
    make->addSpacing(fontMetrics().height());
    make->addWidget(cmdClose);
    column->addLayout(uses);
    column->addLayout(make);
}

void frmCompare::ConnectControls() {
    for (NameChooser *chooser : cmbCompareList)
        connect(chooser, &QComboBox::currentIndexChanged, this, &frmCompare::Compare);
    for (QCheckBox *part : chkCompare)
        connect(part, &QCheckBox::toggled, this, &frmCompare::UpdateControls);
    connect(txtCompareName, &QLineEdit::textChanged, this, &frmCompare::UpdateControls);
    connect(txtCompareName, &QLineEdit::returnPressed, cmdCompareMake, &QPushButton::click);
    connect(cmdCompareSelect, &QPushButton::clicked, this, &frmCompare::cmdCompareSelect_Click);
    connect(cmdComparePending, &QPushButton::clicked, this, &frmCompare::cmdComparePending_Click);
    connect(cmdCompareMake, &QPushButton::clicked, this, &frmCompare::cmdCompareMake_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmCompare::accept);
}

QStringList frmCompare::EntriesOf(const QString &name) {
    if (name == lists_.Open.Name())
        return lists_.lstEmailList(kChronological).Entries();
    QStringList entries;
    Trapped(session_, u"Compare.Load"_s, [&] { entries = ListLibrary::Read(session_, name); });
    return entries;
}

void frmCompare::Compare() {
    const Hourglass hourglass(session_.Boxes);
    barCompare->hide();
    comparison_ = CompareLists(EntriesOf(cmbCompareList[0]->currentText()),
                               EntriesOf(cmbCompareList[1]->currentText()));
    for (size_t part = 0; part < kParts; ++part) {
        parts_[part].setStringList(comparison_[part]);
        chkCompare[part]->setText(kCaptions[part] + u" (%1)"_s.arg(comparison_[part].size()));
    }
    UpdateControls();
}

QStringList frmCompare::Chosen() const {
    return JoinParts(comparison_,
                     {chkCompare[0]->isChecked(), chkCompare[1]->isChecked(), chkCompare[2]->isChecked()});
}

void frmCompare::UpdateControls() {
    const qsizetype count = Chosen().size();
    lblCompareChosen->setText(AddressesText(count).toLower() + u" chosen"_s);
    cmdCompareSelect->setEnabled(count > 0);
    cmdComparePending->setEnabled(count > 0);
    cmdCompareMake->setEnabled(count > 0 && !txtCompareName->text().isEmpty());
}

// What of them the open list has; where another list has them alone, that is nothing.
void frmCompare::cmdCompareSelect_Click() {
    const int box = lists_.VisibleBox();
    QSet<QString> wanted;
    for (const QString &address : Chosen())
        wanted.insert(LowerCased(address));
    const QStringList entries = lists_.lstEmailList(box).Entries();
    QList<int> rows;
    for (qsizetype row = 0; row < entries.size(); ++row)
        if (wanted.contains(LowerCased(entries[row])))
            rows << static_cast<int>(row);
    lists_.SelectRows(box, rows);
    barCompare->Say(u"Selected %1 in [%2]."_s.arg(AddressesText(rows.size()).toLower(), lists_.Open.Name()));
}

void frmCompare::cmdComparePending_Click() {
    ImportReview review(lists_);
    review.SetKind(cmbCompareAs->currentIndex() == 1 ? RequestKind::Unsubscribe : RequestKind::Subscribe);
    QList<ImportItem> items;
    for (const QString &address : Chosen())
        items.append({address, QString(), 0, 1, FaultOf(address)});
    review.SetItems(items);
    const QString counts = review.CountsText();
    const int added = ApplyImport(session_, lists_, review.NewAddresses(), review.Kind());
    barCompare->Say(u"Put %1 on the Pending list (%2)."_s.arg(AddressesText(added).toLower(), counts));
}

void frmCompare::cmdCompareMake_Click() {
    const QStringList chosen = Chosen();
    const QString name = StripChars(txtCompareName->text(), kForbiddenInNames);
    if (PathExists(ListLibrary::Path(session_, name)))
        return barCompare->Say(u"There is a list [%1] already."_s.arg(name));
    if (chosen.size() > EntryListModel::kMostEntries)
        return barCompare->Say(
            u"A list holds no more than %1 addresses."_s.arg(EntryListModel::kMostEntries));
    const bool isMade = Trapped(session_, u"Compare.cmdCompareMake"_s, [&] {
        ListLibrary::Write(session_, name, chosen);
        StatusMessage(session_, u"Created mailing list ["_s + name + u"]"_s);
    });
    if (!isMade)
        return;
    Q_EMIT ListMade();
    barCompare->Say(u"List [%1] has %2."_s.arg(name, AddressesText(chosen.size()).toLower()));
    for (NameChooser *chooser : cmbCompareList)
        chooser->addItem(name);
    txtCompareName->clear();
}

} // namespace varlo
