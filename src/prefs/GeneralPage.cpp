#include "prefs/GeneralPage.h"

#include "core/Buttons.h"
#include "core/Literals.h"
#include "prefs/Maintenance.h"
#include "prefs/PageControls.h"

#include <QComboBox>
#include <QPushButton>

namespace varlo {

GeneralPage::GeneralPage(Session &session)
    : PreferencesPage(Page::General, u"General"_s, u"Miscellaneous settings"_s) {
    auto *chkNotify = NewCheckBox("chkNotify", u"Enable e-mail &notification"_s,
                                  u"Check this box to notify subscribers/unsubscribers via e-mail"_s);
    auto *chkLogStatus =
        NewCheckBox("chkLogStatus", u"&Log status messages"_s, u"Log Varlo Pro events to text files"_s);
    auto *chkLogEmails =
        NewCheckBox("chkLogEmails", u"&Save sent e-mails"_s, u"Save all sent messages to text files"_s);
    auto *pending =
        NewLayout<QVBoxLayout>(AddGroup(Group::PendingListProcessing, u"Pending List Processing"_s));
    pending->addWidget(chkNotify);
    auto *logging = NewLayout<QVBoxLayout>(AddGroup(Group::Logging, u"Logging"_s));
    logging->addWidget(chkLogStatus);
    logging->addWidget(chkLogEmails);
    logging->addWidget(NewMaintenance(session));
    auto *chkKeyring = NewCheckBox("chkKeyring", u"&Keep passwords in the system's keyring"_s,
                                   u"Check this box to keep passwords out of the file of the preferences"_s);
    auto *passwords = NewLayout<QVBoxLayout>(AddGroup(Group::Passwords, u"Passwords"_s));
    passwords->addWidget(chkKeyring);
    AddStretch();
    Tie(chkNotify, &Preferences::Notify);
    Tie(chkLogStatus, &Preferences::LogStatus);
    Tie(chkLogEmails, &Preferences::LogEmails);
    Tie(chkKeyring, &Preferences::Keyring);
}

QWidget *GeneralPage::NewMaintenance(Session &session) {
    auto *cmbMaintenance = new QComboBox;
    cmbMaintenance->setObjectName(u"cmbMaintenance"_s);
    cmbMaintenance->addItems(MaintenanceItems());
    auto *cmdLogGo =
        NewButton(nullptr, "cmdLogGo", u"&Go"_s, u"Activate the selected maintenance function"_s);
    connect(cmdLogGo, &QPushButton::clicked, this,
            [&session, cmbMaintenance] { RunMaintenance(session, cmbMaintenance->currentText()); });
    auto *inner = new QWidget;
    auto *row = NewLayout<QHBoxLayout>(inner);
    row->addWidget(NewLabel(u"&Maintenance:"_s, cmbMaintenance));
    row->addWidget(cmbMaintenance);
    row->addWidget(cmdLogGo);
    row->addStretch();
    return inner;
}

} // namespace varlo
