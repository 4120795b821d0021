#pragma once

#include "records/ListExport.h"
#include "tests/support/ControlFixture.h"

#include <numeric>

namespace health::test {

// A panel whose list is exported.
class ExportFixture : public ControlFixture {
protected:
    // All records, or those in some rows.
    ListExport exported(std::optional<std::vector<int>> rows = {})
    {
        listed = listedRecords(control);
        shown = rows.value_or(std::vector<int>(listed.size()));
        if (!rows)
            std::iota(shown.begin(), shown.end(), 0);
        return { control, listed, shown };
    }

    std::string fhir(FhirChoices choices = {}, std::optional<std::vector<int>> rows = {})
    {
        const auto files = exported(std::move(rows)).files(ExportFormat::Fhir, choices);
        return files.empty() ? std::string() : files.front().bytes;
    }

    std::vector<ListedRecord> listed;
    std::vector<int> shown;
};

}
