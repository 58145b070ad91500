#include "tests/odbc/relay.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <stdexcept>
#include <vector>

namespace goodsbook::test {
namespace {

constexpr int lookMilliseconds = 10;

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  return address;
}

bool waitFor(int socket) {
  pollfd poller{socket, POLLIN, 0};
  return poll(&poller, 1, lookMilliseconds) > 0;
}

// What has come in; empty at the end of the connection.
std::string take(int socket) {
  std::array<char, 65536> bytes;
  const ssize_t count = recv(socket, bytes.data(), bytes.size(), 0);
  return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

bool give(int socket, const std::string& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const ssize_t count = send(socket, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

Relay::Relay(int serverPort)
    : serverPort_(serverPort), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address = loopback(0);
  socklen_t length = sizeof(address);
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), length) != 0 || ::listen(listener_, 16) != 0 ||
      getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    throw std::runtime_error("no port for the relay");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { listen(); });
}

Relay::~Relay() {
  stop_ = true;
  thread_.join();
  for (std::thread& thread : served_) thread.join();
  close(listener_);
}

void Relay::breakAt(const std::string& words, Moment moment) {
  const std::scoped_lock lock(mutex_);
  words_ = words;
  moment_ = moment;
}

void Relay::freezeAt(const std::string& words) {
  const std::scoped_lock lock(mutex_);
  freezingWords_ = words;
}

// Whether the connection goes on then.
bool Relay::waitsForThaw(int born) const {
  while (frozen_ && !stop_ && generation_ == born) {
    std::this_thread::sleep_for(std::chrono::milliseconds(lookMilliseconds));
  }
  return !stop_ && generation_ == born;
}

int Relay::passed(const std::string& words) {
  const std::scoped_lock lock(mutex_);
  int count = 0;
  for (std::size_t at = sent_.find(words); at != std::string::npos; at = sent_.find(words, at + 1)) ++count;
  return count;
}

void Relay::listen() {
  while (!stop_) {
    if (!waitFor(listener_)) continue;
    const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) continue;
    if (refusing_) {
      close(client);
      continue;
    }
    served_.emplace_back([this, client] { serve(client); });
  }
}

bool Relay::meets(const std::string& bytes) {
  const std::scoped_lock lock(mutex_);
  if (!freezingWords_.empty() && bytes.find(freezingWords_) != std::string::npos) {
    freezingWords_.clear();
    frozen_ = true;
  }
  if (words_.empty() || bytes.find(words_) == std::string::npos) return false;
  words_.clear();
  if (refuseAfterBreak_.exchange(false)) refusing_ = true;
  return true;
}

void Relay::serve(int client) {
  const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = loopback(serverPort_);
  bool open = connect(server, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0;
  bool dropAnswer = false;
  const int born = generation_;
  while (open && !stop_ && generation_ == born) {
    std::array<pollfd, 2> both = {{{client, POLLIN, 0}, {server, POLLIN, 0}}};
    if (poll(both.data(), both.size(), lookMilliseconds) <= 0) continue;
    if (!waitsForThaw(born)) break;
    if (both[0].revents != 0) {
      const std::string bytes = take(client);
      const bool met = meets(bytes);
      if (!waitsForThaw(born)) break;
      if (met && moment_ == Moment::BeforeSending) {
        ++broken_;
        break;
      }
      dropAnswer = dropAnswer || met;
      {
        const std::scoped_lock lock(mutex_);
        sent_ += bytes;
      }
      open = !bytes.empty() && give(server, bytes);
    }
    if (both[1].revents != 0) {
      const std::string bytes = take(server);
      if (dropAnswer) {
        ++broken_;
        break;
      }
      open = open && !bytes.empty() && give(client, bytes);
    }
  }
  close(server);
  close(client);
}

}  // namespace goodsbook::test
