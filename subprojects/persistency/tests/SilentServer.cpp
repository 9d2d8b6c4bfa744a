#include "SilentServer.h"

#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

SilentServer::SilentServer() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (socket_ < 0 || bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length) != 0 || listen(socket_, 16) != 0) {
        if (socket_ >= 0) close(socket_);
        throw std::runtime_error("silent server: no loopback port to listen on");
    }
    port_ = ntohs(address.sin_port);
}

SilentServer::~SilentServer() { close(socket_); }

int SilentServer::connections() {
    int n = 0;
    for (int c; (c = accept(socket_, nullptr, nullptr)) >= 0; ++n) close(c);
    return n;
}
