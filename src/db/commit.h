// The sections of a database file, written from the symbol table in its order.
#pragma once

#include <string>

#include "core/records.h"

namespace velora {

// Each appends one section: its heading, a line for each symbol of the user of its kind, ";\n".
void write_tdecs(std::string &f);
void write_cdecs(std::string &f);
void write_fdecs(std::string &f);
void write_db_fdecs(std::string &f);
// The clauses, folded. A clause that the file cannot carry so that it reads back is written all the
// same, with a warning that names its function.
void write_fdefs(std::string &f);

// The whole file: the five sections in this order.
std::string database_text();

} // namespace velora
