#pragma once

#include "records/FhirWriter.h"
#include "records/RecordKinds.h"
#include "records/RecordList.h"
#include "text/Conversions.h"

namespace health {

// What the writers of a record's resources need.
class RecordResource {
protected:
    RecordResource(FhirWriter& writer, const ListedRecord& record)
        : m_writer(writer)
        , m_json(writer.json())
        , m_record(record)
        , m_pieces(record.line)
        , m_date(storedDate(recordDate(record)))
    {
    }

    TextView shown(PieceNumber piece) const { return displayPart(m_pieces[piece]); }
    FhirName name(TextView part = {}) const { return { kindName(m_record.type->number), m_record.record, part }; }
    Text wholeRow() const { return Text(m_record.label) + L": " + Text(m_record.summary); }

    FhirWriter& m_writer;
    JsonWriter& m_json;
    const ListedRecord& m_record;
    LinePieces m_pieces;
    std::optional<PartialDate> m_date;
};

}
