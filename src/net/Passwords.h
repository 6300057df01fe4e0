// The passwords of the open profile while the system's keyring keeps them.
#pragma once

#include "core/Session.h"
#include "net/Keyring.h"

#include <QObject>

#include <memory>

namespace varlo::net {

// With the setting off there is nothing to do here: the passwords are in "prefs.ini". With it on they are held in
// memory from Load on, as if they had come from there. No password is ever taken out of one place before the other
// one has it.
class Passwords : public QObject {
    Q_OBJECT

public:
    // Answers the session's PasswordTrouble as long as it lives.
    Passwords(Session &session, std::unique_ptr<Keyring> keyring);
    ~Passwords() override;

    // Asks the keyring for the passwords of the profile that is open, if it keeps them.
    void Load();
    // Whether what is held in memory is what there is.
    bool AreHere() const { return trouble_.isEmpty(); }

    // Gives the profile its name in the keyring.
    static void Name(Preferences &values);
    // Puts the passwords of `wanted`, which has a name, into the keyring. When the passwords that it held were not here
    // (`isWhole` false) an empty one stands for one that nobody knows, and stays there. `done` gets a sentence when it
    // failed; it does not come once this is gone.
    void Keep(const Preferences &wanted, bool isWhole, const Keyring::Done &done);
    // Takes the profile's passwords out of the keyring; they are elsewhere by now.
    void Forget(const QString &name);

private:
    void LoadNext(const QString &name, int next);
    void KeepNext(const Preferences &wanted, bool isWhole, int next, const Keyring::Done &done);
    QString AskAgain();

    Session &session_;
    const std::unique_ptr<Keyring> keyring_;
    QString trouble_; // why they are not here
    bool isAsking_ = false;
};

} // namespace varlo::net
