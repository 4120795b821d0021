#pragma once

#include "api/Component.h"

#include <QString>

namespace health {

// The class object of a ProgID, by the first manifest that names a library which is there: the user's, one of the
// system's, or the one that was installed with the host. Throws Failure that says what is wrong and what to do. The
// library stays loaded.
ComponentClass& loadComponentClass(const QString& progId);

// Calls a library's register or unregister entry point. Throws Failure.
void registerComponent(const QString& libraryPath);
void unregisterComponent(const QString& libraryPath);

}
