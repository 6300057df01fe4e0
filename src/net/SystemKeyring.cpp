#include "net/SystemKeyring.h"

#include "core/Dialogs.h"

#ifdef VARLO_KEYRING
#include <qt6keychain/keychain.h>
#else
#include <QCoreApplication>
#include <QMetaObject>
#endif

namespace varlo::net {

#ifdef VARLO_KEYRING

namespace {

using QKeychain::Job;

// A job deletes itself once it has told its end.
template<typename End> void Run(Job *job, const QString &name, End end) {
    job->setKey(name);
    QObject::connect(job, &Job::finished, job, [job, end = std::move(end)] {
        const bool isFine = job->error() == QKeychain::NoError || job->error() == QKeychain::EntryNotFound;
        end(isFine ? QString() : job->errorString());
    });
    job->start();
}

} // namespace

void SystemKeyring::Read(const QString &name, Given given) {
    auto *job = new QKeychain::ReadPasswordJob(kApplicationTitle);
    Run(job, name, [job, given = std::move(given)](const QString &trouble) {
        given(trouble.isEmpty() ? job->textData() : QString(), trouble);
    });
}

void SystemKeyring::Write(const QString &name, const QString &secret, Done done) {
    if (secret.isEmpty())
        return Run(new QKeychain::DeletePasswordJob(kApplicationTitle), name, std::move(done));
    auto *job = new QKeychain::WritePasswordJob(kApplicationTitle);
    job->setTextData(secret);
    Run(job, name, std::move(done));
}

#else // a build for a system without the library

namespace {

const QString kNone = u"This copy of the program was built without it"_s;

} // namespace

void SystemKeyring::Read(const QString &, Given given) {
    QMetaObject::invokeMethod(
        qApp, [given = std::move(given)] { given({}, kNone); }, Qt::QueuedConnection);
}

void SystemKeyring::Write(const QString &, const QString &, Done done) {
    QMetaObject::invokeMethod(
        qApp, [done = std::move(done)] { done(kNone); }, Qt::QueuedConnection);
}

#endif

} // namespace varlo::net
