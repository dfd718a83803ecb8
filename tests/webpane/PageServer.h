#pragma once

#include <QStringList>
#include <QTcpServer>

namespace bw {

// A web server on this computer. Every path is a page with the path's name as its title; what is
// asked for below /slow is never answered.
class PageServer {
 public:
  PageServer();

  std::string address(const char* path) const;
  // Paths asked for, in order.
  QStringList takeAsked() { return std::exchange(asked_, {}); }
  // Asked for at least once since the last take.
  bool wasAsked(const char* path) const { return asked_.contains(path); }
  // Nobody listens at the address any more.
  void close() { server_.close(); }

 private:
  void serve(class QTcpSocket* socket);

  QTcpServer server_;
  QStringList asked_;
};

}  // namespace bw
