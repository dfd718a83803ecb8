#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

#include "text/Moment.h"
#include "tools/TableFile.h"

// The commands of brantiwell-database. A path may be the address of a database on a server. Each
// says what it did on `out`, one line a fact, and returns how it went. What stops it is raised:
// Refused, or RuntimeError when the database or a file cannot be opened or written. Then nothing
// half-made is left.

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

// Who can read and write a database's files: a user (empty: whoever runs this), and the members of
// a group (empty: nobody else).
struct Access {
  std::string owner;
  std::string group;
};

// What a new database has beside its lookup rows.
struct Beginning {
  bool starter = false;    // concepts and groups of diagnoses with which an office can begin
  bool changeLog = false;  // who changes what is written down from the first row on
};

// A new database, and its workgroup file beside it. On a server there must be an empty database;
// what is left to do there is told.
Exit createDatabase(const std::filesystem::path& path, std::ostream& out, const Access& access = {},
                    Beginning beginning = {});

// The same with a fictional office in it, whose last charges are of `today`.
Exit createPractice(const std::filesystem::path& path, Date today, std::ostream& out);

struct LoadOptions {
  bool dryRun = false;  // nothing is stored
  bool update = false;  // rows of catalogues may stand already, and get the file's contents
  TextCode code = TextCode::utf8;
};

// Loads a file a table (Table.tsv, Table.csv) into a database, all or nothing. Refused rows are
// listed on `out`. `progress` hears how far it is; null for nobody.
Exit loadTables(const std::filesystem::path& path, const std::filesystem::path& folder,
                std::ostream& out, std::ostream* progress, const LoadOptions& options = {});

// As which of its two kinds a table's file is written (tools/TableFile.h).
enum class TableForm : std::uint8_t { tabs, commas };

// Writes all rows into a new folder, a file a table, as loadTables reads them. A table with tabs or
// line ends in its texts is written with commas whatever was asked.
Exit exportTables(const std::filesystem::path& path, const std::filesystem::path& folder,
                  TableForm form, std::ostream& out);

// The same files with nothing but their heads, to be filled in.
Exit writeTemplates(const std::filesystem::path& folder, TableForm form, std::ostream& out);

// Puts the codes of an official book into the file of code books of a database (the registered
// one), in the place of those that it had of that book.
Exit importCodes(const std::filesystem::path& file, const std::filesystem::path& database,
                 TextCode code, std::ostream& out);

// Tells what the columns of the tables take, and which rows they name.
Exit printTables(std::ostream& out);

// The same as a section of the manual page.
Exit printTablesManual(std::ostream& out);

// Copies the office of one database into a new one, from a file to a server, back, or to another
// file, with its log of changes; all or nothing. The rows of both are compared at the end.
Exit copyDatabase(const std::filesystem::path& from, const std::filesystem::path& to,
                  std::ostream& out, const Access& access = {});

// Refuses what looks like the address of a server and is none, and an address with a password in
// it.
void refuseBadTarget(const std::filesystem::path& path);

// Looks for damage and for whatever the program would stumble over; lists it on `out`.
Exit checkDatabase(const std::filesystem::path& path, std::ostream& out);

// Brings a file that another version made to what this one makes: indexes, saved queries and
// guards; rows stay as they are. After a copy (see backUpDatabase), all or nothing. A file that
// lacks a table is refused.
Exit upgradeDatabase(const std::filesystem::path& path, DateTime now, std::ostream& out);

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
// be new, and no others. Nothing is taken out when they cannot be written.
Exit pruneHistory(const std::filesystem::path& path, Date until, const std::filesystem::path& file,
                  std::ostream& out);

// Copies a database with its workgroup file into a folder as it stands at one moment, checks the
// copy, and drops old ones. Not when nothing has changed since the newest. Without a path the
// registered database; without a folder the folders that are set for copies on this computer.
Exit backUpDatabase(const std::filesystem::path& path, const std::filesystem::path& folder,
                    DateTime now, std::ostream& out);

// The same for the registered database, if whoever runs this works with it. A failure is shown on
// the desktop too.
Exit backUpByItself(DateTime now, std::ostream& out);

// Lists the copies with their size, rows and whether they are good.
Exit listCopies(const std::filesystem::path& path, const std::filesystem::path& folder,
                std::ostream& out);

// Puts a copy in a database's place. What was there is kept under a name with the moment.
Exit restoreDatabase(const std::filesystem::path& copy, const std::filesystem::path& path,
                     DateTime now, std::ostream& out);

// Makes the database the one that the program on this computer works with.
Exit registerDatabase(const std::filesystem::path& path, std::ostream& out);

}  // namespace bw
