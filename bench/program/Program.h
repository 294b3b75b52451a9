// The whole program's measurements as rows of the table.
#pragma once

#include "bench/program/Table.h"

namespace bench {

// Rates of text and answers, beside the reference reader's, and keys under load.
void AddTraffic(Table& table);

// Memory over much text, and what the client does while nothing happens.
void AddRest(Table& table);

// From the last byte of a line to its being there on the screen.
void AddPaint(Table& table);

void AddStart(Table& table);

} // namespace bench
