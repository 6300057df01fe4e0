// The least that emptying a mailbox can cost: a POP3 client of blocking calls that keeps nothing.
//
//   bare_pop3 PORT USER PASSWORD    logs on at 127.0.0.1, then RETR and DELE for every message, each after
//   the reply to the one before, then QUIT
//
// Prints the number of messages and the seconds from the connection to the reply to QUIT.

#include <arpa/inet.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <netinet/in.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace {

[[noreturn]] void Fail(const char *what) {
    std::fprintf(stderr, "bare_pop3: %s\n", what);
    std::exit(1);
}

class Client {
public:
    explicit Client(int port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<in_port_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
            Fail("no connection");
    }
    ~Client() { ::close(socket_); }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    // Waits for the end of a reply; it ends with `mark`. Fails when it is not "+OK".
    const std::string &Read(std::string_view mark) {
        reply_.clear();
        do {
            char chunk[16384];
            const ssize_t size = ::recv(socket_, chunk, sizeof chunk, 0);
            if (size <= 0)
                Fail("the server closed the connection");
            reply_.append(chunk, static_cast<size_t>(size));
        } while (!reply_.ends_with(mark));
        if (reply_[0] != '+')
            Fail(reply_.c_str());
        return reply_;
    }

    const std::string &Ask(const std::string &command, std::string_view mark = "\r\n") {
        const std::string line = command + "\r\n";
        if (::send(socket_, line.data(), line.size(), 0) != static_cast<ssize_t>(line.size()))
            Fail("the command was not taken");
        return Read(mark);
    }

private:
    const int socket_;
    std::string reply_;
};

int EmptyMailbox(Client &client, const std::string &user, const std::string &password) {
    client.Read("\r\n");
    client.Ask("USER " + user);
    client.Ask("PASS " + password);
    const int count = std::atoi(client.Ask("STAT").c_str() + 4);
    for (int i = 1; i <= count; ++i) {
        client.Ask("RETR " + std::to_string(i), "\r\n.\r\n");
        client.Ask("DELE " + std::to_string(i));
    }
    client.Ask("QUIT");
    return count;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 4)
        Fail("usage: bare_pop3 PORT USER PASSWORD");
    const auto start = std::chrono::steady_clock::now();
    Client client(std::atoi(argv[1]));
    const int count = EmptyMailbox(client, argv[2], argv[3]);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::printf("%d %.6f\n", count, taken.count());
    return 0;
}
