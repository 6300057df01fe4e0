// The connection to the mailbox server: a thin adapter over net::Connection that knows nothing of mail.
#pragma once

#include "net/Certificate.h"
#include "net/Connection.h"

#include <functional>

namespace varlo {

// Events come out one at a time: while a handler runs (it may show a box, and so run an event loop), what
// arrives waits until the handler has returned. No handler runs inside a call of Connect, SendData or Close.
// There is no time-out. That the server closes the connection is no event; only IsClosed tells.
class WinsockPOP : public QObject {
    Q_OBJECT

public:
    // The most that is held back of a line without an end, in bytes.
    static constexpr qsizetype kLongestLine = 4096;

    // `awaitsLine` tells, at any time, whether what arrives next is a reply of one line. Bytes are then held
    // back until they end in a line feed, become kLongestLine or the server has closed the connection.
    explicit WinsockPOP(std::function<bool()> awaitsLine, QObject *parent = nullptr);

    // Begins to connect, from a local port of the system's choice; only after Close. Failures arrive as Error,
    // or as Distrusted.
    void Connect(const net::Endpoint &endpoint);
    void Connect(const QString &host, quint16 port) { Connect({host, port, net::Encryption::None, {}}); }
    // Begins to encrypt, on a connection whose endpoint says so. What has arrived before does not count. Leads
    // to Encrypted, Distrusted or Error.
    void StartTls();
    // Sends the bytes. A connection that is closed swallows them, as if the server had closed it a moment
    // later.
    void SendData(const QByteArray &data) { connection_.Write(data); }
    // Closes at once and forgets what has arrived and what has failed. Safe in a handler.
    void Close();
    bool IsClosed() const { return connection_.IsClosed(); }

Q_SIGNALS:
    // What has arrived, as it came: at least one byte.
    void DataArrival(const QByteArray &chunk);
    // The connection failed: number of the socket error (10061 refused, 11001 unknown host, 10054 reset,
    // ...), words.
    void Error(int Number, const QString &Description);
    void Encrypted();
    // The connection failed because nobody vouches for the server's certificate; number and words as of Error.
    void Distrusted(const varlo::net::Certificate &certificate, int Number, const QString &Description);

private:
    void Connection_Arrived(const QByteArray &bytes);
    void Connection_Ended(const net::Failure &failure);
    QByteArray NextChunk();

    std::function<bool()> awaitsLine_;
    net::Connection connection_;
    QByteArray held_;
    net::Certificate certificate_; // that the server has shown
};

} // namespace varlo
