#pragma once

#include "api/Text.h"

namespace health {

// A list reply with this many functional status assessments.
inline Text functionalStatusReply(long rows)
{
    static constexpr TextView levels[] = { L"INDEPENDENT", L"NEEDS HELP", L"TOTALLY DEPENDENT" };
    Text reply;
    for (long row = 0; row < rows; ++row) {
        reply += std::to_wstring(row + 1) + L"^^3260310.143|" + std::to_wstring(row / 10 + 1);
        for (int item = 0; item < 12; ++item)
            reply += L'^' + Text(levels[(row + item) % 3]);
        reply += L"^IMPROVEMENT^NO\r\n";
    }
    return reply;
}

}
