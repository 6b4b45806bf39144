#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace property {

/// Stands between a program and its server on this machine's loopback: it can go away and come back.
class Proxy {
public:
    /// Throws std::runtime_error when the server's name or the loopback can not be used.
    Proxy(const std::string& server, const std::string& port);
    Proxy(const Proxy&) = delete;
    Proxy& operator=(const Proxy&) = delete;
    ~Proxy();

    std::uint16_t port() const { return port_; }
    /// Ends every connection and takes no more; returns when that is done.
    void goAway();
    void comeBack();
    /// Hands nothing on, and ends nothing.
    void hold(bool on) { held_ = on; }

private:
    void listen();
    void work();
    void accept();
    static bool handOn(int from, int to);

    std::string server_;
    std::string serverPort_;
    std::uint16_t port_ = 0;
    int listener_ = -1;
    std::vector<std::pair<int, int>> pairs_;
    std::atomic<bool> away_ = false;
    std::atomic<bool> gone_ = false;
    std::atomic<bool> held_ = false;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

} // namespace property
