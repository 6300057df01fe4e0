// A compose window on a profile of its own, beside a main window that is only its answers.
#pragma once

#include "compose/ComposeHost.h"
#include "compose/MessageEdit.h"
#include "compose/WindowHelpers.h"
#include "compose/frmCompose.h"
#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/StatusLabel.h"
#include "support/FakeMailer.h"
#include "support/TestProfile.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QToolButton>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {

struct FakeHost : ComposeHost {
    QStringList ListNames() const override { return Names; }
    QString CurrentListName() const override { return Current; }
    QStringList SelectedAddresses() const override { return Selected; }
    void Offer(const PendingRequest &request) override { Pending << request.Entry(); }

    QStringList Names;
    QString Current;
    QStringList Selected;
    QStringList Pending;
};

class ComposeFixture : public testing::Test {
protected:
    ~ComposeFixture() override { delete window; }

    void List(const QString &name, const QByteArray &bytes) {
        profile.Write(u"lists/"_s + name + u".vlo"_s, bytes);
        host.Names << name;
    }
    void Ini(const QByteArray &text) { profile.Write(u"prefs.ini"_s, text); }

    void Open() {
        window = new frmCompose(profile.session, host, mailers.Maker());
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }
    template<typename Control> Control *Find(const char *name) const {
        return test::Find<Control>(window, name);
    }

    MessageEdit *Body() const { return Find<MessageEdit>("txtMessage"); }
    QLineEdit *Subject() const { return Find<QLineEdit>("txtSubject"); }
    QComboBox *To() const { return Find<QComboBox>("cmbTo"); }
    QToolButton *Indicator() const { return Find<QToolButton>("picAttachments"); }
    QString Label(const char *name) const { return Find<QLabel>(name)->text(); }
    QString Recipients() const { return Label("lblStatusRecipients"); }

    void Choose(const char *menuEntry) const { Find<QAction>(menuEntry)->trigger(); }
    // As the operator chooses in the drop-down, the entry that is shown already included.
    void ChooseTo(int index) const {
        To()->setCurrentIndex(index);
        Q_EMIT To()->activated(index);
    }
    void ChooseTo(const QString &text) const { ChooseTo(To()->findText(text)); }
    void Type(const QString &text) const { QTest::keyClicks(Body(), text); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const {
        QTest::keyClick(Body(), key, modifiers);
    }

    // Everything that a message needs before it can be sent.
    void Prepare(const QByteArray &addresses) {
        profile.session.Prefs.SMTPServer = u"mail.example.org"_s;
        profile.session.Prefs.SMTPFrom = u"Ann Editor"_s;
        profile.session.Prefs.SMTPEmail = u"ann@example.org"_s;
        List(u"news"_s, addresses);
        host.Current = u"news"_s;
        Open();
        Subject()->setText(u"News"_s);
        Body()->SetText(u"Hello."_s);
    }

    TestProfile profile;
    FakeMailers mailers;
    FakeHost host;
    QPointer<frmCompose> window;
};

} // namespace varlo::test
