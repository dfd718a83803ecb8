#include "review/FrequencyDays.h"

#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>
#include <string>
#include <utility>
#include <vector>

#include "controls/Dialog.h"
#include "controls/Explanation.h"
#include "controls/QtText.h"
#include "core/PassOver.h"
#include "core/Principal.h"
#include "core/Services.h"
#include "lists/Settings.h"
#include "review/Statements.h"
#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {
namespace {

constexpr const char* kSection = "FrequencyDays";
constexpr int kMostDays = 999;

struct Frequency {
  std::int64_t code;
  std::string description;
};

std::vector<Frequency> frequencies() {
  std::vector<Frequency> all;
  const RecordSetRef rows = DatabaseConnection.Read(statements::kFrequencies);
  for (rows->setSort("Code"); !rows->EOF_(); rows->MoveNext())
    all.push_back({rows->integer("Code"), rows->textOrEmpty("Description")});
  return all;
}

// What somebody wrote into the settings by hand and is no number counts as unset.
int storedDays(std::int64_t frequency) {
  int days = 0;
  passOver(
      [&] { days = toInt16(GetSetting(kApplicationTitle, kSection, concat(frequency), "0")); });
  return days;
}

class FrequencyDaysDialog : public Dialog {
 public:
  explicit FrequencyDaysDialog(QWidget* owner) : Dialog("frmDays", "Days between visits", owner) {}

  void load() {
    auto* grid =
        explainedFields(this, "lblDays",
                        "A doctor is due when so many days have passed since his last care "
                        "of the patient. With 0 the last care is shown, and nobody is due.");
    for (const Frequency& frequency : frequencies()) addRow(grid, frequency);
    static_cast<QVBoxLayout*>(layout())->addWidget(makeFoot(
        {}, [this] { ok(); }, [this] { unload(); }));
    if (!boxes_.empty()) boxes_.front().second->setFocus();
  }

  bool confirmed = false;

 private:
  void addRow(QGridLayout* grid, const Frequency& frequency) {
    auto* box = new QSpinBox;
    box->setRange(0, kMostDays);
    box->setValue(storedDays(frequency.code));
    addField(grid, static_cast<int>(boxes_.size()), 0, toQt(frequency.description + ":"), box,
             concat("spnDays", frequency.code).c_str());
    boxes_.emplace_back(frequency.code, box);
  }

  void ok() {
    for (const auto& [code, box] : boxes_)
      SaveSetting(kApplicationTitle, kSection, concat(code), concat(box->value()));
    confirmed = true;
    unload();
  }

  std::vector<std::pair<std::int64_t, QSpinBox*>> boxes_;
};

}  // namespace

std::map<std::int64_t, std::int64_t> frequencyDays() {
  std::map<std::int64_t, std::int64_t> days;
  for (const Frequency& frequency : frequencies())
    if (const int set = storedDays(frequency.code); set > 0) days[frequency.code] = set;
  return days;
}

bool askFrequencyDays(QWidget* owner) {
  FrequencyDaysDialog dialog(owner);
  dialog.load();
  dialog.exec();
  return dialog.confirmed;
}

}  // namespace bw
