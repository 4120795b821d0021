// The numbers of the types of record.
#pragma once

namespace health {

enum class RecordTypeNumber {
    Reproductive = 1,
    InfantFeeding = 2,
    BirthMeasurements = 3,
    FunctionalStatus = 4,
    Asthma = 5,
    TreatmentContract = 6,
    Refusal = 7,
    EmergencyRoom = 8, // the panel edits it, but neither lists nor offers it
};

}
