#include "tests/webpane/PageServer.h"

#include <QTcpSocket>
#include <stdexcept>

namespace bw {

PageServer::PageServer() {
  if (!server_.listen(QHostAddress::LocalHost)) throw std::runtime_error("no port to listen on");
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
    QTcpSocket* socket = server_.nextPendingConnection();
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { serve(socket); });
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
  });
}

std::string PageServer::address(const char* path) const {
  return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
}

void PageServer::serve(QTcpSocket* socket) {
  // A request of some hundred bytes arrives at once: "GET /path HTTP/1.1".
  const QString path = QString::fromLatin1(socket->readAll()).section(' ', 1, 1);
  const bool isIcon = path == "/favicon.ico";
  if (!isIcon) asked_ << path;
  if (path.startsWith("/slow")) return;
  const QByteArray page = "<!DOCTYPE html><title>" + path.mid(1).toUtf8() + "</title>";
  socket->write(isIcon ? "HTTP/1.1 404 Not Found\r\n" : "HTTP/1.1 200 OK\r\n");
  socket->write("Content-Type: text/html\r\nCache-Control: no-store\r\nConnection: close\r\n" +
                QByteArray("Content-Length: ") + QByteArray::number(page.size()) + "\r\n\r\n" +
                page);
  socket->disconnectFromHost();
}

}  // namespace bw
