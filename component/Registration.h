#pragma once

#include <QString>

namespace health {

// Writes the manifest of a ProgID into the user's data folder; false if that failed. `libraryPath` is absolute.
bool writeManifest(const QString& progId, const QString& libraryPath, const QString& version);

// Removes it; true also if there was none.
bool removeManifest(const QString& progId);

}
