// Listed records made of lines, for units that read nothing else.
#pragma once

#include "records/RecordList.h"

#include <initializer_list>
#include <vector>

namespace health::test {

// Of one kind. The texts must outlive the records.
inline std::vector<ListedRecord> madeRecords(RecordTypeNumber type, std::initializer_list<TextView> lines)
{
    std::vector<ListedRecord> records;
    for (const TextView line : lines) {
        ListedRecord& record = records.emplace_back();
        record.type = &recordType(type);
        record.label = record.type->rowLabel;
        record.line = line;
    }
    return records;
}

}
