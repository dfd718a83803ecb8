#include "engine/LookedUpQuery.h"

#include "text/Text.h"

namespace bw {
namespace {

std::string wordsOf(const LookedUpQuery& query, std::string_view name) {
  std::string text = concat("CASE ", query.alias, ".", query.words.foreign);
  for (std::size_t i = 0; i < query.words.words.size(); ++i)
    text += concat(" WHEN ", i, " THEN '", query.words.words[i], "'");
  return concat(text, " ELSE '' END AS ", name);
}

std::string fieldOf(const LookedUpQuery& query, const LookUpField& field) {
  if (field.from == query.words.alias) return wordsOf(query, field.name);
  const std::string renamed = field.name.empty() ? std::string() : concat(" AS ", field.name);
  return concat(field.from, ".", field.column, renamed);
}

}  // namespace

std::string viewStatement(const LookedUpQuery& query) {
  std::string text = concat("CREATE VIEW ", query.name, " AS SELECT ");
  for (const LookUpField& field : query.fields)
    text += concat(&field == query.fields.data() ? "" : ", ", fieldOf(query, field));
  text += concat(" FROM ", query.base, " ", query.alias);
  for (const LookUpTable& table : query.tables)
    text += concat(" LEFT JOIN ", table.table, " ", table.alias, " ON ", table.alias, ".",
                   table.key, " = ", table.from, ".", table.foreign);
  return text;
}

}  // namespace bw
