#include "property/Proxy.h"

#include <array>
#include <chrono>
#include <stdexcept>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace property {

namespace {

constexpr int tick = 10; ///< milliseconds

int connectTo(const std::string& server, const std::string& port) {
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(server.c_str(), port.c_str(), &hints, &found) != 0)
        return -1;
    const int upstream = ::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool done = upstream >= 0 && ::connect(upstream, found->ai_addr, found->ai_addrlen) == 0;
    ::freeaddrinfo(found);
    if (!done && upstream >= 0)
        ::close(upstream);
    return done ? upstream : -1;
}

void pause() {
    std::this_thread::sleep_for(std::chrono::milliseconds(tick));
}

} // namespace

Proxy::Proxy(const std::string& server, const std::string& port) : server_(server), serverPort_(port) {
    listen();
    thread_ = std::thread([this] { work(); });
}

Proxy::~Proxy() {
    ends_ = true;
    thread_.join();
    for (const auto& [client, upstream] : pairs_) {
        ::close(client);
        ::close(upstream);
    }
    if (listener_ >= 0)
        ::close(listener_);
}

// The same port again after the first time.
void Proxy::listen() {
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    ::setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port_);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* general = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener_, general, length) != 0 || ::listen(listener_, 8) != 0 ||
        ::getsockname(listener_, general, &length) != 0)
        throw std::runtime_error("no port on the loopback");
    port_ = ntohs(address.sin_port);
}

void Proxy::goAway() {
    away_ = true;
    while (!gone_)
        pause();
}

void Proxy::comeBack() {
    away_ = false;
    while (gone_)
        pause();
}

void Proxy::accept() {
    const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    const int upstream = client < 0 ? -1 : connectTo(server_, serverPort_);
    if (upstream >= 0)
        pairs_.emplace_back(client, upstream);
    else if (client >= 0)
        ::close(client);
}

bool Proxy::handOn(int from, int to) {
    std::array<char, 16384> bytes{};
    const auto count = ::recv(from, bytes.data(), bytes.size(), 0);
    for (ssize_t sent = 0; sent < count;) {
        const auto more = ::send(to, bytes.data() + sent, static_cast<std::size_t>(count - sent), MSG_NOSIGNAL);
        if (more <= 0)
            return false;
        sent += more;
    }
    return count > 0;
}

void Proxy::work() {
    while (!ends_) {
        if (away_ != gone_) {
            if (away_) {
                for (const auto& [client, upstream] : pairs_) {
                    ::close(client);
                    ::close(upstream);
                }
                pairs_.clear();
                ::close(listener_);
                listener_ = -1;
            } else {
                listen();
            }
            gone_ = away_.load();
        }
        if (gone_ || held_) {
            pause();
            continue;
        }
        std::vector<pollfd> watched{{listener_, POLLIN, 0}};
        for (const auto& [client, upstream] : pairs_) {
            watched.push_back({client, POLLIN, 0});
            watched.push_back({upstream, POLLIN, 0});
        }
        if (::poll(watched.data(), watched.size(), tick) <= 0)
            continue;
        std::vector<std::pair<int, int>> kept;
        for (std::size_t i = 0; i < pairs_.size(); ++i) {
            const auto [client, upstream] = pairs_[i];
            const bool alive = (watched[2 * i + 1].revents == 0 || handOn(client, upstream)) &&
                               (watched[2 * i + 2].revents == 0 || handOn(upstream, client));
            if (alive) {
                kept.emplace_back(client, upstream);
            } else {
                ::close(client);
                ::close(upstream);
            }
        }
        pairs_ = std::move(kept);
        if (watched[0].revents != 0)
            accept();
    }
}

} // namespace property
