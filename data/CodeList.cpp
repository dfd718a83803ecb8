#include "data/CodeList.h"

#include "text/Conversions.h"
#include "text/Text.h"

namespace bw {

void appendCode(std::string& list, std::int16_t code) { list += concat(code, ";"); }

bool forEachCode(std::string_view list, const std::function<bool(std::int16_t)>& call) {
  list.remove_prefix(list.empty() ? 0 : 1);
  for (std::size_t end = list.find(';'); end != std::string_view::npos; end = list.find(';')) {
    if (!call(toInt16(Val(list.substr(0, end))))) return false;
    list.remove_prefix(end + 1);
  }
  return true;
}

bool takeCode(std::string& list, std::int16_t code) {
  const std::string token = concat(";", code, ";");
  const std::size_t at = list.find(token);
  if (at == std::string::npos) return false;
  list.erase(at, token.size() - 1);  // its closing ";" opens what follows
  return true;
}

bool reconcileDetails(const RecordSetRef& stored, const char* column, std::string wanted,
                      const DetailCalls& calls) {
  if (stored->RecordCount() > 0) {
    for (stored->MoveFirst(); !stored->EOF_(); stored->MoveNext()) {
      const std::int16_t code = stored->code(column);
      if (!takeCode(wanted, code) && calls.remove(code) != 0) return false;
    }
  }
  return forEachCode(wanted, [&](std::int16_t code) { return calls.insert(code) == 0; });
}

}  // namespace bw
