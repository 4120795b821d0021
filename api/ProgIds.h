// The ProgIDs of the panel and of the host's objects.
#pragma once

#include "api/Text.h"

namespace health {

// The panel's own ProgID (UTF-8, for ComponentGetClassObject); with ".json" the name of its manifest.
inline constexpr const char* PanelProgId = "KalMevRepHistory.kalmevRepHistCtrl";

// The objects that the panel requests from Session::object. All but the first are required.
inline constexpr TextView ApplicationProgId = L"DRN_VIM.VIM"; // HostApplication
inline constexpr TextView PatientProgId = L"CSS_Patient.Patient"; // Patient
inline constexpr TextView UserProgId = L"CSS_User.User"; // User
inline constexpr TextView SiteProgId = L"CSS_Site.Site"; // Site
inline constexpr TextView EncounterProgId = L"CSS_Encounter.Encounter"; // Encounter
inline constexpr TextView PrintProgId = L"zvPrint.zvPrintX"; // PrintPreview

}
