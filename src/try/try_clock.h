#pragma once

#include "try/try_record.h"

// The time now on a try's clocks: this boot's id, the milliseconds since it began (counting
// suspended time too) and the wall clock.
tryClock clockNow();

// `clock` moved on by `milliseconds` (the wall clock by whole seconds, rounded up).
tryClock clockAfter(const tryClock& clock, std::int64_t milliseconds);
