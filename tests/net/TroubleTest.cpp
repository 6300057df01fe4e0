#include "net/Trouble.h"

#include "net/Connection.h"

#include <gtest/gtest.h>

namespace varlo::net {

TEST(TroubleTest, EveryTroubleHasItsTwoNumbers) {
    struct Case {
        Trouble Cause;
        int Socket;
        int Mail;
    };
    for (const Case &wanted :
         {Case{Trouble::UnknownHost, 11001, 12007}, Case{Trouble::NoSuchPort, 10049, 12029},
          Case{Trouble::Refused, 10061, 12029}, Case{Trouble::AccessDenied, 10013, 12029},
          Case{Trouble::NoResources, 10055, 12029}, Case{Trouble::Unreachable, 10051, 12029},
          Case{Trouble::NoAnswer, 10060, 12002}, Case{Trouble::TimedOut, 10060, 12002},
          Case{Trouble::Reset, 10054, 12030}, Case{Trouble::Closed, 10101, 12030},
          Case{Trouble::NotEncrypted, 10107, 12029}, Case{Trouble::NotTrusted, 10107, 12029},
          Case{Trouble::Other, 10107, 12029}}) {
        EXPECT_EQ(SocketNumber(wanted.Cause), wanted.Socket) << static_cast<int>(wanted.Cause);
        EXPECT_EQ(MailNumber(wanted.Cause), wanted.Mail) << static_cast<int>(wanted.Cause);
    }
}

TEST(TroubleTest, ErrorsOfSocketsAreTroubles) {
    EXPECT_EQ(TroubleOf(QAbstractSocket::ConnectionRefusedError), Trouble::Refused);
    EXPECT_EQ(TroubleOf(QAbstractSocket::RemoteHostClosedError), Trouble::Closed);
    EXPECT_EQ(TroubleOf(QAbstractSocket::HostNotFoundError), Trouble::UnknownHost);
    EXPECT_EQ(TroubleOf(QAbstractSocket::SocketAccessError), Trouble::AccessDenied);
    EXPECT_EQ(TroubleOf(QAbstractSocket::SocketResourceError), Trouble::NoResources);
    EXPECT_EQ(TroubleOf(QAbstractSocket::SocketTimeoutError), Trouble::NoAnswer);
    EXPECT_EQ(TroubleOf(QAbstractSocket::NetworkError), Trouble::Unreachable);
    EXPECT_EQ(TroubleOf(QAbstractSocket::SslHandshakeFailedError), Trouble::NotEncrypted);
    EXPECT_EQ(TroubleOf(QAbstractSocket::UnsupportedSocketOperationError), Trouble::Other);
}

} // namespace varlo::net
