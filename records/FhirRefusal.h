#pragma once

#include "records/RecordResource.h"

namespace health {

// Writes a refusal as the statement that something was not done or not taken.
class FhirRefusal : RecordResource {
public:
    FhirRefusal(FhirWriter& writer, const ListedRecord& record)
        : RecordResource(writer, record)
    {
    }

    void write();

private:
    void immunization();
    void medication();
    void procedure();
    void item(std::string_view name);
    void note();
};

}
