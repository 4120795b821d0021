// Names and numbers that the whole panel shares.
#pragma once

#include "api/Text.h"

namespace health {

inline constexpr int VersionMajor = 1;
inline constexpr int VersionMinor = 0;
inline constexpr int VersionRevision = 0;
inline constexpr TextView ApplicationTitle = L"Personal Health";

// The user parameter and the key that control editing of the reproductive history.
inline constexpr TextView DisableRepHistParameter = L"MEV DISABLE REP HIST EDITING";
inline constexpr TextView RepHistKey = L"MEVZ REP HIST EDIT";

}
