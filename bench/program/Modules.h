// The modules' benches as rows of the table.
#pragma once

#include "bench/program/Table.h"

namespace bench {

void AddModules(Table& table);

} // namespace bench
