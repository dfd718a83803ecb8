#pragma once

#include <string>
#include <vector>

#include "data/Dialect.h"
#include "data/Tables.h"

namespace bw {

// Relations and keys of an engine that names what refuses. Each bears its sentences as a comment of
// three lines, for a refused INSERT, UPDATE and DELETE; an empty line stands for the sentence that
// any relation or key has (see Refusals.h).

std::string keyNameOf(const SchemaTable& table);

// The lines of further columns: a column in which 0 names no row has its relation by one that holds
// no value then. Their names begin with kHiddenColumn, and no result shows them.
std::string relationColumns(const SchemaTable& table);

// The statements that give the tables their relations and all their sentences. They stand behind
// the tables, those of charges first: what a record in use is told is told of these.
void addNamedRelations(std::vector<std::string>& statements, const Dialect& dialect);

// The sentences, for whoever refuses.
std::string inUseSentence(const SchemaTable& user);
std::string astraySentence(const SchemaTable& parent);

}  // namespace bw
