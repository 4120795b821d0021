#pragma once

namespace health {

// Columns of the grid; only the first two are shown.
namespace GridColumn {
inline constexpr int Label = 0;
inline constexpr int Summary = 1;
inline constexpr int Record = 2; // record id; the patient number for types with one record per patient
inline constexpr int Visit = 3;
inline constexpr int Locked = 4; // "1": the record may not be edited
inline constexpr int Type = 5;
inline constexpr int Count = 6;
}

}
