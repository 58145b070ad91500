#pragma once

#include <QByteArray>
#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace goodsbook::test {

// A cable between a driver and its server that can be pulled at a chosen moment: a listener on a loopback
// port that hands every byte on in both directions.
class Relay {
 public:
  explicit Relay(int serverPort);
  ~Relay();
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;

  int port() const { return port_; }

  enum class Moment { BeforeSending, BeforeAnswer };
  // Nothing passes, on any connection, until it is called with false; new ones are taken all the same.
  void freeze(bool on) { frozen_ = on; }
  // The same from the moment on when somebody sends `words`, before they reach the server.
  void freezeAt(const std::string& words);
  // Breaks the connection that sends `words`, once: before they reach the server, or after the server has
  // answered and before the answer arrives. Whoever connects afterwards gets through.
  void breakAt(const std::string& words, Moment moment);
  // Breaks all connections now.
  void breakAll() { ++generation_; }
  // Nobody gets through until it is called with false.
  void refuse(bool on) { refusing_ = on; }
  // The same from the next break of breakAt() on.
  void refuseAfterBreak() { refuseAfterBreak_ = true; }
  int broken() const { return broken_; }
  // How often `words` reached the server.
  int passed(const std::string& words);

 private:
  void listen();
  void serve(int client);
  bool meets(const std::string& bytes);
  bool waitsForThaw(int born) const;

  int serverPort_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<bool> stop_ = false;
  std::atomic<bool> refusing_ = false;
  std::atomic<bool> refuseAfterBreak_ = false;
  std::atomic<bool> frozen_ = false;
  std::atomic<int> generation_ = 0;
  std::atomic<int> broken_ = 0;
  std::mutex mutex_;
  std::string words_;
  std::string freezingWords_;
  Moment moment_ = Moment::BeforeSending;
  std::string sent_;
  std::vector<std::thread> served_;
  std::thread thread_;
};

}  // namespace goodsbook::test
