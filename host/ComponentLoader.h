#pragma once

#include "component/Component.h"

#include <QString>

namespace health {

// The class object of a ProgID, by the manifests in the user's data folder and the system's. Throws Failure that says
// what is wrong and what to do. The library stays loaded.
ComponentClass& loadComponentClass(const QString& progId);

// Calls a library's register or unregister entry point. Throws Failure.
void registerComponent(const QString& libraryPath);
void unregisterComponent(const QString& libraryPath);

}
