#ifndef TARVO_PERSISTENCY_TESTS_SILENTSERVER_H
#define TARVO_PERSISTENCY_TESTS_SILENTSERVER_H

// A listener on a free loopback port: the system completes the handshake of every connection made to
// it, and nobody ever reads or answers, as a server that hangs would.
class SilentServer {
public:
    SilentServer();
    ~SilentServer();
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    int port() const { return port_; }
    // The connections made to it since the last call, which closes them.
    int connections();

private:
    int socket_ = -1;
    int port_ = 0;
};

#endif
