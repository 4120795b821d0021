// The names by which the panel and its host find each other.
#pragma once

#include "api/Text.h"

namespace health {

// The panel's own ProgID (UTF-8, for ComponentGetClassObject).
inline constexpr const char* PanelProgId = "KalMevRepHistory.kalmevRepHistCtrl";

// ProgIDs of the host's objects, for Session::object.
inline constexpr TextView ApplicationProgId = L"DRN_VIM.VIM";
inline constexpr TextView PatientProgId = L"CSS_Patient.Patient";
inline constexpr TextView UserProgId = L"CSS_User.User";
inline constexpr TextView SiteProgId = L"CSS_Site.Site";
inline constexpr TextView EncounterProgId = L"CSS_Encounter.Encounter";
inline constexpr TextView PrintProgId = L"zvPrint.zvPrintX";

}
