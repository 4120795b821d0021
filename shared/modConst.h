// Names and numbers that the whole program shares.
#pragma once

#include "api/Text.h"

namespace health {

inline constexpr int VersionMajor = 1;
inline constexpr int VersionMinor = 0;
inline constexpr int VersionRevision = 0;
inline constexpr TextView ApplicationTitle = L"Personal Health";

// The user parameter and the key that decide about editing the reproductive history.
inline constexpr TextView DisableRepHistParameter = L"MEV DISABLE REP HIST EDITING";
inline constexpr TextView RepHistKey = L"MEVZ REP HIST EDIT";

// What a user reads who holds neither PROVIDER nor the key of a type of record, and the title of such boxes.
inline constexpr TextView InsufficientPermissions = L"Insufficient Permissions";
inline Text editRefusal(TextView key)
{
    return L"Editing not permitted, you do not hold either the PROVIDER key or the " + Text(key) + L" key.";
}

}
