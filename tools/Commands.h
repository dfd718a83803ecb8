#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

#include "text/Moment.h"

// The commands of brantiwell-database. Each says what it did on `out`, one line a fact, and returns
// how it went. What stops it is raised: Refused, or RuntimeError when the database or a file cannot
// be opened or written. Then nothing half-made is left.

namespace bw {

enum class Exit : int {
  done = 0,
  findings = 1,     // the check found something
  refused = 2,      // arguments or data that cannot be accepted
  unavailable = 3,  // the database cannot be opened or written
};

// The arguments or the data cannot be accepted; what() is a sentence for the user.
class Refused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// An empty database with its lookup rows, and its workgroup file beside it. `owner` is the user who
// works with it: only the owner can read the files. Empty: whoever runs this.
Exit createDatabase(const std::filesystem::path& path, std::ostream& out,
                    const std::string& owner = {}, bool keepsChangeLog = false);

// The same with a fictional office in it, whose last charges are of `today`.
Exit createPractice(const std::filesystem::path& path, Date today, std::ostream& out);

// Loads a file a table (Table.tsv) into a database, all or nothing. Refused rows are listed on
// `out`. `progress` hears how far it is; null for nobody.
Exit loadTables(const std::filesystem::path& path, const std::filesystem::path& folder,
                std::ostream& out, std::ostream* progress);

// Tells what the columns of the tables take, and which rows they name.
Exit printTables(std::ostream& out);

// Looks for damage and for whatever the program would stumble over; lists it on `out`.
Exit checkDatabase(const std::filesystem::path& path, std::ostream& out);

// Whether the database is to keep who changed what. Lines that it has stay.
Exit switchChangeLog(const std::filesystem::path& path, bool kept, std::ostream& out);

// Which lines of the log of changes are asked for: all, or those of what is said.
struct HistoryFilter {
  std::optional<std::int64_t> patient{};
  std::string table{};
  std::string user{};
  std::optional<Date> from{};
  std::optional<Date> to{};
};

// Tells who changed what, a statement after another, oldest first.
Exit printHistory(const std::filesystem::path& path, const HistoryFilter& filter,
                  std::ostream& out);

// Takes the lines of the days before `until` out of the log, after they stand in `file`, which must
// be new. Nothing is taken out when they cannot be written.
Exit pruneHistory(const std::filesystem::path& path, Date until, const std::filesystem::path& file,
                  std::ostream& out);

// Makes the database the one that the program on this computer works with.
Exit registerDatabase(const std::filesystem::path& path, std::ostream& out);

}  // namespace bw
