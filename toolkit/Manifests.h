// Where components are registered: the manifests that a host finds and a library writes (api/Component.h).
#pragma once

#include <QStandardPaths>
#include <QString>

namespace health {

// Below a data folder, the user's or one of the system's.
inline const QString ComponentsFolder = QStringLiteral("personal-health/components");

// The folder of the user's own registrations. The environment variable PERSONAL_HEALTH_COMPONENTS moves it.
inline QString userComponentsFolder()
{
    const QString moved = qEnvironmentVariable("PERSONAL_HEALTH_COMPONENTS");
    return moved.isEmpty()
        ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u'/' + ComponentsFolder
        : moved;
}

inline QString manifestName(const QString& progId) { return progId + QStringLiteral(".json"); }

}
