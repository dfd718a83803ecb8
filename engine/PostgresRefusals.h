#pragma once

#include "engine/PostgresLink.h"
#include "engine/Refusals.h"

namespace bw {

// What a failed statement is refused with. The sentences of relations and keys, and the names in
// the case of the description, stand in the database as comments (see data/NamedRelations.h): they
// are asked for, so no transaction may have failed.
DatabaseRefusal refusalOf(PostgresLink& link, const PostgresFailure& failure,
                          std::string_view statement);

}  // namespace bw
