#include "host/framework/SeenPatients.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

PatientData numbered(long number)
{
    PatientData patient;
    patient.number = number;
    return patient;
}

QList<long> numbers(SeenPatients& seen, const Text& user)
{
    QList<long> found;
    for (const PatientData& patient : seen.of(user))
        found.append(patient.number);
    return found;
}

TEST(SeenPatientsTest, LatestFirstAndEachOnce)
{
    SeenPatients seen;
    for (const long patient : { 4, 0, 7, 4, 9, 0 })
        seen.note(L"A", numbered(patient));
    EXPECT_EQ(numbers(seen, L"A"), (QList<long> { 9, 4, 7 }));
    for (long patient = 100; patient < 150; ++patient)
        seen.note(L"A", numbered(patient));
    EXPECT_EQ(numbers(seen, L"A").size(), SeenPatients::Most);
    EXPECT_EQ(numbers(seen, L"A").front(), 149);
}

TEST(SeenPatientsTest, AnotherUserNeverSeesThemAndTheyDoNotComeBack)
{
    SeenPatients seen;
    seen.note(L"A", numbered(4));
    EXPECT_TRUE(numbers(seen, L"B").isEmpty());
    EXPECT_TRUE(numbers(seen, L"A").isEmpty());
    seen.note(L"A", numbered(4));
    seen.note(L"B", numbered(5));
    EXPECT_EQ(numbers(seen, L"B"), (QList<long> { 5 }));
}

}
}
