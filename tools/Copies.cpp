#include "tools/Copies.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <set>
#include <sstream>
#include <system_error>

#include "core/ApoyoRegistry.h"
#include "engine/EngineMakers.h"
#include "engine/PostgresAddress.h"
#include "engine/Workgroup.h"
#include "text/Formats.h"
#include "text/RuntimeError.h"
#include "text/Text.h"
#include "tools/Commands.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDump = ".dump";  // of a database on a server
constexpr std::string_view kMoment = "0000-00-00-000000";
constexpr std::int32_t kDay = 86'400;  // seconds

bool isMoment(std::string_view text) {
  return text.size() == kMoment.size() && std::ranges::equal(text, kMoment, [](char c, char model) {
           return model == '0' ? isDigit(c) : c == model;
         });
}

// What the names of its copies begin and end with.
struct Names {
  explicit Names(const fs::path& database) {
    const bool isFile = !isServerAddress(database.string());
    prefix = concat(isFile ? database.stem().string() : databaseNameOf(database.string()), "-");
    std::ranges::replace(prefix, '/', '_');
    extension = isFile ? database.extension().string() : kDump;
  }
  std::string prefix;
  std::string extension;
};

}  // namespace

fs::path Copy::sums() const { return file.string() + ".sum"; }
fs::path Copy::workgroup() const { return workgroupPathOf(file.string()); }

std::vector<fs::path> copiesFolders(const fs::path& database) {
  const std::string set = installationText("CopiesFolder");
  const std::string second = installationText("SecondCopiesFolder");
  if (set.empty() && isServerAddress(database.string()))
    throw Refused("Say a folder for the copies.");
  std::vector<fs::path> folders{set.empty() ? database.parent_path() / "copies" : fs::path(set)};
  if (!second.empty()) folders.emplace_back(second);
  return folders;
}

std::vector<Copy> copiesOf(const fs::path& database) {
  return copiesIn(copiesFolders(database).front(), database);
}

std::vector<Copy> copiesIn(const fs::path& folder, const fs::path& database) {
  std::vector<Copy> copies;
  if (!fs::is_directory(folder)) return copies;
  const Names names(database);
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string stem = entry.path().stem().string();
    if (entry.path().extension() != names.extension || !stem.starts_with(names.prefix)) continue;
    if (std::string moment = stem.substr(names.prefix.size()); isMoment(moment))
      copies.push_back({entry.path(), std::move(moment)});
  }
  std::ranges::sort(copies, {}, &Copy::moment);
  return copies;
}

fs::path begunCopy(const fs::path& folder, const fs::path& database) {
  return folder / concat(".", Names(database).prefix, getpid(), ".new");
}

void sweepCopies(const fs::path& folder, const fs::path& database) {
  const std::string prefix = Names(database).prefix;
  std::vector<fs::path> left;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.starts_with("." + prefix) && name.find(".new") != std::string::npos)
      left.push_back(entry.path());
    const fs::path copy = folder / entry.path().stem();
    if (name.ends_with(".sum") && name.starts_with(prefix) && !fs::exists(copy)) {
      left.push_back(entry.path());
      left.emplace_back(workgroupPathOf(copy.string()));
    }
  }
  for (const fs::path& file : left) fs::remove(file);
}

Copy newCopy(const fs::path& folder, const fs::path& database, DateTime moment) {
  const Names names(database);
  for (;;) {
    const std::string name = Format(moment, "yyyy-mm-dd-hhMMss");
    Copy copy{folder / concat(names.prefix, name, names.extension), name};
    if (!fs::exists(fs::symlink_status(copy.file))) return copy;
    if (++moment.time.second == kDay) moment = {{moment.date.day + 1}, {0}};
  }
}

std::string sumsText(const std::vector<TablePrint>& prints) {
  std::ostringstream text;
  for (const TablePrint& print : prints)
    text << print.table << '\t' << print.rows << '\t' << print.sum << '\n';
  return text.str();
}

std::vector<TablePrint> notedSums(const Copy& copy) {
  std::vector<TablePrint> prints;
  std::ifstream file(copy.sums());
  for (TablePrint print; file >> print.table >> print.rows >> print.sum;) prints.push_back(print);
  return prints;
}

std::vector<std::string> faultsOf(const fs::path& file, const fs::path& workgroup,
                                  const std::vector<TablePrint>& noted) {
  std::vector<std::string> faults;
  try {
    faults = openEngine(file.string())->findDamage();
    if (!workgroupAdmits(workgroup, "Kelps", "Kelps"))
      faults.push_back("The workgroup file does not admit the program: " + workgroup.string());
    if (printsOf(file.string()) != noted)
      faults.emplace_back("Its rows are not those that were noted when it was made.");
  } catch (const RuntimeError& error) {
    faults.push_back(error.text());
  }
  return faults;
}

std::vector<Copy> outlived(const std::vector<Copy>& copies) {
  constexpr std::size_t kStay = 20;
  constexpr std::size_t kMonth = 7;  // "2026-11"
  std::vector<Copy> old;
  std::set<std::string> months;
  std::size_t place = 0;
  for (auto copy = copies.rbegin(); copy != copies.rend(); ++copy) {
    const bool lastOfMonth = months.insert(copy->moment.substr(0, kMonth)).second;
    if (++place > kStay && !lastOfMonth) old.push_back(*copy);
  }
  return old;
}

bool drop(const Copy& copy) {
  std::error_code error;
  for (const fs::path& file : {copy.file, copy.workgroup(), copy.sums()})
    if (!fs::remove(file, error) && error) return false;
  return true;
}

void dropOutlived(const std::vector<Copy>& copies, std::ostream& out) {
  for (const Copy& old : outlived(copies))
    if (!drop(old)) out << "An old copy cannot be dropped: " << old.file.string() << ".\n";
}

int ageInDays(const std::vector<Copy>& copies) {
  if (copies.empty()) return -1;
  std::error_code error;
  const Copy& newest = copies.back();
  const bool hasSums = newest.file.extension() != kDump;
  const fs::file_time_type known =
      fs::last_write_time(hasSums ? newest.sums() : newest.file, error);
  if (error) return -1;
  return static_cast<int>(
      std::chrono::floor<std::chrono::days>(fs::file_time_type::clock::now() - known).count());
}

}  // namespace bw
