#include "prefs/frmOptions.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/Settings.h"
#include "core/TrustedServer.h"
#include "net/frmServerTest.h"
#include "prefs/ComposePage.h"
#include "prefs/GeneralPage.h"
#include "prefs/NotificationPage.h"
#include "prefs/PageControls.h"
#include "prefs/ReceivingPage.h"
#include "prefs/SendingPage.h"

#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>

#include <utility>

namespace varlo {

frmOptions::frmOptions(Session &session, OptionsDoor door, QWidget *parent)
    : QDialog(parent), session_(session), door_(std::move(door)),
      hadPasswords_(!door_.Passwords || door_.Passwords->AreHere()) {
    CreateControls();
    LayOut();
    Connect();
    Form_Load();
}

void frmOptions::CreateControls() {
    setObjectName(u"frmOptions"_s);
    setWindowTitle(u"Preferences"_s);
    lstOptions = new QListWidget;
    lstOptions->setObjectName(u"lstOptions"_s);
    lstOptions->setAccessibleName(u"Pages"_s);
    stack_ = new QStackedWidget;
    pages_ = {new GeneralPage(session_), new SendingPage, new ReceivingPage, new NotificationPage,
              new ComposePage};
    for (PreferencesPage *page : pages_) {
        lstOptions->addItem(page->windowTitle());
        stack_->addWidget(page);
    }
    lblTitle = NewLabel(kApplicationTitle);
    lblTitle->setObjectName(u"lblTitle"_s);
    lblTitle->setFont(QFont(QStringList{u"Verdana"_s, u"sans-serif"_s}));
    cmdOK = NewButton(nullptr, "cmdOK", u"OK"_s, u"Save and exit options"_s);
    cmdOK->setDefault(true);
    cmdCancel = NewButton(nullptr, "cmdCancel", u"Cancel"_s, u"Exit options without saving"_s);
}

void frmOptions::LayOut() {
    Enlarge(lblTitle, 1.2);
    lstOptions->setFixedWidth(lstOptions->sizeHintForColumn(0) + 2 * lstOptions->frameWidth() + 24);
    for (int i = 0; i < lstOptions->count(); ++i)
        lstOptions->item(i)->setSizeHint(QSize(0, lstOptions->fontMetrics().height() + 12));
    auto *upper = new QHBoxLayout;
    upper->setSpacing(12);
    upper->addWidget(lstOptions);
    upper->addWidget(stack_, 1);
    auto *lower = new QHBoxLayout;
    lower->addWidget(lblTitle);
    lower->addStretch();
    lower->addWidget(cmdOK);
    lower->addWidget(cmdCancel);
    auto *all = new QVBoxLayout(this);
    all->addLayout(upper, 1);
    all->addLayout(lower);
    setSizeGripEnabled(true);
    // The text boxes would ask for more than a small screen has.
    resize(sizeHint().boundedTo(QSize(700, 500)));
}

void frmOptions::Connect() {
    connect(lstOptions, &QListWidget::currentRowChanged, this, &frmOptions::lstOptions_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmOptions::reject);
    connect(pages_[Page::Sending], &PreferencesPage::TestWanted, this, [this] {
        TestAccount(pages_[Page::Sending], door_.SendingTest, &Preferences::SMTPServer,
                    &Preferences::SMTPTrusted);
    });
    connect(pages_[Page::Receiving], &PreferencesPage::TestWanted, this, [this] {
        TestAccount(pages_[Page::Receiving], door_.MailboxTest, &Preferences::POPServer,
                    &Preferences::POPTrusted);
    });
    for (QPushButton *button : findChildren<QPushButton *>())
        button->setAutoDefault(true); // Enter presses the button that has the focus
}

void frmOptions::Form_Load() {
    ErrorTrap trap(session_, u"Prefs.Load"_s);
    const Preferences shown = session_.AllSettings.ForWindow(trap);
    for (const PreferencesPage *page : pages_)
        page->Fill(shown);
    lstOptions->setCurrentRow(0);
}

std::optional<Preferences> frmOptions::Typed() {
    Preferences typed = session_.Prefs;
    bool taken = false;
    LastResort(session_, [&] {
        try {
            for (const PreferencesPage *page : pages_)
                page->Take(typed);
        } catch (const RuntimeError &) {
            StoreGeneral(typed);
            throw;
        }
        taken = true;
    });
    return taken ? std::optional(typed) : std::nullopt;
}

// Wanted: when a number cannot be converted, the General page is stored already, and the account is set in
// memory as far as the fields before the number go. The latter is taken back when the window is left.
// Where the passwords are is not stored then: they would be lost on the way.
void frmOptions::StoreGeneral(Preferences typed) {
    typed.Keyring = session_.Prefs.Keyring;
    Trapped(session_, u"Prefs.Save"_s, [&] {
        session_.AllSettings.Store(typed, "General");
        before_ = std::exchange(session_.Prefs, typed);
    });
}

void frmOptions::TakeBack() {
    if (before_)
        session_.Prefs = *std::exchange(before_, std::nullopt);
}

bool frmOptions::RefusesLongText() {
    for (const PreferencesPage *page : pages_) {
        QWidget *field = page->FieldThatIsTooLong();
        if (!field)
            continue;
        ShowField(field);
        session_.Boxes.MsgBox(u"This text is too long to be stored whole: %L1 characters are kept at most, "
                              "a line break counts as two. Please shorten it."_s.arg(kLongestText),
                              BoxButtons::Ok, BoxIcon::Exclamation);
        return true;
    }
    return false;
}

// The report of a failure does not say which field it was; the caret does.
void frmOptions::ShowField(QWidget *field) {
    for (int row = 0; row < stack_->count(); ++row)
        if (stack_->widget(row)->isAncestorOf(field))
            lstOptions->setCurrentRow(row);
    field->setFocus();
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->selectAll();
}

std::optional<Preferences> frmOptions::TypedOn(const PreferencesPage *page) {
    Preferences typed = session_.Prefs;
    if (QWidget *field = page->FieldThatIsNoNumber()) {
        ShowField(field);
        session_.Boxes.MsgBox(u"This is not a number. Please correct it before the test."_s, BoxButtons::Ok,
                              BoxIcon::Exclamation);
        return std::nullopt;
    }
    page->Take(typed);
    return typed;
}

void frmOptions::TestAccount(PreferencesPage *page, const MakeServerTest &make, QString Preferences::*server,
                             QString Preferences::*trusted) {
    const auto typed = TypedOn(page);
    if (!make || !typed)
        return;
    const QString name = (*typed).*server;
    auto *window = new frmServerTest(
        u"Test of [%1]"_s.arg(name),
        {.Make = [=, this] { return make(*TypedOn(page)); },
         .TrustIt = [=, this](const net::TestResult &failed) { return Trusts(name, failed, trusted); },
         .AllowIt = [=, this] { Keep(&Preferences::SMTPUnencrypted, name.trimmed()); }},
        this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->open();
}

bool frmOptions::Trusts(const QString &server, const net::TestResult &failed, QString Preferences::*trusted) {
    const bool isOther = !TrustedCertificate(session_.Prefs.*trusted, server).isEmpty();
    if (!door_.AskTrust({server, *failed.Distrusted, failed.Trouble, isOther}))
        return false;
    Keep(trusted, TrustText(server, failed.Distrusted->Sha256));
    return true;
}

// Said by a click of its own, so it holds even when the window is left with Cancel.
void frmOptions::Keep(QString Preferences::*member, const QString &value) {
    session_.Prefs.*member = value;
    if (before_)
        (*before_).*member = value;
    session_.AllSettings.Write({member});
}

void frmOptions::lstOptions_Click() {
    if (lstOptions->currentRow() >= 0)
        stack_->setCurrentIndex(lstOptions->currentRow());
}

void frmOptions::cmdOK_Click() {
    TakeBack();
    if (RefusesLongText())
        return;
    if (const auto typed = Typed()) {
        return typed->Keyring == 1 ? StoreInKeyring(*typed) : Finish(*typed);
    }
    for (const PreferencesPage *page : pages_)
        if (QWidget *field = page->FieldThatIsNoNumber())
            return ShowField(field);
}

// The keyring may ask the operator something, so this window waits, and can still be left.
void frmOptions::StoreInKeyring(Preferences typed) {
    if (!door_.Passwords) {
        session_.Boxes.MsgBox(u"This system has no keyring. The passwords stay where they are."_s,
                              BoxButtons::Ok, BoxIcon::Exclamation);
        return;
    }
    net::Passwords::Name(typed);
    isStoring_ = true;
    cmdOK->setEnabled(false);
    stack_->setEnabled(false);
    const QPointer<frmOptions> alive(this);
    door_.Passwords->Keep(typed, hadPasswords_, [this, alive, typed](const QString &trouble) {
        if (!alive || !std::exchange(isStoring_, false))
            return;
        cmdOK->setEnabled(true);
        stack_->setEnabled(true);
        if (trouble.isEmpty())
            Finish(typed);
        else
            session_.Boxes.MsgBox(trouble, BoxButtons::Ok, BoxIcon::Exclamation);
    });
}

void frmOptions::Finish(const Preferences &typed) {
    const bool wasInKeyring = session_.Prefs.Keyring == 1;
    const QString name = session_.Prefs.KeyringName;
    if (!Trapped(session_, u"Prefs.Save"_s, [&] { session_.AllSettings.Store(typed); }))
        return;
    if (wasInKeyring && typed.Keyring != 1 && hadPasswords_ && door_.Passwords)
        door_.Passwords->Forget(name);
    if (typed.Keyring == 1 && !hadPasswords_)
        door_.Passwords->Load();
    accept();
}

void frmOptions::reject() {
    TakeBack();
    isStoring_ = false;
    QDialog::reject();
}

} // namespace varlo
