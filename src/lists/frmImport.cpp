#include "lists/frmImport.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/NoticeBar.h"
#include "core/StatusLabel.h"
#include "lists/ImportText.h"
#include "lists/ListStore.h"
#include "lists/ReviewTable.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>

namespace varlo {

namespace {

constexpr int kSlice = 15;        // milliseconds of looking between two rounds of events
constexpr int kTypingPause = 100; // milliseconds
constexpr int kLongSearch = 300;  // milliseconds without a word of what goes on

} // namespace

frmImport::frmImport(Session &session, ListStore &lists, QWidget *parent)
    : QDialog(parent), session_(session), lists_(lists), review_(lists) {
    CreateControls();
    CreateReview();
    CreateButtons();
    LayOutControls();
    ConnectControls();
    ConnectSearch();
    ShowSources();
    UpdateControls();
}

void frmImport::CreateControls() {
    setObjectName(u"frmImport"_s);
    setWindowTitle(u"Import Addresses"_s);
    setAcceptDrops(true);
    barImport = new NoticeBar("barImport", this);
    lblImportText = new QLabel(u"&Text:"_s, this);
    txtImport = new ImportText(this);
    txtImport->setObjectName(u"txtImport"_s);
    txtImport->setPlaceholderText(
        u"Paste or type a text with addresses here, or drop files: text, CSV, vCard, lists."_s);
    lblImportText->setBuddy(txtImport);
    cmdImportFile = NewButton(this, "cmdImportFile", u"&Open File..."_s, u"Take the addresses of a file"_s);
    lstImportFiles = new QListWidget(this);
    lstImportFiles->setObjectName(u"lstImportFiles"_s);
    lstImportFiles->setAccessibleName(u"Files that are looked through"_s);
    lstImportFiles->setUniformItemSizes(true);
    cmdImportLeaveOut =
        NewButton(this, "cmdImportLeaveOut", u"&Leave Out"_s, u"Look through the selected file no more"_s);
}

void frmImport::CreateReview() {
    lblImportCounts = new StatusLabel(this);
    lblImportCounts->setObjectName(u"lblImportCounts"_s);
    prgImport = new QProgressBar(this);
    prgImport->setObjectName(u"prgImport"_s);
    prgImport->setAccessibleName(u"Looked through"_s);
    cmdImportStop = NewButton(this, "cmdImportStop", u"Sto&p"_s, u"Look through the rest no more"_s);
    lblImportShow = new QLabel(u"&Show:"_s, this);
    cmbImportShow = new QComboBox(this);
    cmbImportShow->setObjectName(u"cmbImportShow"_s);
    cmbImportShow->addItems({u"Everything"_s, u"New"_s, u"Already on the list"_s, u"Not on the list"_s,
                             u"Already pending"_s, u"Repeated"_s, u"Unusable"_s});
    lblImportShow->setBuddy(cmbImportShow);
    tblImport = new ReviewTable(this);
    tblImport->setObjectName(u"tblImport"_s);
    tblImport->setAccessibleName(u"Addresses found"_s);
    tblImport->setModel(&review_);
    tblImport->setToolTip(u"What is unusable stands first: press Enter on it to correct it"_s);
    const int width = fontMetrics().averageCharWidth();
    tblImport->setColumnWidth(ImportReview::kAddress, 36 * width);
    tblImport->setColumnWidth(ImportReview::kPlace, 24 * width);
}

void frmImport::CreateButtons() {
    lblImportAs = new QLabel(u"On the Pending list &as:"_s, this);
    cmbImportAs = new QComboBox(this);
    cmbImportAs->setObjectName(u"cmbImportAs"_s);
    cmbImportAs->addItems({u"\"+\", to be added"_s, u"\"-\", to be removed"_s});
    lblImportAs->setBuddy(cmbImportAs);
    cmdOK = NewButton(this, "cmdOK", u"OK"_s, u"Put what is new on the Pending list"_s);
    cmdOK->setDefault(true);
    cmdCancel = NewButton(this, "cmdCancel", u"Cancel"_s, u"Close without changing anything"_s);
}

void frmImport::LayOutControls() {
    auto *head = new QHBoxLayout;
    head->addWidget(lblImportText, 1);
    head->addWidget(cmdImportFile);
    auto *files = new QHBoxLayout;
    files->addWidget(lstImportFiles, 1);
    files->addWidget(cmdImportLeaveOut, 0, Qt::AlignTop);
    lstImportFiles->setMaximumHeight(4 * fontMetrics().lineSpacing());
    auto *found = new QHBoxLayout;
    found->addStrut(cmdImportStop->sizeHint().height());
    found->addWidget(lblImportCounts, 1);
    found->addWidget(prgImport);
    found->addWidget(cmdImportStop);
    found->addWidget(lblImportShow);
    found->addWidget(cmbImportShow);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(lblImportAs);
    buttons->addWidget(cmbImportAs);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *column = new QVBoxLayout(this);
    column->addWidget(barImport);
    column->addLayout(head);
    column->addWidget(txtImport, 2);
    column->addLayout(files);
    column->addLayout(found);
    column->addWidget(tblImport, 3);
    column->addLayout(buttons);
    txtImport->setFocus();
    resize(680, 560);
}

void frmImport::ConnectControls() {
    connect(txtImport, &ImportText::FilesPasted, this, &frmImport::TakeFiles);
    connect(txtImport, &ImportText::LongTextPasted, this, &frmImport::TakeLongText);
    connect(txtImport, &QPlainTextEdit::textChanged, this, [this] {
        tmrTyped_.start();
        UpdateControls();
    });
    connect(cmdImportFile, &QPushButton::clicked, this, &frmImport::cmdImportFile_Click);
    connect(lstImportFiles, &QListWidget::currentRowChanged, this, &frmImport::UpdateControls);
    connect(cmdImportLeaveOut, &QPushButton::clicked, this, &frmImport::cmdImportLeaveOut_Click);
    connect(cmdImportStop, &QPushButton::clicked, this, &frmImport::cmdImportStop_Click);
    connect(cmbImportShow, &QComboBox::currentIndexChanged, this, [this](int index) {
        review_.SetFilter(index <= 0 ? std::nullopt : std::optional(static_cast<ImportState>(index - 1)));
    });
    connect(cmbImportAs, &QComboBox::currentIndexChanged, this, [this](int index) {
        review_.SetKind(index == 1 ? RequestKind::Unsubscribe : RequestKind::Subscribe);
    });
    connect(cmdOK, &QPushButton::clicked, this, &frmImport::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmImport::reject);
}

void frmImport::ConnectSearch() {
    tmrTyped_.setSingleShot(true);
    tmrTyped_.setInterval(kTypingPause);
    connect(&tmrTyped_, &QTimer::timeout, this, [this] {
        search_.SetText(txtImport->toPlainText());
        StartSearch();
    });
    connect(&tmrImport_, &QTimer::timeout, this, &frmImport::tmrImport_Timer);
    connect(&review_, &ImportReview::CountsChanged, this, &frmImport::UpdateControls);
    // Requests arrive while the window is open, too.
    connect(&lists_.Pending, &PendingList::Changed, &review_, &ImportReview::Judge);
}

void frmImport::Take(const ImportData &given) {
    if (!given.Files.isEmpty())
        TakeFiles(given.Files);
    else if (given.Text.size() > ImportText::kLongest)
        TakeLongText(given.Text);
    else
        txtImport->insertPlainText(given.Text);
}

void frmImport::TakeFiles(const QStringList &paths) {
    const Hourglass hourglass(session_.Boxes);
    const QString trouble = search_.AddFiles(paths);
    if (trouble.isEmpty())
        barImport->hide();
    else
        barImport->Say(trouble);
    ShowSources();
    StartSearch();
}

// Too long to be shown: a text box would be busy with it for minutes.
void frmImport::TakeLongText(const QString &text) {
    search_.AddSource(u"Pasted text"_s, text);
    ShowSources();
    StartSearch();
}

void frmImport::ShowSources() {
    const QStringList names = search_.SourceNames();
    lstImportFiles->clear();
    lstImportFiles->addItems(names);
    lstImportFiles->setCurrentRow(static_cast<int>(names.size()) - 1);
    lstImportFiles->setVisible(!names.isEmpty());
    cmdImportLeaveOut->setVisible(!names.isEmpty());
}

void frmImport::StartSearch() {
    isStopped_ = false;
    sinceStart_.start();
    tmrImport_.start();
    UpdateControls();
}

void frmImport::tmrImport_Timer() {
    if (search_.Step(kSlice))
        EndSearch();
    else
        UpdateControls();
}

void frmImport::EndSearch() {
    tmrImport_.stop();
    review_.SetItems(search_.Items());
    UpdateControls();
}

QString frmImport::CountsText() const {
    const int room = EntryListModel::kMostEntries - lists_.Pending.Count();
    QString text = review_.CountsText();
    if (isStopped_)
        text += u" (stopped at %1%)"_s.arg(search_.Percent());
    if (review_.Counts().New > room)
        text += u"; the Pending list has room for %1"_s.arg(room);
    return text;
}

void frmImport::UpdateControls() {
    const bool isSearching = tmrImport_.isActive();
    const bool isLong = isSearching && sinceStart_.hasExpired(kLongSearch);
    if (cmdImportStop->hasFocus() && !isLong && !isStopped_)
        txtImport->setFocus();
    prgImport->setVisible(isLong);
    prgImport->setValue(search_.Percent());
    cmdImportStop->setVisible(isLong || isStopped_);
    cmdImportStop->setText(isStopped_ ? u"&Go On"_s : u"Sto&p"_s);
    if (isLong)
        lblImportCounts->setText(u"Looking for addresses..."_s);
    else if (!isSearching)
        lblImportCounts->setText(CountsText());
    cmdImportLeaveOut->setEnabled(lstImportFiles->currentRow() >= 0);
    const bool hasRoom = lists_.Pending.Count() < EntryListModel::kMostEntries;
    cmdOK->setEnabled(!isSearching && !tmrTyped_.isActive() && review_.Counts().New > 0 && hasRoom);
}

void frmImport::cmdImportFile_Click() {
    const QChar nul(u'\0');
    const QString filter = u"All Files"_s + nul + u"*.*"_s + nul + u"Text, tables, cards and lists"_s + nul +
                           u"*.txt *.csv *.tsv *.vcf *.vlo"_s + nul;
    const QString path = session_.Boxes.OpenFileBox(filter, QString(), u"Import Addresses"_s);
    if (!path.isEmpty())
        TakeFiles({path});
}

void frmImport::cmdImportLeaveOut_Click() {
    search_.RemoveSource(lstImportFiles->currentItem()->text());
    ShowSources();
    if (lstImportFiles->count() == 0)
        txtImport->setFocus();
    StartSearch();
}

void frmImport::cmdImportStop_Click() {
    if (isStopped_)
        return StartSearch();
    isStopped_ = true;
    EndSearch();
}

void frmImport::cmdOK_Click() {
    ApplyImport(session_, lists_, review_.NewAddresses(), review_.Kind());
    accept();
}

void frmImport::dragEnterEvent(QDragEnterEvent *event) {
    if (ImportDataOf(*event->mimeData()).IsEmpty())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void frmImport::dropEvent(QDropEvent *event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Take(ImportDataOf(*event->mimeData()));
}

} // namespace varlo
