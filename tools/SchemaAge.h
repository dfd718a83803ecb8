#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "engine/Engine.h"

namespace bw {

// How a file differs from what this version of the program makes, rows apart.
class SchemaAge {
 public:
  // Of a file, beside an empty database that this version has made.
  SchemaAge(Engine& file, Engine& model);

  // Whether something of it has to be made anew.
  bool isOld() const noexcept;
  bool isNewer() const noexcept { return version_ > wanted_; }
  // Of the tables, which are not made anew: nobody but a copy has their rows.
  bool lacksTables() const noexcept;

  // A line for each difference.
  void tell(std::ostream& out) const;

  // Drops what stands otherwise and makes what is wanted; within the caller's transaction.
  void bringUpToDate(Engine& file) const;

 private:
  struct Part {
    std::string kind;  // "index", "view", "trigger", "table"
    std::string name;
    std::string statement;
    bool stands = false;  // in another form
  };

  void compare(const std::vector<Part>& ours, std::vector<Part> wanted);

  std::int64_t version_;
  std::int64_t wanted_;
  bool otherHints_;
  std::vector<Part> parts_;
  std::vector<Part> tables_;  // these stay: rows stand in them
};

}  // namespace bw
