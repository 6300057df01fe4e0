// One connection to an SMTP server: opened by libcurl up to EHLO and STARTTLS, then bytes out and replies in.
#pragma once

#include "smtp/CurlDriver.h"
#include "smtp/Failure.h"
#include "smtp/ReplyParser.h"
#include "smtp/Waiter.h"

#include <QByteArrayList>
#include <QString>

#include <memory>
#include <optional>

namespace OSSMTP {

struct Server {
    QString Host; // name or address
    int Port = 25;

    bool operator==(const Server &) const = default;
};

// Each call that has to wait does so through the waiter, so windows stay alive, and ends when that is
// aborted.
class Connection {
public:
    explicit Connection(Waiter &waiter);
    ~Connection(); // says QUIT, without waiting for the answer

    // Looks the name up, connects, reads the greeting, says EHLO and encrypts when the server offers it.
    MaybeFailure Open(const Server &server);
    // Whether the connection to that server stands, and the server has neither closed it nor said anything
    // unasked.
    bool IsUsableFor(const Server &server);
    // Whether EHLO told of this extension ("PIPELINING").
    bool Offers(const QByteArray &extension) const { return extensions_.contains(extension); }

    // What a reply means that comes while bytes are still being written: with commands it is usual, within a
    // message it is the server's last word.
    enum class Early { Waits, Ends };
    // Writes all bytes, in pieces as large as the system takes. Stops without a failure when the server's
    // last word came before the end (IsCut is true then, and the connection is of no further use): it is the
    // next reply.
    MaybeFailure Write(QByteArrayView bytes, Early early = Early::Waits);
    bool IsCut() const { return cut_; }
    // Waits for the next reply.
    MaybeFailure Read(Reply &reply);

    void Close(); // with QUIT
    void Drop();  // at once

private:
    struct FreeEasy {
        void operator()(CURL *easy) const { Curl().easy_cleanup(easy); }
    };
    enum class Tls { WhenOffered, Never };

    static size_t OnLine(char *data, size_t size, size_t count, void *self);
    MaybeFailure TryOpen(const Server &server, Tls tls);
    MaybeFailure RunHandshake();
    void SetOptions(CURLU *url, Tls tls);
    void TakeHandshakeLine(QByteArrayView line);
    Failure HandshakeFailure(CURLcode code) const;
    MaybeFailure WaitForSocket(bool orWritable);
    MaybeFailure WaitToWrite(Early early);
    MaybeFailure TakeWriteError();
    MaybeFailure Receive();
    bool ReceiveNow(CURLcode &code, size_t &size);

    Waiter &waiter_;
    std::unique_ptr<CURL, FreeEasy> easy_;
    std::unique_ptr<CurlDriver> driver_; // closes the connection when it goes; before easy_
    Server server_;
    qintptr socket_ = -1; // -1: not open
    ReplyParser parser_;
    std::optional<Reply> ready_; // taken from the parser ahead of Read
    bool cut_ = false;

    // of the handshake
    std::optional<CURLcode> result_;
    std::optional<Reply> lastReply_;
    QByteArrayList extensions_;
    bool ehloBegun_ = false;
    char error_[CURL_ERROR_SIZE] = {};
};

} // namespace OSSMTP
