#include "records/FhirRefusal.h"

#include "text/Letters.h"

namespace health {

void FhirRefusal::write()
{
    if (equalIgnoringCase(m_pieces[4], L"IMMUNIZATION"))
        immunization();
    else if (equalIgnoringCase(m_pieces[4], L"MEDICATION/DRUG"))
        medication();
    else
        procedure();
}

void FhirRefusal::item(std::string_view name)
{
    m_writer.words(name, fhirText(m_pieces[6]).empty() ? m_pieces[4] : m_pieces[6]);
}

void FhirRefusal::note()
{
    m_json.array("note", [&] { m_json.object("", [&] { m_writer.string("text", shown(12)); }); });
}

void FhirRefusal::immunization()
{
    m_writer.resource(L"Immunization", name(), wholeRow(), [&] {
        m_json.text("status", L"not-done");
        m_json.object("statusReason", [&] {
            m_json.array("coding", [&] {
                m_writer.coding(L"http://terminology.hl7.org/CodeSystem/v3-ActReason", L"PATOBJ", L"patient objection");
            });
            m_json.text("text", m_record.label);
        });
        item("vaccineCode");
        m_writer.patientReference("patient");
        m_writer.dateTime("occurrenceDateTime", m_date);
        if (!m_date) {
            m_json.object("_occurrenceDateTime", [&] {
                m_json.array("extension", [&] {
                    m_json.object("", [&] {
                        m_json.text("url", L"http://hl7.org/fhir/StructureDefinition/data-absent-reason");
                        m_json.text("valueCode", L"unknown");
                    });
                });
            });
        }
        note();
    });
}

void FhirRefusal::medication()
{
    m_writer.resource(L"MedicationStatement", name(), wholeRow(), [&] {
        m_json.text("status", L"not-taken");
        m_json.array("statusReason", [&] { m_writer.words("", m_record.label); });
        item("medicationCodeableConcept");
        m_writer.patientReference("subject");
        m_writer.dateTime("effectiveDateTime", m_date);
        note();
    });
}

void FhirRefusal::procedure()
{
    m_writer.resource(L"Procedure", name(), wholeRow(), [&] {
        m_json.text("status", L"not-done");
        m_writer.words("statusReason", m_record.label);
        m_writer.choice("category", Choices::Refused, m_pieces[4]);
        item("code");
        m_writer.patientReference("subject");
        m_writer.dateTime("performedDateTime", m_date);
        note();
    });
}

}
