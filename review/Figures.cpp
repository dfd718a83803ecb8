#include "review/Figures.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

#include "review/ChargeTable.h"
#include "review/ResultRows.h"
#include "text/Conversions.h"
#include "text/Formats.h"
#include "text/Text.h"

namespace bw {
namespace {

struct Charges {
  explicit Charges(const RowStore& all) : rows(all) {}
  const RowStore& rows;
  TableColumn patient{rows, "PatientId"};
  TableColumn entered{rows, "ChargeDate"};
  TableColumn care{rows, "ChargeRealDate"};
  TableColumn status{rows, "Status"};
};

struct Delay {
  std::int64_t upTo;  // days from care to writing
  std::string_view caption;
};
constexpr Delay kDelays[] = {{-1, "Before the care"}, {0, "The same day"},   {1, "1 day"},
                             {2, "2 days"},           {3, "3 days"},         {7, "4 to 7 days"},
                             {14, "8 to 14 days"},    {30, "15 to 30 days"}, {INT64_MAX, "Later"}};

enum class Order : std::uint8_t { mostFirst, byKey, byKeyBackwards };

// A division by a column of the charges, or by a key that is worked out.
struct Division {
  const char* name;
  std::string_view key = {};  // a column, and that of its words
  std::string_view words = {};
  std::int64_t (*keyOf)(const Charges& charges, std::size_t row) = nullptr;
  std::string (*wordsOf)(std::int64_t key) = nullptr;
  Order order = Order::mostFirst;
};

std::int64_t monthOf(const Charges& charges, std::size_t row) {
  constexpr int kMonths = 12;
  const Civil day = civil(Date{static_cast<std::int32_t>(charges.care(row))});
  return day.year * kMonths + day.month - 1;
}

std::string monthWords(std::int64_t key) {
  constexpr std::int64_t kMonths = 12;
  return concat(key / kMonths, "-", zeroFilled(key % kMonths + 1, 2));
}

std::int64_t delayOf(const Charges& charges, std::size_t row) {
  const std::int64_t days = charges.entered(row) - charges.care(row);
  return std::ranges::find_if(kDelays, [days](const Delay& one) { return days <= one.upTo; }) -
         std::begin(kDelays);
}

std::string delayWords(std::int64_t key) {
  return std::string(kDelays[static_cast<std::size_t>(key)].caption);
}

constexpr Division kDivisions[] = {
    {.name = "Month", .keyOf = monthOf, .wordsOf = monthWords, .order = Order::byKeyBackwards},
    {.name = "Doctor", .key = "DoctorCode", .words = "Doctor"},
    {.name = "Facility", .key = "FacilityCode", .words = "Facility"},
    {.name = "Insurance", .key = "InsuranceCode", .words = "Insurance"},
    {.name = "E&M concept", .key = "EMCode", .words = "EMDescription"},
    {.name = "Days from care to writing",
     .keyOf = delayOf,
     .wordsOf = delayWords,
     .order = Order::byKey},
};

struct Measure {
  const char* name;
  std::int64_t status = Column::kNull;  // of the charges that are counted; else all
  bool ofPatients = false;
};
constexpr Measure kMeasures[] = {{.name = "Charges"},
                                 {.name = "Patients", .ofPatients = true},
                                 {.name = "Ready charges", .status = 0},
                                 {.name = "Posted charges", .status = 1}};

template <const auto& rows>
std::span<const char* const> namesOf() {
  static constexpr auto kNames = [] {
    std::array<const char*, std::size(rows)> names{};
    std::transform(std::begin(rows), std::end(rows), names.begin(),
                   [](const auto& row) { return row.name; });
    return names;
  }();
  return kNames;
}

struct Sum {
  std::int64_t key = 0;
  std::size_t row = 0;  // a charge that has it
  std::size_t count = 0;
  std::int64_t latestPatient = Column::kNull;
};

class Counting {
 public:
  Counting(const Charges& charges, const Division& division, const Measure& measure)
      : charges_(charges), division_(division), measure_(measure) {}

  void count(const FigureQuestion& question) {
    const std::int64_t from = question.from ? question.from->day : INT64_MIN;
    const std::int64_t to = question.to ? question.to->day : INT64_MAX;
    for (std::size_t row = 0; row < charges_.rows.rowCount(); ++row)
      if (const std::int64_t day = charges_.care(row); day >= from && day <= to) add(row);
    const auto before = [order = division_.order](const Sum& one, const Sum& other) {
      if (order == Order::byKeyBackwards) return one.key > other.key;
      if (order == Order::byKey || one.count == other.count) return one.key < other.key;
      return one.count > other.count;
    };
    std::sort(sums_.begin(), sums_.end(), before);
  }

  Figures figures() const {
    std::size_t sum = 0;
    for (const Sum& one : sums_) sum += one.count;
    ResultRows rows{{"Caption"}, {"Count", FieldType::integer}, {"Share"}};
    for (const Sum& one : sums_) {
      const double share = 100.0 * static_cast<double>(one.count) / static_cast<double>(sum);
      rows.add({words(one), countValue(one.count), concat(textOf(Round(share, 1)), " %")});
    }
    return {rows.take(), all_.count};
  }

 private:
  // Charges come patient by patient.
  void add(std::size_t row) {
    if (measure_.status != Column::kNull && charges_.status(row) != measure_.status) return;
    addTo(all_, row);
    addTo(sumOf(row), row);
  }

  void addTo(Sum& sum, std::size_t row) const {
    const std::int64_t patient = charges_.patient(row);
    if (measure_.ofPatients && sum.latestPatient == patient) return;
    sum.latestPatient = patient;
    ++sum.count;
  }

  Sum& sumOf(std::size_t row) {
    const std::int64_t key =
        division_.keyOf != nullptr ? division_.keyOf(charges_, row) : key_(row);
    const auto [place, isNew] = places_.try_emplace(key, sums_.size());
    if (isNew) sums_.push_back({.key = key, .row = row});
    return sums_[place->second];
  }

  std::string words(const Sum& sum) const {
    return division_.wordsOf != nullptr
               ? division_.wordsOf(sum.key)
               : textOrEmpty(TableColumn(charges_.rows, division_.words).value(sum.row));
  }

  const Charges& charges_;
  const Division& division_;
  const Measure& measure_;
  TableColumn key_{charges_.rows, division_.key.empty() ? "PatientId" : division_.key};
  std::vector<Sum> sums_;
  std::unordered_map<std::int64_t, std::size_t> places_;
  Sum all_;
};

}  // namespace

std::span<const char* const> divisionNames() { return namesOf<kDivisions>(); }
std::span<const char* const> measureNames() { return namesOf<kMeasures>(); }

Figures findFigures(const RowStore& charges, const FigureQuestion& question) {
  const Charges columns(charges);
  Counting counting(columns, kDivisions[question.division], kMeasures[question.measure]);
  counting.count(question);
  return counting.figures();
}

}  // namespace bw
