#pragma once

#include <filesystem>
#include <string>

#include "records/RecordSet.h"

namespace bw {

// The reports: each writes the records of a view, in their present order, as a document and starts
// the viewer. Sizes are inches. Without records nothing is written and nothing started. A document
// that cannot be written is told in a message; a viewer that is not there raises error 53. The
// record set stands on its last record afterwards.

// A plain list. `heads` and `fields` are column lists (see ApoyoMyView.h) that go side by side.
void ListReportWrite(const RecordSetRef& recordset, const std::filesystem::path& document,
                     double width, double height, const std::string& headerLine,
                     const std::string& title, const std::string& subtitles,
                     const std::string& heads, const std::string& fields);

// A box per charge, of rows of ChargesDescriptive. With real codes, or with billing codes.
void ChargesDetailReport(const RecordSetRef& recordset, const std::filesystem::path& document,
                         double width, double height, const std::string& headerLine,
                         const std::string& title, const std::string& subtitles, bool realCodes);

// A line per charge, patients grouped, for keying into the biller's system.
void ChargesBillingReport(const RecordSetRef& recordset, const std::filesystem::path& document,
                          double width, double height, const std::string& headerLine,
                          const std::string& title, const std::string& subtitles, bool realCodes);

}  // namespace bw
