// Tells a connection that was reset from one that the server closed.
#pragma once

#include <QtGlobal>

namespace varlo::net {

// QTcpSocket reports both as closed by the remote host and has let go of the connection by then. The probe
// holds a second handle of it, which still knows.
class ResetProbe {
public:
    ResetProbe() = default;
    ~ResetProbe() { Forget(); }
    ResetProbe(const ResetProbe &) = delete;
    ResetProbe &operator=(const ResetProbe &) = delete;

    // Begins to watch the connected socket `descriptor`.
    void Watch(qintptr descriptor);
    // True when the connection watched is gone without an orderly close.
    bool WasReset() const;
    // Lets go; the connection cannot end before.
    void Forget();

private:
    qintptr handle_ = -1;
};

} // namespace varlo::net
