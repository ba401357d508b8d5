// What this process occupies.
#pragma once

namespace bench {

// Bytes of anonymous memory that are resident, and of files that are mapped (whether resident or
// not), so that a library that reads its data and one that maps it can be compared.
double memory_use();

} // namespace bench
