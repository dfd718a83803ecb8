#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "text/Clock.h"
#include "text/RuntimeError.h"
#include "tools/Commands.h"

namespace bw {
namespace {

constexpr const char* kAbout =
    "Creates, fills, exports and checks the database of a Brantiwell office.\n"
    "A database is two files: the database itself (brantiwell.db) and beside it the workgroup\n"
    "file (brantiwell.dw), without which the program does not open it. Move and copy both.\n"
    "For several desks it lies on a PostgreSQL server instead: in place of a PATH say its "
    "address,\n"
    "postgresql://anna@server/office.";

constexpr const char* kFooter =
    "Examples:\n"
    "  sudo brantiwell-database create --register --owner anna /srv/office/brantiwell.db\n"
    "  brantiwell-database load /srv/office/brantiwell.db exported/\n"
    "  brantiwell-database export --csv /srv/office/brantiwell.db out/\n"
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
    "FOLDER holds a file a table: a first line of column names, then a line a row; `tables` tells\n"
    "what they take. In Patient.tsv cells are parted by tabs, without quotes; in Patient.csv by\n"
    "commas or semicolons, and may stand in quotes. An empty cell is the empty text or no value.\n"
    "Lookup rows take the place of rows with the same number; other rows must be new. Every\n"
    "refused row is named by file, line and column, and then nothing is loaded.";
constexpr const char* kExportHelp =
    "Write all rows into a new folder, a file a table, as `load` reads them.\n"
    "They hold patients' data; only you can read them.";
constexpr const char* kTemplateHelp =
    "Write a file a table with nothing but its head into a new folder, to be filled for `load`.";
constexpr const char* kCodesHelp =
    "Bring official codes to the editors of diagnoses and procedures.";
constexpr const char* kCodesImportHelp =
    "Take the codes of a yearly public file: ICD-10-CM as its order file, HCPCS level II with\n"
    "commas and a first line that names code, long and short description. They take the place of\n"
    "those of the year before, in a file beside the database (the registered one); the database\n"
    "itself is not touched.";
constexpr const char* kCheckHelp =
    "Look for damage, missing tables, columns and queries, values that cannot be, and rows that\n"
    "name others which do not exist. Changes nothing.";
constexpr const char* kBackupHelp =
    "Copy a database with its workgroup file, while the program runs or not.\n"
    "The copy is checked before it counts; an unchanged database is not copied again. The last 20\n"
    "copies stay, and the last of each month. Without DATABASE the registered one; without FOLDER\n"
    "the folders of the machine settings CopiesFolder (otherwise \"copies\" beside the database)\n"
    "and SecondCopiesFolder. Of a database on a server it is the server's own dump (pg_dump),\n"
    "restored for trial where the account may make a database.";
constexpr const char* kCopiesHelp = "List the copies of a database with size, rows and verdict.";
constexpr const char* kRestoreHelp =
    "Put a copy in a database's place. Close the program first. What was there is kept under a\n"
    "name with date and time. On a server the database must be a new, empty one.";
constexpr const char* kCopyHelp =
    "Copy an office into a new database: from a file to a server, back, or to another file.\n"
    "All or nothing, the log of changes too; the rows of both are compared at the end.";
constexpr const char* kTablesHelp =
    "Tell what the columns of each table take, for the files of `load`.";
constexpr const char* kUpgradeHelp =
    "Bring a database that another version made to what this one makes, after a copy of it.\n"
    "Indexes, saved queries and guards are made anew; rows stay as they are.";
constexpr const char* kChangeLogHelp =
    "Begin or stop to write down who changes what, in the database itself.\n"
    "A line a statement: moment, user, computer, rows, statement. Lines of before stay.";
constexpr const char* kHistoryHelp =
    "Tell who changed what, where the log of changes was on. DATES are spelled 2026-03-09.";
constexpr const char* kRegisterHelp =
    "Make it the database that the program on this computer works with.\n"
    "Writes the machine setting `Database` to \"Fenmoor Systems/Brantiwell PC.ini\" in the first\n"
    "folder of $XDG_CONFIG_DIRS, by default /etc/xdg, for which you may need sudo.";

Date dateOf(const std::string& text) {
  if (const auto date = parseIsoDate(text)) return *date;
  throw Refused("This is no date like 2026-03-09: " + text);
}

// The commands and what was said behind them; the one that was chosen runs while parse() reads.
class CommandLine {
 public:
  CommandLine() {
    app_.footer(kFooter);
    app_.require_subcommand(1);
    app_.set_version_flag("--version", "brantiwell-database " BRANTIWELL_VERSION);
    addNew();
    addMoving();
    addCodes();
    addCopies();
    addChanges();
    addOthers();
  }

  int run(int argc, char** argv) {
    if (argc > 1 && argv[1][0] != '-' && !knows(argv[1])) return refuseCommand(argv[1]);
    try {
      app_.parse(argc, argv);
    } catch (const CLI::RequiredError& error) {
      // Of a command that is none the parser says only that one is missing.
      const std::vector<std::string> left = app_.remaining(true);
      const bool isCommand = !left.empty() && !left.front().starts_with('-');
      return isCommand ? refuseCommand(left.front()) : refuse(error);
    } catch (const CLI::ParseError& error) {
      return refuse(error);
    } catch (const Refused& refusal) {
      std::cerr << refusal.what() << '\n';
      result_ = Exit::refused;
    } catch (const std::exception& error) {  // RuntimeError, and what the file system raises
      std::cerr << error.what() << '\n';
      result_ = Exit::unavailable;
    }
    return static_cast<int>(result_);
  }

 private:
  // 0 after a wish for help.
  int refuse(const CLI::ParseError& error) {
    return app_.exit(error) == 0 ? 0 : static_cast<int>(Exit::refused);
  }

  static int refuseCommand(const std::string& command) {
    std::cerr << "There is no command \"" << command
              << "\". brantiwell-database --help tells which there are.\n";
    return static_cast<int>(Exit::refused);
  }

  bool knows(const std::string& command) {
    const auto isNamed = [&command](CLI::App* one) { return one->get_name() == command; };
    return !app_.get_subcommands(isNamed).empty();
  }

  template <class Run>
  CLI::App* addBare(const char* name, const char* help, Run run) {
    return addTo(app_, name, help, run);
  }

  template <class Run>
  CLI::App* addTo(CLI::App& parent, const char* name, const char* help, Run run) {
    return parent.add_subcommand(name, help)->callback([this, run] {
      refuseBadTarget(path_);
      result_ = run();
    });
  }

  template <class Run>
  CLI::App* add(const char* name, const char* help, Run run) {
    CLI::App* added = addBare(name, help, run);
    added->add_option("PATH", path_, "The database file, or the address of one on a server")
        ->required();
    return added;
  }

  void addNew() {
    CLI::App* create = add("create", kCreateHelp, [this] {
      createDatabase(path_, std::cout, access_, beginning_);
      return registered_ ? registerDatabase(path_, std::cout) : Exit::done;
    });
    create->add_flag("--register", registered_, "Register it too, as the command register does");
    create->add_flag("--starter", beginning_.starter,
                     "With concepts and groups of diagnoses to begin with");
    create->add_flag("--change-log", beginning_.changeLog,
                     "Write down who changes what, as changelog on does");
    takeAccess(create);
    add("practice", kPracticeHelp,
        [this] { return createPractice(path_, systemNow().date, std::cout); });
    CLI::App* copy = add("copy", kCopyHelp, [this] {
      refuseBadTarget(folder_);
      return copyDatabase(path_, folder_, std::cout, access_);
    });
    copy->add_option("TO", folder_, "The new database, a file or an address")->required();
    takeAccess(copy);
  }

  void takeAccess(CLI::App* making) {
    making->add_option("--owner", access_.owner, "The user who works with it; needs sudo");
    making->add_option("--group", access_.group, "The group whose members work with it");
  }

  void addMoving() {
    CLI::App* load = add("load", kLoadHelp, [this] {
      return loadTables(path_, folder_, std::cout,
                        isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr, loading_);
    });
    load->add_option("FOLDER", folder_, "The folder with the text files")->required();
    load->add_flag("--dry-run", loading_.dryRun, "Only tell what would be loaded or refused");
    load->add_flag("--update", loading_.update,
                   "Let rows of catalogues with a known number change the ones that stand");
    takeCode(load);
    takeNewFolder(add("export", kExportHelp,
                      [this] { return exportTables(path_, folder_, form_, std::cout); }));
    takeNewFolder(addBare("template", kTemplateHelp,
                          [this] { return writeTemplates(folder_, form_, std::cout); }));
  }

  void addCodes() {
    CLI::App* codes = app_.add_subcommand("codes", kCodesHelp)->require_subcommand(1);
    CLI::App* import = addTo(*codes, "import", kCodesImportHelp, [this] {
      return importCodes(folder_, path_, loading_.code, std::cout);
    });
    import->add_option("FILE", folder_, "The book")->required();
    import->add_option("DATABASE", path_, "The database file");
    takeCode(import);
  }

  void takeCode(CLI::App* reading) {
    reading->add_flag_callback(
        "--windows-1252", [this] { loading_.code = TextCode::windows1252; },
        "The files are in Windows-1252; otherwise in UTF-8");
  }

  void takeNewFolder(CLI::App* writing) {
    writing->add_option("FOLDER", folder_, "The new folder")->required();
    writing->add_flag_callback(
        "--csv", [this] { form_ = TableForm::commas; }, "With commas and quotes, for spreadsheets");
  }

  void addCopies() {
    CLI::App* backup = addBare("backup", kBackupHelp, [this] {
      return scheduled_ ? backUpByItself(systemNow(), std::cout)
                        : backUpDatabase(path_, folder_, systemNow(), std::cout);
    });
    takeRegistered(backup, "Where the copies go");
    backup->add_flag("--scheduled", scheduled_, "Of the registered database, for the daily timer");
    takeRegistered(
        addBare("copies", kCopiesHelp, [this] { return listCopies(path_, folder_, std::cout); }),
        "Where the copies are");
    CLI::App* restore = addBare("restore", kRestoreHelp, [this] {
      return restoreDatabase(folder_, path_, systemNow(), std::cout);
    });
    restore->add_option("COPY", folder_, "The copy's database file")->required();
    restore->add_option("DATABASE", path_, "The database file");
  }

  void takeRegistered(CLI::App* copying, const char* folder) {
    copying->add_option("DATABASE", path_, "The database file");
    copying->add_option("FOLDER", folder_, folder);
  }

  void addChanges() {
    add("changelog", kChangeLogHelp,
        [this] { return switchChangeLog(path_, state_ == "on", std::cout); })
        ->add_option("STATE", state_, "on or off")
        ->required()
        ->check(CLI::IsMember({"on", "off"}));
    CLI::App* history = add("history", kHistoryHelp, [this] { return runHistory(); });
    history->add_option("--patient", filter_.patient,
                        "Only changes that name the patient's number");
    history->add_option("--table", filter_.table, "Only changes of a table");
    history->add_option("--user", filter_.user, "Only changes by a user of a computer");
    history->add_option("--from", from_, "Only from a day on");
    history->add_option("--to", to_, "Only to the end of a day");
    CLI::Option* into = history->add_option("--into", folder_, "The new file for lines taken out");
    CLI::Option* prune =
        history->add_option("--prune", before_, "Take the lines before a day out of the log");
    prune->needs(into);
    into->needs(prune);
    // It takes out all lines, whatever they are about.
    for (const char* narrowing : {"--patient", "--table", "--user", "--from", "--to"})
      prune->excludes(history->get_option(narrowing));
  }

  Exit runHistory() {
    if (!before_.empty()) return pruneHistory(path_, dateOf(before_), folder_, std::cout);
    if (!from_.empty()) filter_.from = dateOf(from_);
    if (!to_.empty()) filter_.to = dateOf(to_);
    return printHistory(path_, filter_, std::cout);
  }

  void addOthers() {
    addBare("tables", kTablesHelp, [this] {
      return manual_ ? printTablesManual(std::cout) : printTables(std::cout);
    })->add_flag("--man", manual_, "As a section of the manual page");
    add("check", kCheckHelp, [this] { return checkDatabase(path_, std::cout); });
    add("upgrade", kUpgradeHelp, [this] { return upgradeDatabase(path_, systemNow(), std::cout); });
    add("register", kRegisterHelp, [this] { return registerDatabase(path_, std::cout); });
  }

  CLI::App app_{kAbout, "brantiwell-database"};
  Exit result_ = Exit::done;
  std::filesystem::path path_;
  std::filesystem::path folder_;  // or the other file
  Access access_;
  Beginning beginning_;
  bool registered_ = false;
  bool scheduled_ = false;
  LoadOptions loading_;
  TableForm form_ = TableForm::tabs;
  std::string state_;
  HistoryFilter filter_;
  std::string from_;
  std::string to_;
  std::string before_;
  bool manual_ = false;
};

}  // namespace
}  // namespace bw

int main(int argc, char** argv) { return bw::CommandLine().run(argc, argv); }
