#pragma once

#include "api/Component.h"

#include <QString>

namespace health {

// The class object of a ProgID, from the first manifest that names an existing library: in the user's folder (see
// toolkit/Manifests.h), in one of the system's, or in that of the host's own installation. The Failure that it throws
// states the problem and its remedy. The library stays loaded.
ComponentClass& loadComponentClass(const QString& progId);

// Call a library's register and unregister entry points. Throw Failure.
void registerComponent(const QString& libraryPath);
void unregisterComponent(const QString& libraryPath);

}
