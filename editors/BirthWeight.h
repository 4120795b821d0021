// Birth weights: the forms in which users enter them, and the conversions that the server makes when it files them.
#pragma once

#include "platform/Explanation.h"

#include <array>
#include <optional>

namespace health {

// A unit in which a weight is entered. The bounds are exclusive.
struct WeightUnit {
    TextView caption;
    TextView letter; // after the number
    int piece; // of a reply
    double low;
    double high;
};

// Indexed by the value of the user parameter.
inline constexpr std::size_t PoundsOunces = 0;
inline constexpr std::size_t Kilograms = 1;
inline constexpr std::size_t Grams = 2;
inline constexpr std::array<WeightUnit, 3> WeightUnits { {
    { L"(lbs-oz)", L"", 1, 1, 25 },
    { L"(kg)", L"K", 3, 0.907, 10 },
    { L"(grams)", L"G", 4, 907, 10000 },
} };

// The text is a number between the bounds. Intended: the bounds themselves are invalid.
bool isBetween(TextView text, double low, double high);

// A weight as the server files it.
struct BirthWeight {
    Text pounds;
    Text ounces;
    Text kilograms;
    Text grams;

    // "7 lbs 2 ozs"; without ounces only the pounds.
    Text inPounds() const;
    // "7 lbs 2 ozs (3.232 kgs)", as the list shows it; empty if there is no weight.
    Text text() const;
};

// The weight of an entry in upper case with its unit's letter, such as "7 2", "7-2", "3.2K", "3200G"; empty if the
// server would refuse it or file no weight.
std::optional<BirthWeight> birthWeight(TextView entry);

// Why the form refuses such an entry, for the line beside the field; `beside` is empty if it accepts it.
Explanation weightFault(TextView entry);

// "= 7 lbs 2 ozs · 3,232 g": a weight in the units other than its own; if the entry has no letter, the unit in which
// it is understood comes first.
Text otherUnits(const BirthWeight& weight, std::size_t unit, bool hasLetter);
// The unit of an entry with its letter.
std::size_t unitOf(TextView entry);

}
