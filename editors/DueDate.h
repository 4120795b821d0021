#pragma once

#include "text/Dates.h"

namespace health {

// The estimated day of delivery: 280 days after the first day of the last menstrual period.
Moment dueDate(Moment lastPeriod);

// "17 weeks 2 days"
Text weeksAndDays(std::chrono::days duration);

// "From LMP: 04/30/2027 (280 days); today 17 weeks 2 days; 3 days later than entered". `entered` is the delivery date
// that the user has entered, if any.
Text dueDateWords(Moment lastPeriod, const std::optional<Moment>& entered, Moment now);

}
