// Ages at which a child's feeding changed, such as 6M, and whether the patient can have reached them.
#pragma once

#include "api/Text.h"

#include <optional>

namespace health {

class Patient;

// A number and D, W, M or Y in upper case.
bool isValidAge(TextView age);

// "6 months" for 6M; empty for a text that is not an age.
Text ageInWords(TextView age);

// The age of a patient, as the host shows it: a whole number of days, weeks, months or years.
class PatientAge {
public:
    // Of the patient's age in words ("4 months") or, without it, in whole years. Unknown if neither is a number.
    static std::optional<PatientAge> of(const Patient& patient);

    // The patient has certainly not reached an age such as 6M.
    bool isBelow(TextView age) const;

private:
    PatientAge(double number, wchar_t unit)
        : m_number(number)
        , m_unit(unit)
    {
    }

    double m_number;
    wchar_t m_unit; // D, W, M or Y
};

}
