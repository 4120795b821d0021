#include "records/FhirExport.h"

#include "records/FhirRecords.h"

namespace health {

namespace {

void writeTags(FhirWriter& writer, const ExportedRecords& exported)
{
    JsonWriter& json = writer.json();
    json.object("meta", [&] {
        json.array("tag", [&] {
            if (!exported.areAll())
                writer.coding(LocalCodes, L"filtered", exported.extent());
            if (!exported.remark.empty())
                writer.coding(LocalCodes, L"incomplete", fhirText(exported.remark));
        });
    });
}

}

std::string fhirBundle(const ExportSubject& subject, const ExportedRecords& exported, FhirChoices choices)
{
    FhirWriter writer(subject, choices);
    JsonWriter& json = writer.json();
    json.beginObject();
    json.text("resourceType", L"Bundle");
    writeTags(writer, exported);
    json.text("type", L"collection");
    json.beginArray("entry");
    writer.patient();
    for (const ListedRecord* const record : exported.records)
        writeFhirRecord(writer, *record);
    json.end();
    json.end();
    return json.bytes() + '\n';
}

}
