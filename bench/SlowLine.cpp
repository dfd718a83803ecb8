#include "bench/SlowLine.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace bw::bench {
namespace {

sockaddr_un addressIn(const std::string& folder) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = folder + "/.s.PGSQL.5432";
  path.copy(address.sun_path, sizeof(address.sun_path) - 1);
  return address;
}

// Either call takes the general form of an address.
const sockaddr* general(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

int newSocket() { return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0); }

// What has come from one end goes to the other; false at the end of it.
bool passOn(int from, int to) {
  std::array<char, 65536> buffer{};
  const ssize_t size = read(from, buffer.data(), buffer.size());
  for (ssize_t sent = 0; sent < size;) {
    const ssize_t now =
        send(to, buffer.data() + sent, static_cast<std::size_t>(size - sent), MSG_NOSIGNAL);
    if (now <= 0) return false;
    sent += now;
  }
  return size > 0;
}

}  // namespace

SlowLine::SlowLine(const std::string& serverFolder)
    : server_(serverFolder), listener_(newSocket()) {
  const sockaddr_un address = addressIn(folder());
  if (bind(listener_, general(address), sizeof(address)) != 0 || listen(listener_, 1) != 0)
    throw std::runtime_error("The line cannot be laid.");
  thread_ = std::thread([this] { serve(); });
}

SlowLine::~SlowLine() {
  ended_ = true;
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void SlowLine::serve() {
  for (int client = 0; (client = accept(listener_, nullptr, nullptr)) >= 0; close(client))
    relay(client);
}

void SlowLine::relay(int client) {
  const int server = newSocket();
  const sockaddr_un address = addressIn(server_);
  bool heard = true;
  bool open = connect(server, general(address), sizeof(address)) == 0;
  constexpr int kLookForTheEnd = 100;  // ms
  while (open && !ended_) {
    std::array<pollfd, 2> ends{{{client, POLLIN, 0}, {server, POLLIN, 0}}};
    if (poll(ends.data(), ends.size(), kLookForTheEnd) == 0) continue;
    if (ends[1].revents != 0) {
      open = passOn(server, client);
      heard = true;
    } else {
      if (std::exchange(heard, false)) {
        ++trips_;
        std::this_thread::sleep_for(time_.load());
      }
      open = passOn(client, server);
    }
  }
  close(server);
}

}  // namespace bw::bench
