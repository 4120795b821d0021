#include "component/Registration.h"

#include "api/Component.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

namespace health {

namespace {

QString manifestFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/personal-health/components");
}

QString manifestPath(const QString& progId) { return manifestFolder() + u'/' + progId + QStringLiteral(".json"); }

}

bool writeManifest(const QString& progId, const QString& libraryPath, const QString& version)
{
    if (!QDir().mkpath(manifestFolder()))
        return false;
    const QJsonObject manifest {
        { QStringLiteral("progId"), progId },
        { QStringLiteral("library"), libraryPath },
        { QStringLiteral("version"), version },
        { QStringLiteral("interface"), ComponentInterface },
    };
    QSaveFile file(manifestPath(progId));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(manifest).toJson()) != -1 && file.commit();
}

bool removeManifest(const QString& progId)
{
    const QString path = manifestPath(progId);
    return !QFile::exists(path) || QFile::remove(path);
}

}
