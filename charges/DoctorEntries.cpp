#include "charges/DoctorEntries.h"

#include "core/AsisRutinasRecordsets.h"
#include "text/Text.h"

namespace bw {

int DoctorEntries::read(RecordSetRef& doctors, std::string& message) {
  if (OpenRecordset(doctors, kStatements[0], message) != 0) return 1;
  covered_.clear();
  readCoverage();
  if (coverage_.empty() || doctors->RecordCount() == 0) return 0;
  for (doctors->MoveFirst(); !doctors->EOF_(); doctors->MoveNext()) addEntriesOf(doctors);
  RecordsetCopyAll(doctors, entries_);
  while (entries_->RecordCount() > 0) {
    entries_->MoveFirst();
    entries_->Delete();
  }
  return 0;
}

void DoctorEntries::readCoverage() {
  if (std::exchange(coverageRead_, true)) return;
  std::string ignored;
  OpenRecordset(entries_, kStatements[1], ignored);
  RecordSetRef rows;
  if (OpenRecordset(rows, kStatements[2], ignored) != 0) return;
  for (; !rows->EOF_(); rows->MoveNext())
    coverage_[rows->integer("DoctorCode")].push_back(
        {rows->value("CoveringDoctorCode"), rows->textOrEmpty("Names")});
}

void DoctorEntries::addEntriesOf(const RecordSetRef& doctor) {
  const auto covering = coverage_.find(doctor->integer("DoctorCode"));
  if (covering == coverage_.end()) return;
  for (const auto& [code, names] : covering->second) {
    entries_->AddNew();
    entries_->set("DoctorCode", code);
    entries_->set("Names", concat(names, " (Covering ", doctor->textOrEmpty("Names"), ")"));
    entries_->set("AttentionTypeCode", doctor->value("AttentionTypeCode"));
    entries_->Update();
    covered_.push_back(doctor->integer("DoctorCode"));
  }
}

}  // namespace bw
