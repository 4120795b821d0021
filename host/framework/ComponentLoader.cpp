#include "host/framework/ComponentLoader.h"

#include "api/Failure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QStandardPaths>

#include <exception>

namespace health {

namespace {

[[noreturn]] void fail(const QString& text) { throw Failure(text.toStdWString()); }

QStringList manifestsOf(const QString& progId)
{
    const QString name = QStringLiteral("personal-health/components/") + progId + QStringLiteral(".json");
    QStringList paths = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, name);
    const QString own = QCoreApplication::applicationDirPath() + QStringLiteral("/../share/") + name;
    if (QFile::exists(own))
        paths.append(own);
    return paths;
}

// The library that a manifest names, absolutely or from its own folder.
QString libraryIn(const QString& path, const QString& progId)
{
    QFile file(path);
    const bool opened = file.open(QIODevice::ReadOnly);
    const QJsonObject manifest = opened ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    const QString library = manifest.value(QStringLiteral("library")).toString();
    if (manifest.value(QStringLiteral("progId")).toString() != progId || library.isEmpty())
        fail(QStringLiteral("The panel's manifest %1 cannot be read. Register the panel again.").arg(path));
    const int interface = manifest.value(QStringLiteral("interface")).toInt(1);
    if (interface != ComponentInterface)
        fail(
            QStringLiteral("The panel's library %1 is of another version (interface %2) than this host (interface %3). "
                           "Register the panel that belongs to it.")
                .arg(library)
                .arg(interface)
                .arg(ComponentInterface));
    const QString found = QDir::cleanPath(QFileInfo(path).dir().absoluteFilePath(library));
    if (!QFileInfo::exists(found))
        fail(QStringLiteral("The panel's library %1 is not there any more. Register the panel again.").arg(found));
    return found;
}

QString libraryOf(const QString& progId)
{
    const QStringList manifests = manifestsOf(progId);
    if (manifests.isEmpty())
        fail(QStringLiteral("The panel %1 is not registered on this machine. Register it with: "
                            "personal-health-host --register LIBRARY")
                 .arg(progId));
    std::exception_ptr reason;
    for (const QString& manifest : manifests) {
        try {
            return libraryIn(manifest, progId);
        } catch (const Failure&) {
            if (!reason)
                reason = std::current_exception();
        }
    }
    std::rethrow_exception(reason);
}

template<typename Function>
Function* entry(const QString& libraryPath, const char* name)
{
    QLibrary library(libraryPath);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    if (!library.load())
        fail(QStringLiteral("The library %1 cannot be loaded: %2").arg(libraryPath, library.errorString()));
    const auto function = reinterpret_cast<Function*>(library.resolve(name));
    if (!function)
        fail(QStringLiteral("The library %1 is no component: it has no entry %2.")
                 .arg(libraryPath, QLatin1String(name)));
    return function;
}

}

ComponentClass& loadComponentClass(const QString& progId)
{
    const QString path = libraryOf(progId);
    ComponentClass* const object =
        entry<ComponentGetClassObjectFunction>(path, ComponentGetClassObjectName)(progId.toUtf8().constData());
    if (!object)
        fail(QStringLiteral("The library %1 does not know the panel %2.").arg(path, progId));
    return *object;
}

void registerComponent(const QString& libraryPath)
{
    const QString path = QFileInfo(libraryPath).absoluteFilePath();
    if (!entry<ComponentRegisterFunction>(path, ComponentRegisterName)(path.toUtf8().constData()))
        fail(QStringLiteral("The library %1 could not be registered: is the data folder writable?").arg(path));
}

void unregisterComponent(const QString& libraryPath)
{
    if (!entry<ComponentUnregisterFunction>(QFileInfo(libraryPath).absoluteFilePath(), ComponentUnregisterName)())
        fail(QStringLiteral("The registration could not be removed: is the data folder writable?"));
}

}
