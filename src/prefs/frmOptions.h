// The Preferences window: five pages of settings of the open profile, stored together on OK.
#pragma once

#include "core/Preferences.h"
#include "prefs/OptionsDoor.h"

#include <QDialog>

#include <optional>

class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace varlo {

class PreferencesPage;
struct Session;

// Shown modally with exec(), made anew each time. A failure while it is filled is reported as "Prefs.Load"
// and the window still opens. When a port or the wrap column cannot be converted on OK, the error reaches the
// last resort; when the file cannot be written, that is reported as "Prefs.Save"; a text that would not come
// back whole is refused before anything is stored. The window then stays open with everything typed in it.
class frmOptions : public QDialog {
    Q_OBJECT

public:
    explicit frmOptions(Session &session, OptionsDoor door = {}, QWidget *parent = nullptr);

    void reject() override;

private:
    void CreateControls();
    void LayOut();
    void Connect();
    void Form_Load();

    // What is typed, or nothing: then the General page is stored and the error is reported.
    std::optional<Preferences> Typed();
    void StoreGeneral(Preferences typed);
    void StoreInKeyring(Preferences typed);
    void Finish(const Preferences &typed);
    void TakeBack();
    bool RefusesLongText();
    void ShowField(QWidget *field);

    // A test of the account that stands on `page`; its certificate and what is allowed are stored at once.
    void TestAccount(PreferencesPage *page, const MakeServerTest &make, QString Preferences::*server,
                     QString Preferences::*trusted);
    std::optional<Preferences> TypedOn(const PreferencesPage *page);
    bool Trusts(const QString &server, const net::TestResult &failed, QString Preferences::*trusted);
    void Keep(QString Preferences::*member, const QString &value);

    void lstOptions_Click();
    void cmdOK_Click();

    Session &session_;
    const OptionsDoor door_;
    std::vector<PreferencesPage *> pages_;
    const bool hadPasswords_;           // what is shown of them is what there is
    bool isStoring_ = false;            // the keyring has not answered yet
    std::optional<Preferences> before_; // what is to be held when the window is left after a failed OK

    QListWidget *lstOptions = nullptr;
    QStackedWidget *stack_ = nullptr;
    QLabel *lblTitle = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};

} // namespace varlo
