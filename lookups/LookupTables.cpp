#include "lookups/LookupTables.h"

#include "text/Conversions.h"

#include <algorithm>
#include <array>

namespace health {

namespace {

constexpr double MostPieces = 1000; // no reply has more; the limit keeps the conversion in range
constexpr TextView CodeDescription = L"ID:1:2^Code:1:4^Diagnosis:0:1:1";

constexpr std::array<LookupTable, 25> Tables { {
    { .name = L"Immunization",
        .file = L"9999999.14",
        .screen = L".07'=1",
        .fields = L".01;1.14",
        .columns = L"ID:1:1^Imm #:1:0^Immunization:0:3^Brand Name:0:4^Long Name:1:5" },
    { .name = L"Skin Test", .file = L"9999999.28", .screen = L".03'=1" },
    { .name = L"Lab Test", .file = L"60" },
    { .name = L"Measurement",
        .file = L"9999999.07",
        .fields = L".01;.02",
        .columns = L"ID:1:1^Code:1:3^Measurement:0:4" },
    { .name = L"Radiology Exam", .file = L"71" },
    { .name = L"Exam", .file = L"9999999.15", .screen = L".04'=1" },
    { .name = L"Drug", .file = L"50" },
    { .name = L"Diagnostic Procedure", .file = L"9999999.68" },
    { .name = L"Clinic", .file = L"40.7", .columns = L"ID:1:1^Code:1:4^Clinic:0:3:1" },
    { .name = L"Discipline", .file = L"7" },
    { .name = L"Hospital Location",
        .file = L"44",
        .screen = L"I $$ACTHLOC(Y)",
        .columns = L"ID:1:1^Code:1:2^Location:0:2" },
    { .name = L"Provider",
        .file = L"200",
        .screen = L"I $$ACTPRV(Y)",
        .columns = L"ID:1:1^Code:1:0^Provider:0:3",
        .allowsEmptySearch = false },
    { .name = L"Diagnosis", .call = L"MEVICDLK ICDLKUP", .columns = CodeDescription, .codeBeforeName = true },
    { .name = L"Diagnosis", .call = L"MEVUTL ICDLEX", .columns = CodeDescription, .codeBeforeName = true },
    { .name = L"Location", .file = L"4", .columns = L"ID:1:1^Code:1:0^Location:0:3" },
    { .name = L"CPT", .call = L"MEVVCPT CPTLKUP" },
    { .name = L"CPT", .call = L"MEVUTL LEXLKUP" },
    { .name = L"CPT Category", .call = L"MEVCPTPR OTHCATS" },
    { .name = L"CPT Modifier",
        .file = L"9999999.88",
        .fields = L".01;.02",
        .index = L"B~C",
        .columns = L"ID:1:1^Code:0:2^CPT Modifier:0:4" },
    { .name = L"Transaction Code",
        .call = L"MEVVTC CMLKUP",
        .fields = L".01;.07;.05;.06",
        .columns = L"ID:1:1^Code:0:2^Transaction Description:0:3^CAN:0:4^Class:0:5" },
    { .name = L"Health Factor", .file = L"9999999.64", .screen = L".13'=1", .fields = L".01" },
    { .name = L"Vendor", .file = L"9999999.11" },
    { .name = L"Education Topic", .file = L"9999999.09", .screen = L".03'=1" },
    { .name = L"ICD Procedure",
        .file = L"80.1",
        .screen = L"100'=1",
        .fields = L".01;10",
        .columns = L"ID:1:1^Code:0:2^Procedure:0:4" },
    { .name = L"Patient", .file = L"2", .fields = L".01;.02;.03;.09", .allowsEmptySearch = false },
} };

}

const LookupTable& lookupTable(int number) { return Tables.at(static_cast<std::size_t>(number)); }

std::vector<LookupColumn> lookupColumns(const LookupTable& table)
{
    const Text layout = table.columns.empty() ? L"ID:1:1^Code:1:4^" + Text(table.name) + L":0:3" : Text(table.columns);
    std::vector<LookupColumn> columns;
    for (const Text& piece : SplitPieces(layout, L"^", 0)) {
        const auto parts = SplitPieces(piece, L":", 3);
        columns.push_back({ .heading = parts[0],
            .hidden = parts[1] != L"0",
            .source = static_cast<PieceNumber>(std::clamp(leadingNumber(parts[2]), 0.0, MostPieces)),
            .properCase = !parts[3].empty() });
    }
    return columns;
}

}
