#pragma once

#include <span>
#include <string>

namespace bw {

class Connection;

// Reads statements that do not depend on each other in one trip. While it lives, each Read of one
// takes what was read then; a statement that writes ends that. Where statements cost no trip it
// does nothing, and each is read when it is asked for. One that is refused is refused by its Read.
class ReadAhead {
 public:
  ReadAhead(Connection& connection, std::span<const std::string> statements);
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;
  ~ReadAhead();

 private:
  Connection& connection_;
};

}  // namespace bw
