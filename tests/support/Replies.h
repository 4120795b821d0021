// Replies for the tests of the forms. The contract tests check that these and the real server's have the same shapes,
// so that the two cannot drift apart.
#pragma once

#include "api/Text.h"

namespace health::test::replies {

inline constexpr TextView Reproductive = L"G3P2LC1SA0TA0^01/05/2026^ORAL CONTRACEPTIVES^12/01/2025^SONOGRAM^10/12/2026";
inline constexpr TextView Birth = L"7^2^3.23^3232^^^^^^2^6M^2W^5M^HARTLEY,ROSE|1";
inline constexpr TextView Feeding = L"45^1^3260310.143|812^1/2 BREAST & 1/2 FORMULA|3\r\n";
inline constexpr TextView Functional =
    L"31^^3260310.0915|81^INDEPENDENT^NEEDS HELP^TOTALLY DEPENDENT^^^^^^^NEEDS HELP^^^DECLINE^YES\r\n";
inline constexpr TextView Asthma = L"3^^3260310|81^MILD PERSISTENT|2^90^80^450^YES^NO^YES^NO\r\n";
inline constexpr TextView Registered = L"12^ACTIVE|A^01/02/2026^04/05/2026^03/20/2026^SMITH,JOHN|15";
inline constexpr TextView Contract = L"45^^01/05/2026@10:00|81^PAIN|P^02/01/2026^OAK,KIT J|15\r\n";
inline constexpr TextView Emergency =
    L"45^^3261120.2245|81^URGENT|U^POV|POV^^STRETCHER|S^Her aunt^RELATIVE|R^DISCHARGED|D^^11/20/2026@23:50^^"
    L"Stable^\r\n";
inline constexpr TextView Refusal = L"8^^^MEASUREMENTS^14^BLOOD PRESSURE^^^3260310^1^^Said No, twice\r\n";

}
