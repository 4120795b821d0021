// The parts that resources of FHIR R4 have in common.
#pragma once

#include "records/ExportSubject.h"
#include "records/FhirCodes.h"
#include "records/JsonWriter.h"
#include "records/PartialDate.h"

#include <map>
#include <set>

namespace health {

// What the user decides about an export.
struct FhirChoices {
    bool namesGuardian = false; // writes the mother or guardian, who is another patient
    bool usesSnomed = false; // adds the codings of SNOMED CT, whose use needs a licence
};

// What a resource is made of: its identifier, and the same in every export.
struct FhirName {
    TextView kind; // such as "asthma-status"
    TextView record; // the record's number
    TextView part; // such as "fev-1"; empty for a record that makes one resource
};

// A text as FHIR allows it, without blanks around it: control characters become U+FFFD, all other blanks than tab and
// line break become plain ones.
Text fhirText(TextView text);

// A decimal number as JSON writes it, with all its digits; empty for every other text.
Text plainDecimal(TextView text);

// Writes the resources of one patient as entries of a Bundle. What is empty is left out.
class FhirWriter {
public:
    FhirWriter(const ExportSubject& subject, FhirChoices choices);

    const FhirChoices& choices() const { return m_choices; }
    const ExportSubject& subject() const { return m_subject; }
    JsonWriter& json() { return m_json; }

    // Writes an entry; `body` writes the resource's members beside type, narrative and identifier.
    template<typename Body>
    void resource(TextView type, const FhirName& name, TextView narrative, Body body)
    {
        beginEntry(type, name, narrative);
        body();
        endEntry();
    }
    // The patient's own entry, to which patientReference() refers.
    void patient();

    void string(std::string_view name, TextView text) { m_json.text(name, fhirText(text)); }
    // Writes a time only if its zone is certain.
    void dateTime(std::string_view name, const std::optional<PartialDate>& date);
    void patientReference(std::string_view name);
    // A reference to something without an entry: `place` such as "visits", its number, and a text for people.
    void reference(std::string_view name, TextView place, TextView number, TextView display);
    void identifier(TextView place, TextView value);
    void coding(TextView system, TextView code, TextView display = {});
    // A CodeableConcept; the last two always with the stored words.
    void item(std::string_view name, const ItemCode& item);
    void choice(std::string_view name, Choices choices, TextView stored);
    void words(std::string_view name, TextView stored);

private:
    void beginEntry(TextView type, const FhirName& name, TextView narrative);
    void endEntry();
    std::string uniqueUrl(const std::string& name);
    void narrative(TextView text);

    const ExportSubject& m_subject;
    FhirChoices m_choices;
    JsonWriter m_json;
    std::set<std::string> m_names; // of all resources
    std::map<std::string, int> m_repeated;
    std::string m_patientName; // begins the names of all resources
    std::string m_patientUrl;
};

}
