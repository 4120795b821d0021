// Prints Bundles, one a line: first of complete records of each kind, then of records that no server should send.
#include "api/Utf8.h"
#include "records/ListExport.h"
#include "tests/support/ControlFixture.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <random>

namespace health::test {
namespace {

constexpr TextView Calls[] = { L"MEVREP GET", L"MEVBMSR GET", L"MEVVIF GET", L"MEVVELD GET", L"MEVVAST GET",
    L"MEVVTXC GET", L"MEVREF GET" };
constexpr TextView Complete[] = { replies::Reproductive, replies::Birth, replies::Feeding, replies::Functional,
    replies::Asthma, replies::Contract,
    L"8^^^MEASUREMENTS^14^BLOOD PRESSURE^^^3260310^1^^Said No, twice\r\n"
    L"9^^^IMMUNIZATION^3^INFLUENZA^^^3260300^^^\r\n10^^^MEDICATION/DRUG^3^ASPIRIN^^^3260000^^^\r\n" };

// Pieces that break dates, numbers, markup, JSON, identifiers, or the calendar.
constexpr TextView Pieces[] = { L"", L" ", L"\u00A0", L"0", L"-1", L"007", L"99999999999", L"1e9", L"3260230",
    L"3260310.1430", L"3260310.24", L"3260300", L"0000000", L"9999999", L"02/30/2026", L"03/00/2026", L"00/00/2026",
    L"13/13/2026@99:99", L"3260310|81", L"|", L"|0", L"MILD PERSISTENT|2", L"YES", L"maybe", L"6M", L"M", L"1.5W",
    L"-6M", L"\u0665M", L"G1P2LC3SA4TA5", L"G", L"GGG1", L"G-1P", L"IMMUNIZATION", L"MEDICATION/DRUG", L"EXAM", L"7",
    L"7", L"<script>alert(1)</script>", L"]]>&amp;&#0;&nbsp;", L"\"\\\"}{", L"\x01\x02\x1B", L"\u0085", L"\u2028",
    L"\uFFFE", L"\xD800", L"\U0010FFFF", L"\U0001F600 e\u0301", L"urn:uuid:x", L"=1+1", L"a\nb\tc", L"\u202Ertl" };

class Bundles : public ControlFixture {
public:
    void print(bool complete)
    {
        for (std::size_t i = 0; i < std::size(Calls); ++i)
            reply(Calls[i], complete ? Text(Complete[i]) : hostileReply(i < 2));
        host.patient->shownName = complete ? Text(L"Hartley, Marigold") : Text(piece());
        host.patient->born = complete ? Text(L"1996-04-02") : Text(piece());
        host.site->zone = L"+01:00";
        if (control.listedPatient() == 0)
            open(12, L"F", L"4");
        else
            commitPatient(complete ? 12 : 1 + static_cast<long>(m_random() % 1000), L"F", L"4");
        const auto records = listedRecords(control);
        std::vector<int> rows(records.size());
        std::iota(rows.begin(), rows.end(), 0);
        const auto files =
            ListExport(control, records, rows).files(ExportFormat::Fhir, { .namesGuardian = true, .usesSnomed = true });
        std::string line = files.at(0).bytes;
        std::replace(line.begin(), line.end(), '\n', ' ');
        std::puts(line.c_str());
    }

private:
    void TestBody() override { }

    TextView piece() { return Pieces[m_random() % std::size(Pieces)]; }

    Text hostileReply(bool single)
    {
        Text reply;
        for (std::size_t line = single ? 0 : m_random() % 5; line < 5; ++line) {
            for (int i = 0; i < 18; ++i)
                reply += (i == 0 ? L"" : L"^") + Text(piece());
            if (single)
                return reply.starts_with(L'-') ? L"0" + reply : reply;
            reply += L"\r\n";
        }
        return reply.starts_with(L'-') ? L"0" + reply : reply;
    }

    std::mt19937 m_random { 20260310 };
};

}
}

int main()
{
    health::test::Bundles bundles;
    bundles.print(true);
    for (int i = 0; i < 60; ++i)
        bundles.print(false);
}
