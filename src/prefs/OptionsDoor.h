// What the Preferences window needs of the rooms that it does not know.
#pragma once

#include "net/Passwords.h"
#include "net/ServerTest.h"

#include <functional>
#include <memory>

namespace varlo {

struct Preferences;

using MakeServerTest = std::function<std::unique_ptr<net::ServerTest>(const Preferences &typed)>;

struct OptionsDoor {
    MakeServerTest SendingTest; // of the account in `typed`
    MakeServerTest MailboxTest;
    net::AskTrust AskTrust;
    net::Passwords *Passwords = nullptr; // without it no keyring can be chosen
};

} // namespace varlo
