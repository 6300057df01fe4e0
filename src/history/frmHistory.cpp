#include "history/frmHistory.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/NameChooser.h"
#include "core/Reporting.h"
#include "core/Settings.h"
#include "core/StatusLabel.h"
#include "core/modPublic.h"
#include "history/Differences.h"
#include "history/HistoryFolder.h"
#include "history/KeepVersion.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

namespace varlo {

using History::TimelineRow;

namespace {

const QString kLabel = u"Main.mnuListsHistory"_s;

QString CountText(const QString &sign, int count, const QString &unit = {}) {
    return count < 0 ? QString() : sign + QString::number(count) + unit;
}

QString WhenText(const TimelineRow &row) {
    if (row.What == TimelineRow::Kind::Now)
        return u"Now"_s;
    const QString time = History::TimeText(row.Until);
    return row.What == TimelineRow::Kind::Version ? u"Until "_s + time : time;
}

QStringList Marked(const QStringList &entries, const QString &mark) {
    QStringList marked;
    for (const QString &entry : entries)
        marked.append(mark + entry);
    return marked;
}

} // namespace

frmHistory::frmHistory(Session &session, const QStringList &lists, const QString &current, QWidget *parent)
    : QDialog(parent), session_(session), lists_(lists) {
    setObjectName(u"frmHistory"_s);
    setWindowTitle(u"History"_s);
    CreateControls();
    LayOutControls();
    ConnectControls();
    FillLists(current);
}

void frmHistory::CreateControls() {
    lblHistoryList = new QLabel(u"&List:"_s, this);
    lblHistoryList->setObjectName(u"lblHistoryList"_s);
    cmbHistoryList = new NameChooser(16, this, u"The list whose versions are shown"_s);
    cmbHistoryList->setObjectName(u"cmbHistoryList"_s);
    lblHistoryList->setBuddy(cmbHistoryList);
    tblHistory = new QTreeWidget(this);
    tblHistory->setObjectName(u"tblHistory"_s);
    tblHistory->setAccessibleName(u"Versions"_s);
    tblHistory->setColumnCount(5);
    tblHistory->header()->hide(); // what stands there speaks for itself
    tblHistory->setRootIsDecorated(false);
    tblHistory->setUniformRowHeights(true);
    tblHistory->setAllColumnsShowFocus(true);
    tblHistory->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tblHistory->header()->setStretchLastSection(false);
    tblHistory->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tblHistory->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    lblHistoryDifference = new StatusLabel(this);
    lblHistoryDifference->setObjectName(u"lblHistoryDifference"_s);
    txtHistoryDifference = new QPlainTextEdit(this);
    txtHistoryDifference->setObjectName(u"txtHistoryDifference"_s);
    txtHistoryDifference->setAccessibleName(u"Differences"_s);
    txtHistoryDifference->setReadOnly(true);
    txtHistoryDifference->setTabChangesFocus(true);
    txtHistoryDifference->setUndoRedoEnabled(false);
    txtHistoryDifference->setMinimumHeight(4 * fontMetrics().lineSpacing());
    CreateButtons();
}

void frmHistory::CreateButtons() {
    lblHistoryFind = new QLabel(u"&When did an address join or leave?"_s, this);
    lblHistoryFind->setObjectName(u"lblHistoryFind"_s);
    txtHistoryFind = new QLineEdit(this);
    txtHistoryFind->setObjectName(u"txtHistoryFind"_s);
    txtHistoryFind->setPlaceholderText(u"name@example.com"_s);
    txtHistoryFind->setToolTip(u"The address that is looked for in all versions of the list"_s);
    lblHistoryFind->setBuddy(txtHistoryFind);
    cmdHistoryFind =
        NewButton(this, "cmdHistoryFind", u"&Find"_s, u"Look for it in all versions"_s, u"search");
    chkHistory = new QCheckBox(u"&Keep what each save replaces"_s, this);
    chkHistory->setObjectName(u"chkHistory"_s);
    chkHistory->setToolTip(u"Uncheck to keep no more versions; those that are there stay"_s);
    chkHistory->setChecked(History::IsOn(session_));
    cmdHistoryBringBack = NewButton(this, "cmdHistoryBringBack", u"&Bring Back"_s,
                                    u"Put the selected version in the place of the list, not yet saved"_s);
    cmdHistoryClose = NewButton(this, "cmdHistoryClose", u"&Close"_s);
}

void frmHistory::LayOutControls() {
    auto *chooser = new QHBoxLayout;
    chooser->addWidget(lblHistoryList);
    chooser->addWidget(cmbHistoryList, 1);
    auto *finder = new QHBoxLayout;
    finder->addWidget(lblHistoryFind);
    finder->addWidget(txtHistoryFind, 1);
    finder->addWidget(cmdHistoryFind);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(chkHistory);
    buttons->addStretch(1);
    buttons->addWidget(cmdHistoryBringBack);
    buttons->addWidget(cmdHistoryClose);
    auto *column = new QVBoxLayout(this);
    column->addLayout(chooser);
    column->addWidget(tblHistory, 3);
    column->addWidget(lblHistoryDifference);
    column->addWidget(txtHistoryDifference, 2);
    column->addLayout(finder);
    column->addLayout(buttons);
    resize(640, 480);
}

void frmHistory::ConnectControls() {
    connect(cmbHistoryList, &QComboBox::activated, this, &frmHistory::cmbHistoryList_Click);
    connect(tblHistory, &QTreeWidget::itemSelectionChanged, this, &frmHistory::tblHistory_Click);
    connect(cmdHistoryFind, &QPushButton::clicked, this, &frmHistory::cmdHistoryFind_Click);
    connect(txtHistoryFind, &QLineEdit::returnPressed, cmdHistoryFind, &QPushButton::click);
    connect(chkHistory, &QCheckBox::clicked, this, &frmHistory::chkHistory_Click);
    connect(cmdHistoryBringBack, &QPushButton::clicked, this, &frmHistory::cmdHistoryBringBack_Click);
    connect(cmdHistoryClose, &QPushButton::clicked, this, &QDialog::reject);
}

// ---- The list and its versions

void frmHistory::FillLists(const QString &current) {
    for (const QString &name : lists_)
        cmbHistoryList->addItem(name, name);
    QStringList deleted = History::Names(session_);
    deleted.removeIf([this](const QString &name) { return lists_.contains(name); });
    SortNames(deleted);
    for (const QString &name : std::as_const(deleted))
        cmbHistoryList->addItem(name + u" (deleted)"_s, name);
    cmbHistoryList->setCurrentIndex(qMax(0, cmbHistoryList->findData(current)));
    cmbHistoryList_Click();
}

QString frmHistory::ChosenList() const {
    return cmbHistoryList->currentData().toString();
}

void frmHistory::cmbHistoryList_Click() {
    rows_.clear();
    tblHistory->clear();
    if (cmbHistoryList->count() > 0)
        Trapped(session_, kLabel, [this] { rows_ = History::TimelineOf(session_, ChosenList()); });
    for (auto row = rows_.crbegin(); row != rows_.crend(); ++row)
        AddRow(*row);
    tblHistory->setCurrentItem(tblHistory->topLevelItem(0));
    tblHistory_Click();
}

void frmHistory::AddRow(const TimelineRow &row) {
    const QString cause = row.Cause.isEmpty() ? u"Not known"_s : row.Cause;
    const QString unit = row.Entries == 1 ? u" entry"_s : u" entries"_s;
    auto *item =
        new QTreeWidgetItem(tblHistory, {WhenText(row), cause, CountText({}, row.Entries, unit),
                                         CountText(u"+"_s, row.Added), CountText(u"-"_s, row.Removed)});
    for (const int column : {2, 3, 4})
        item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
}

QList<TimelineRow> frmHistory::SelectedRows() const {
    QList<TimelineRow> selected;
    for (int place = tblHistory->topLevelItemCount() - 1; place >= 0; --place)
        if (tblHistory->topLevelItem(place)->isSelected())
            selected.append(rows_[rows_.size() - 1 - place]);
    return selected;
}

// ---- What the selected ones hold

void frmHistory::tblHistory_Click() {
    const QList<TimelineRow> selected = SelectedRows();
    const auto now = std::find_if(rows_.begin(), rows_.end(),
                                  [](const TimelineRow &row) { return row.What == TimelineRow::Kind::Now; });
    const bool isOne = selected.size() == 1;
    cmdHistoryBringBack->setEnabled(isOne && selected[0].What != TimelineRow::Kind::Now);
    if (rows_.isEmpty() || (rows_.size() == 1 && now != rows_.end()))
        Tell(u"Nothing is kept of this list yet. The next save keeps what it replaces."_s, {});
    else if (selected.size() == 2)
        ShowDifference(selected[0], selected[1]);
    else if (isOne && now != rows_.end() && selected[0].What != TimelineRow::Kind::Now)
        ShowDifference(selected[0], *now);
    else
        Tell(u"Select a version to see what changed from it to now, or two to compare them."_s, {});
}

void frmHistory::ShowDifference(const TimelineRow &older, const TimelineRow &newer) {
    const Hourglass hourglass(session_.Boxes);
    Trapped(session_, kLabel, [&] {
        const auto [added, removed] = History::Between(History::ReadRow(older), History::ReadRow(newer));
        Tell(u"From "_s + History::NameOf(older) + u" to "_s + History::NameOf(newer) + u": "_s +
                 QString::number(added.size()) + u" added, "_s + QString::number(removed.size()) +
                 u" removed"_s,
             Marked(added, u"+ "_s) + Marked(removed, u"- "_s));
    });
}

void frmHistory::Tell(const QString &caption, const QStringList &lines) {
    lblHistoryDifference->setText(caption);
    txtHistoryDifference->setAccessibleDescription(caption);
    txtHistoryDifference->setPlainText(lines.join(u'\n'));
}

void frmHistory::cmdHistoryFind_Click() {
    const QString address = txtHistoryFind->text().trimmed();
    if (address.isEmpty())
        return txtHistoryFind->setFocus();
    const Hourglass hourglass(session_.Boxes);
    Tell(u"["_s + address + u"] on ["_s + ChosenList() + u"]"_s, History::TrailTexts(address, rows_));
}

// ---- What the operator wants

void frmHistory::cmdHistoryBringBack_Click() {
    QStringList entries;
    if (!Trapped(session_, kLabel, [&] { entries = History::ReadRow(SelectedRows().constFirst()); }))
        return;
    const QString name = ChosenList();
    accept();
    Q_EMIT BringBackWanted(name, entries);
}

void frmHistory::chkHistory_Click() {
    session_.Prefs.History = chkHistory->isChecked() ? 1 : 0;
    session_.AllSettings.Write({&Preferences::History});
}

} // namespace varlo
