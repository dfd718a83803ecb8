#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "text/Clock.h"
#include "text/RuntimeError.h"
#include "tools/Commands.h"

namespace {

constexpr const char* kAbout =
    "Creates, fills and checks the database of a Brantiwell office.\n"
    "A database is two files: the database itself (brantiwell.db) and beside it the workgroup\n"
    "file (brantiwell.dw), without which the program does not open it. Move and copy both.\n"
    "For several desks it lies on a PostgreSQL server instead: in place of a PATH say its "
    "address,\n"
    "postgresql://anna@server/office.";

constexpr const char* kFooter =
    "Examples:\n"
    "  sudo brantiwell-database create --register --owner anna /srv/office/brantiwell.db\n"
    "  brantiwell-database load /srv/office/brantiwell.db exported/\n"
    "  brantiwell-database check /srv/office/brantiwell.db\n"
    "  sudo brantiwell-database register /srv/office/brantiwell.db\n"
    "  brantiwell-database practice ~/practice.db\n"
    "  brantiwell-database copy /srv/office/brantiwell.db postgresql://admin@server/office\n"
    "\n"
    "Exit codes: 0 done, 1 the check found something, 2 bad arguments or refused data,\n"
    "3 the database or a file cannot be opened or written.";

constexpr const char* kCreateHelp =
    "Make an empty database with its lookup rows.\n"
    "Refuses a path at which there is a file. Files are readable by their owner alone: with sudo\n"
    "say who works with them.";
constexpr const char* kPracticeHelp =
    "Make a database with a fictional office to try the program on.";
constexpr const char* kLoadHelp =
    "Load rows from text files, all or nothing.\n"
    "FOLDER holds a file a table, named Patient.tsv: UTF-8, a first line of column names, then a\n"
    "line a row, the cells parted by tabs, without quotes; `tables` tells what they take. An "
    "empty\n"
    "cell is the empty text or no value. Lookup rows take the place of rows with the same number;\n"
    "other rows must be new. Every refused row is named by file, line and column, and then "
    "nothing\n"
    "is loaded.";
constexpr const char* kCheckHelp =
    "Look for damage, missing tables, columns and queries, values that cannot be, and rows that\n"
    "name others which do not exist. Changes nothing.";
constexpr const char* kBackupHelp =
    "Copy a database with its workgroup file, while the program runs or not.\n"
    "The copy is checked before it counts; an unchanged database is not copied again. The last 20\n"
    "copies stay, and the last of each month. Without DATABASE the registered one; without FOLDER\n"
    "the folders of the machine settings CopiesFolder (otherwise \"copies\" beside the database)\n"
    "and SecondCopiesFolder.";
constexpr const char* kCopiesHelp = "List the copies of a database with size, rows and verdict.";
constexpr const char* kRestoreHelp =
    "Put a copy in a database's place. Close the program first. What was there is kept under a\n"
    "name with date and time.";
constexpr const char* kCopyHelp =
    "Copy an office into a new database: from a file to a server, back, or to another file.\n"
    "All or nothing; the rows of both are compared at the end.";
constexpr const char* kTablesHelp =
    "Tell what the columns of each table take, for the files of `load`.";
constexpr const char* kChangeLogHelp =
    "Begin or stop to write down who changes what, in the database itself.\n"
    "A line a statement: moment, user, computer, rows, statement. Lines of before stay.";
constexpr const char* kHistoryHelp =
    "Tell who changed what, where the log of changes was on. DATES are spelled 2026-03-09.";
constexpr const char* kRegisterHelp =
    "Make it the database that the program on this computer works with.\n"
    "Writes the machine setting `Database` to \"Fenmoor Systems/Brantiwell PC.ini\" in the first\n"
    "folder of $XDG_CONFIG_DIRS, by default /etc/xdg, for which you may need sudo.";

bw::Date dateOf(const std::string& text) {
  if (const auto date = bw::parseIsoDate(text)) return *date;
  throw bw::Refused("This is no date like 2026-03-09: " + text);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace bw;
  CLI::App app(kAbout, "brantiwell-database");
  app.footer(kFooter);
  app.require_subcommand(1);
  app.set_version_flag("--version", "brantiwell-database " BRANTIWELL_VERSION);
  std::filesystem::path path;
  std::filesystem::path folder;
  Exit result = Exit::done;
  const auto command = [&](const char* name, const char* help, auto run) {
    CLI::App* added = app.add_subcommand(name, help);
    added->add_option("PATH", path, "The database file, or the address of one on a server")
        ->required();
    added->callback([&path, &result, run] {
      refuseBadTarget(path);
      result = run();
    });
    return added;
  };
  Access access;
  bool registered = false;
  bool logged = false;
  CLI::App* create = command("create", kCreateHelp, [&] {
    createDatabase(path, std::cout, access, logged);
    return registered ? registerDatabase(path, std::cout) : Exit::done;
  });
  create->add_flag("--register", registered, "Register it too, as the command register does");
  create->add_flag("--change-log", logged, "Write down who changes what, as changelog on does");
  create->add_option("--owner", access.owner, "The user who works with it; needs sudo");
  create->add_option("--group", access.group, "The group whose members work with it");
  command("load", kLoadHelp,
          [&] {
            return loadTables(path, folder, std::cout,
                              isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr);
          })
      ->add_option("FOLDER", folder, "The folder with the text files")
      ->required();
  std::string state;
  command("changelog", kChangeLogHelp,
          [&] { return switchChangeLog(path, state == "on", std::cout); })
      ->add_option("STATE", state, "on or off")
      ->required()
      ->check(CLI::IsMember({"on", "off"}));
  HistoryFilter filter;
  std::string from;
  std::string to;
  std::string before;
  CLI::App* history = command("history", kHistoryHelp, [&] {
    if (!before.empty()) return pruneHistory(path, dateOf(before), folder, std::cout);
    if (!from.empty()) filter.from = dateOf(from);
    if (!to.empty()) filter.to = dateOf(to);
    return printHistory(path, filter, std::cout);
  });
  history->add_option("--patient", filter.patient, "Only changes that name the patient's number");
  history->add_option("--table", filter.table, "Only changes of a table");
  history->add_option("--user", filter.user, "Only changes by a user of a computer");
  history->add_option("--from", from, "Only from a day on");
  history->add_option("--to", to, "Only to the end of a day");
  CLI::Option* into = history->add_option("--into", folder, "The new file for lines taken out");
  CLI::Option* prune =
      history->add_option("--prune", before, "Take the lines before a day out of the log");
  prune->needs(into);
  into->needs(prune);
  // It takes out all lines, whatever they are about.
  for (const char* narrowing : {"--patient", "--table", "--user", "--from", "--to"})
    prune->excludes(history->get_option(narrowing));
  app.add_subcommand("tables", kTablesHelp)->callback([&] { result = printTables(std::cout); });
  command("check", kCheckHelp, [&] { return checkDatabase(path, std::cout); });
  CLI::App* backup = app.add_subcommand("backup", kBackupHelp);
  bool byItself = false;
  backup->add_option("DATABASE", path, "The database file");
  backup->add_option("FOLDER", folder, "Where the copies go");
  backup->add_flag("--scheduled", byItself, "Of the registered database, for the daily timer");
  backup->callback([&] {
    result = byItself ? backUpByItself(systemNow(), std::cout)
                      : backUpDatabase(path, folder, systemNow(), std::cout);
  });
  CLI::App* copies = app.add_subcommand("copies", kCopiesHelp);
  copies->add_option("DATABASE", path, "The database file");
  copies->add_option("FOLDER", folder, "Where the copies are");
  copies->callback([&] { result = listCopies(path, folder, std::cout); });
  CLI::App* restore = app.add_subcommand("restore", kRestoreHelp);
  restore->add_option("COPY", folder, "The copy's database file")->required();
  restore->add_option("DATABASE", path, "The database file");
  restore->callback([&] { result = restoreDatabase(folder, path, systemNow(), std::cout); });
  command("register", kRegisterHelp, [&] { return registerDatabase(path, std::cout); });
  CLI::App* copy = command("copy", kCopyHelp, [&] {
    refuseBadTarget(folder);
    return copyDatabase(path, folder, std::cout, access);
  });
  copy->add_option("TO", folder, "The new database, a file or an address")->required();
  copy->add_option("--owner", access.owner, "The user who works with the new file; needs sudo");
  copy->add_option("--group", access.group, "The group whose members work with it");
  command("practice", kPracticeHelp,
          [&] { return createPractice(path, systemNow().date, std::cout); });
  const auto isNamed = [argv](CLI::App* one) { return one->get_name() == argv[1]; };
  if (argc > 1 && argv[1][0] != '-' && app.get_subcommands(isNamed).empty()) {
    std::cerr << "There is no command \"" << argv[1]
              << "\". brantiwell-database --help tells which there are.\n";
    return static_cast<int>(Exit::refused);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : static_cast<int>(Exit::refused);
  } catch (const Refused& refusal) {
    std::cerr << refusal.what() << '\n';
    result = Exit::refused;
  } catch (const std::exception& error) {  // RuntimeError, and what the file system raises
    std::cerr << error.what() << '\n';
    result = Exit::unavailable;
  }
  return static_cast<int>(result);
}
