// The list of a million charges: filling, its end, a click on a column head, a charge that is
// merged, a search while it is typed.

#include <QApplication>
#include <QKeyEvent>
#include <cstdlib>
#include <memory>

#include "bench/Forms.h"
#include "bench/Measure.h"
#include "bench/Office.h"
#include "data/Literals.h"
#include "data/SavedQueries.h"
#include "engine/Connection.h"
#include "engine/SqliteEngine.h"
#include "lists/Lists.h"
#include "text/Text.h"

namespace {

using namespace bw;

constexpr const char* kAll = "SELECT * FROM ChargesDescriptive Where [status]<>2";

constexpr double kMostFill = 20;        // ms
constexpr double kMostBytesOfRow = 24;  // beyond the record set
constexpr double kMostToEnd = 40;       // ms, painted
constexpr double kMostFirstSort = 100;
constexpr double kMostMerge = 20;

std::unique_ptr<ListView> shownList() {
  auto list =
      std::make_unique<ListView>(std::vector<ListColumn>{{"ChargeRealDate", "Date", 1440},
                                                         {"Names", "Patient", 2880},
                                                         {"EMDescription", "E & M Concept", 2880},
                                                         {"Doctor", "Doctor", 2880},
                                                         {"Facility", "Facility", 2880},
                                                         {"Insurance", "Insurance", 2880},
                                                         {"StatusDescription", "Status", 1440}},
                                 ListView::Options{.selection = ListView::Selection::several});
  list->resize(1000, 600);
  list->show();
  QApplication::processEvents();
  return list;
}

struct Click {
  const char* column;
  double limit;  // ms, painted
};
constexpr Click kClicks[] = {{"ChargeRealDate", 60}, {"Names", 20},    {"EMDescription", 20},
                             {"Doctor", 20},         {"Facility", 20}, {"Insurance", 20}};

// What is searched, and the most that a key may take.
struct Typed {
  const char* rows;
  std::string statement;
  double limit;  // ms, painted
};

void press(ListView& list, int key) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(&list, &event);
}

void measureFill(const RecordSetRef& rows) {
  double bytes = 0;
  const double took = bench::median([&] {
    const auto list = shownList();
    const double before = bench::allocatedBytes();
    const double fill = bench::processorMilliseconds([&] { ListFill(*list, rows); });
    bytes = bench::allocatedBytes() - before;
    return fill;
  });
  bench::report("fill a list of a million rows", "ms", took, kMostFill);
  bench::report("list of a million rows", "bytes a row",
                bytes / static_cast<double>(rows->RecordCount()), kMostBytesOfRow);
}

void measureEnd(ListView& list) {
  const double took = bench::median([&] {
    press(list, Qt::Key_Home);
    list.viewport()->repaint();
    return bench::processorMilliseconds([&] {
      press(list, Qt::Key_End);
      list.viewport()->repaint();
    });
  });
  bench::report("to the end of a million rows", "ms", took, kMostToEnd);
}

// Up to the painted list. Each click meets a set that another column sorts, as the first click on
// a fresh list does.
void measureClick(ListView& list, const RecordSetRef& rows, const Click& click) {
  const std::string key = click.column;
  const double took = bench::median([&] {
    rows->setSort(key == "ChargeRealDate" ? "Names" : "ChargeRealDate");
    return bench::processorMilliseconds([&] {
      sortByColumn(rows, list, key);
      list.viewport()->repaint();
    });
  });
  bench::report(concat("click on ", key, " of a million rows"), "ms", took, click.limit);
}

// What the charges view does with a charge that the editor has stored.
void merge(Connection& connection, const RecordSetRef& rows, ListView& list, Date day,
           TimeOfDay time, std::int16_t patient) {
  const std::string date = monthFirst(day);
  const std::string clock = clock24(time);
  const RecordSetRef fresh =
      connection.Read(concat("SELECT * FROM ChargesDescriptive WHERE PatientId=", patient,
                             " and ChargeDate=#", date, "# and ChargeTime=#", clock, "#"));
  rows->MoveFirst();
  rows->Find(concat("PatientId=", patient));
  rows->Find(concat("ChargeDate=#", date, "#"));
  rows->Find(concat("ChargeTime=#", clock, "#"));
  mergeRecord(rows, fresh, list);
}

void measureMerge(Connection& connection, const RecordSetRef& rows) {
  rows->setSort("ChargeRealDate");
  const auto list = shownList();
  ListFill(*list, rows);
  list->viewport()->repaint();
  std::ptrdiff_t position = 10;
  const double took = bench::median([&] {
    rows->setAbsolutePosition(position);
    position = (position + 200000) % rows->RecordCount();
    const std::int16_t patient = rows->code("PatientId");
    const Date day = rows->date("ChargeDate");
    const TimeOfDay time = rows->time("ChargeTime");
    return bench::processorMilliseconds([&] {
      merge(connection, rows, *list, day, time, patient);
      list->viewport()->repaint();
    });
  });
  bench::report("merge a charge into a million rows", "ms", took, kMostMerge);
}

// The slowest key of a search: the first one prepares the texts, later ones meet no beginning and
// have to look at every row.
void measureFind(const RecordSetRef& rows, const Typed& typed) {
  const auto list = shownList();
  ListFill(*list, rows);
  list->setFocus();
  list->viewport()->repaint();
  const auto key = [&](int code, const QString& text) {
    return bench::processorMilliseconds([&] {
      QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier, text);
      QApplication::sendEvent(list.get(), &event);
      list->viewport()->repaint();
    });
  };
  const double took = bench::median([&] {
    double slowest = 0;
    for (const char letter : std::string_view("ernandez, zq"))
      slowest = std::max(slowest, key(0, QString(QChar(letter))));
    slowest = std::max(slowest, key(Qt::Key_Backspace, {}));
    key(Qt::Key_Escape, {});
    return slowest;
  });
  bench::report(concat("find as you type, a key in ", typed.rows), "ms", took, typed.limit);
}

std::vector<Typed> typedSearches() {
  const auto dayOf = [](int charge) {
    return monthFirst({bench::kFirstDay.day + charge / bench::kChargesOfDay});
  };
  return {
      {"100,000 charges",
       concat(kAll, " and ChargeRealDate >= #", dayOf(0), "# and ChargeRealDate < #", dayOf(100000),
              "#"),
       16},
      // Every row with a name of its own: as many texts to search as there are rows.
      {"100,000 names without equals",
       "SELECT TOP 100000 ChargeRealDate, Names || ' ' || row_number() OVER () AS Names, "
       "EMDescription, Doctor, Facility, Insurance, StatusDescription FROM ChargesDescriptive",
       16},
      {"a million charges", kAll, 60},
  };
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  bench::setUpForms();
  Connection connection = officeConnection(openSqlite(bench::grownOffice().string()));
  RecordSetRef rows = connection.Read(kAll);
  rows->setSort("ChargeRealDate");
  measureFill(rows);
  {
    const auto list = shownList();
    ListFill(*list, rows);
    list->viewport()->repaint();
    measureEnd(*list);
    // The first click on a column of texts has to bring the texts themselves into order.
    bench::report("first click on Names of a million rows", "ms",
                  bench::processorMilliseconds([&] { sortByColumn(rows, *list, "Names"); }),
                  kMostFirstSort);
    for (const Click& click : kClicks) measureClick(*list, rows, click);
  }
  measureMerge(connection, rows);
  rows.close();
  for (const Typed& typed : typedSearches()) measureFind(connection.Read(typed.statement), typed);
  return bench::verdict();
}
