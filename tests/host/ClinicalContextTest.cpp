#include "host/framework/ClinicalContext.h"
#include "api/ProgIds.h"
#include "tests/support/ScriptedTransport.h"

#include <gtest/gtest.h>

namespace health::test {
namespace {

TEST(ClinicalContext, WorksWithoutAWindow)
{
    ScriptedTransport transport;
    ClinicalContext context(transport, 300, [](const QString&) { return false; }, {});
    const auto object = [&](TextView progId) { return context.session().object(progId); };
    EXPECT_FALSE(std::dynamic_pointer_cast<Encounter>(object(EncounterProgId))->prepare(44));
    std::dynamic_pointer_cast<Patient>(object(PatientProgId))->select();
    std::dynamic_pointer_cast<PrintPreview>(object(PrintProgId))
        ->preview(L"Text", L"Title", L"", L"", L"", 80, true, true);
    EXPECT_EQ(context.patient().number, 0);
}

}
}
