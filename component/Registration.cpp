#include "component/Registration.h"

#include "api/Component.h"
#include "toolkit/Manifests.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace health {

namespace {

QString manifestPath(const QString& progId) { return userComponentsFolder() + u'/' + manifestName(progId); }

}

bool writeManifest(const QString& progId, const QString& libraryPath, const QString& version)
{
    if (!QDir().mkpath(userComponentsFolder()))
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
