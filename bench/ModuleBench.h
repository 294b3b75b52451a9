// The modules by the clock.
#pragma once

namespace bench {

// Makes every piece of work (bench/Work.h) a bench of Google Benchmark's.
void RegisterModules();

} // namespace bench
