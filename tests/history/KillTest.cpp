// The program is killed at any moment of a save: the list and every version are whole.
#include "history/HistoryFixture.h"

#include <QElapsedTimer>

#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace varlo::test {
namespace {

// VARLO_KILL_ROUNDS=1000 for a long run.
int Rounds() {
    const int wanted = qEnvironmentVariableIntValue("VARLO_KILL_ROUNDS");
    return wanted > 0 ? wanted : 40;
}

class KillTest : public HistoryFixture {
protected:
    static constexpr int kEntries = 300;

    // What save number `number` writes: each entry names it, so that half of one save is seen.
    static QStringList Entries(int number) {
        QStringList entries;
        for (int i = 0; i < kEntries + number % 7; ++i)
            entries.append(QString::number(number) + u'-' + QString::number(i) + u"@x.test"_s);
        return entries;
    }
    static int NumberOf(const QStringList &entries) {
        const int number = entries.value(0).section(u'-', 0, 0).toInt();
        EXPECT_EQ(entries, Entries(number)) << "not whole";
        return number;
    }
    [[noreturn]] void SaveForEver(int from) {
        for (int number = from;; ++number) {
            Wait(3600);
            Save(Entries(number));
        }
    }
    // The versions are those of all saves before the last one, or of what the week before has left of them.
    void ExpectWhole() {
        const int last = NumberOf(ReadLines(profile.Path(u"lists/news.vlo"_s)));
        int before = -1;
        for (const History::Version &version : Versions()) {
            const int number = NumberOf(History::ReadVersion(version));
            EXPECT_GE(number, before);
            EXPECT_LE(number, last);
            before = number;
        }
        EXPECT_GE(before, last - 1);
        last_ = last;
        hasThinned_ = hasThinned_ || Versions().size() < last;
    }

    int last_ = 0;
    bool hasThinned_ = false;
};

TEST_F(KillTest, ListAndHistoryAreWholeAfterEveryKill) {
    std::mt19937 random(20261121);
    WriteList(Entries(0));
    int killedWithin = 0;
    for (int round = 0; round < Rounds(); ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            SaveForEver(last_ + 1);
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 15'000)(random));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        Wait(3600 * 24);
        const int before = last_;
        ASSERT_NO_FATAL_FAILURE(ExpectWhole());
        ASSERT_FALSE(HasFailure()) << "round " << round;
        killedWithin += last_ > before ? 1 : 0;
    }
    EXPECT_GT(killedWithin, Rounds() / 10) << "the kills came too early to meet a save";
    EXPECT_EQ(Errors(), QStringList());
}

} // namespace
} // namespace varlo::test
