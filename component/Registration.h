#pragma once

#include <QString>

namespace health {

// Writes the manifest that leads a host from the ProgID to the library; false when it could not be written.
bool writeManifest(const QString& progId, const QString& libraryPath, const QString& version);

// Removes it; true also when there was none.
bool removeManifest(const QString& progId);

}
