#include "net/Passwords.h"

#include "core/Literals.h"
#include "core/Settings.h"

#include <QPointer>
#include <QUuid>

#include <utility>

namespace varlo::net {

namespace {

struct Kind {
    QString Preferences::*Member;
    const char *Name; // behind the profile's
};

constexpr Kind kKinds[] = {{&Preferences::SMTPPassword, "SMTP"}, {&Preferences::POPPassword, "POP3"}};
constexpr int kCount = 2;

QString EntryName(const QString &profile, const Kind &kind) {
    return profile + u' ' + QString::fromLatin1(kind.Name);
}

} // namespace

Passwords::Passwords(Session &session, std::unique_ptr<Keyring> keyring)
    : session_(session), keyring_(std::move(keyring)) {
    session_.PasswordTrouble = [this] { return AskAgain(); };
}

Passwords::~Passwords() {
    session_.PasswordTrouble = {};
}

void Passwords::Load() {
    if (session_.Prefs.Keyring != 1 || std::exchange(isAsking_, true))
        return;
    trouble_ = u"The system's keyring has not given the passwords yet. Please unlock it and try again."_s;
    LoadNext(session_.Prefs.KeyringName, 0);
}

void Passwords::LoadNext(const QString &name, int next) {
    if (next == kCount) {
        isAsking_ = false;
        trouble_.clear();
        return;
    }
    const QPointer<Passwords> alive(this);
    keyring_->Read(EntryName(name, kKinds[next]), [=, this](const QString &secret, const QString &trouble) {
        if (!alive)
            return;
        if (!trouble.isEmpty()) {
            isAsking_ = false;
            trouble_ =
                u"The system's keyring does not give the passwords: %1. They are still there. Unlock the "
                "keyring and try again, or enter them in the preferences."_s.arg(trouble);
            return;
        }
        if (!secret.isEmpty())
            session_.Prefs.*kKinds[next].Member = secret;
        LoadNext(name, next + 1);
    });
}

// Whoever has needed a password finds it there the next time, once the keyring is unlocked.
QString Passwords::AskAgain() {
    QString trouble = session_.Prefs.Keyring == 1 ? trouble_ : QString();
    if (!trouble.isEmpty())
        Load();
    return trouble;
}

void Passwords::Name(Preferences &values) {
    if (values.KeyringName.isEmpty())
        values.KeyringName = QUuid::createUuid().toString(QUuid::WithoutBraces);
}

void Passwords::Keep(const Preferences &wanted, bool isWhole, const Keyring::Done &done) {
    KeepNext(wanted, isWhole, 0, done);
}

void Passwords::KeepNext(const Preferences &wanted, bool isWhole, int next, const Keyring::Done &done) {
    if (next == kCount) {
        if (isWhole)
            trouble_.clear();
        return done({});
    }
    const QString &secret = wanted.*kKinds[next].Member;
    if (secret.isEmpty() && !isWhole)
        return KeepNext(wanted, isWhole, next + 1, done);
    const QPointer<Passwords> alive(this);
    keyring_->Write(EntryName(wanted.KeyringName, kKinds[next]), secret, [=, this](const QString &trouble) {
        if (!alive)
            return;
        if (trouble.isEmpty())
            KeepNext(wanted, isWhole, next + 1, done);
        else
            done(u"The passwords cannot be put into the system's keyring: %1. Nothing was stored; everything "
                 u"is "
                 "as you typed it."_s.arg(trouble));
    });
}

// They are in the file: one that stays behind is no loss, and nothing to stop for.
void Passwords::Forget(const QString &name) {
    for (const Kind &kind : kKinds)
        keyring_->Write(EntryName(name, kind), QString(), [](const QString &) {});
}

} // namespace varlo::net
