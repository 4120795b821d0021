#pragma once

#include "records/RecordFilter.h"

#include <QString>

namespace health {

// By what a list is filtered, such as "\"mild\", Asthma Status, 2026"; empty without a filter.
QString filterInWords(const RecordFilter& filter);

}
