#include "host/framework/ComponentLoader.h"

#include "api/Failure.h"
#include "toolkit/Manifests.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QStandardPaths>

#include <exception>

using namespace Qt::StringLiterals;

namespace health {

namespace {

[[noreturn]] void fail(const QString& text) { throw Failure(text.toStdWString()); }

// The manifests of a panel, in the order of their precedence.
QStringList manifestsOf(const QString& progId)
{
    const QString inData = ComponentsFolder + u'/' + manifestName(progId);
    QStringList paths { userComponentsFolder() + u'/' + manifestName(progId) };
    paths += QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, inData);
    paths += QCoreApplication::applicationDirPath() + u"/../share/"_s + inData;
    paths.removeIf([](const QString& path) { return !QFile::exists(path); });
    return paths;
}

// The library that a manifest names, by an absolute path or by one relative to the manifest's folder.
QString libraryIn(const QString& path, const QString& progId)
{
    QFile file(path);
    const bool opened = file.open(QIODevice::ReadOnly);
    const QJsonObject manifest = opened ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    const QString library = manifest.value(u"library"_s).toString();
    if (manifest.value(u"progId"_s).toString() != progId || library.isEmpty())
        fail(u"The panel's manifest %1 cannot be read. Register the panel again."_s.arg(path));
    const int interface = manifest.value(u"interface"_s).toInt(1);
    if (interface != ComponentInterface)
        fail(u"The panel's library %1 is of another version (interface %2) than this host (interface %3). "
             "Register the panel that belongs to it."_s.arg(library)
                 .arg(interface)
                 .arg(ComponentInterface));
    const QString found = QDir::cleanPath(QFileInfo(path).dir().absoluteFilePath(library));
    if (!QFileInfo::exists(found))
        fail(u"The panel's library %1 no longer exists. Register the panel again."_s.arg(found));
    return found;
}

QString libraryOf(const QString& progId)
{
    const QStringList manifests = manifestsOf(progId);
    if (manifests.isEmpty())
        fail(u"The panel %1 is not registered on this machine. Register it with: "
             "personal-health-host --register LIBRARY"_s.arg(progId));
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
        fail(u"The library %1 cannot be loaded: %2"_s.arg(libraryPath, library.errorString()));
    const auto function = reinterpret_cast<Function*>(library.resolve(name));
    if (!function)
        fail(u"The library %1 is not a component: the entry point %2 is missing."_s.arg(
            libraryPath, QLatin1String(name)));
    return function;
}

}

ComponentClass& loadComponentClass(const QString& progId)
{
    const QString path = libraryOf(progId);
    ComponentClass* const object =
        entry<ComponentGetClassObjectFunction>(path, ComponentGetClassObjectName)(progId.toUtf8().constData());
    if (!object)
        fail(u"The library %1 does not contain the panel %2."_s.arg(path, progId));
    return *object;
}

void registerComponent(const QString& libraryPath)
{
    const QString path = QFileInfo(libraryPath).absoluteFilePath();
    if (!entry<ComponentRegisterFunction>(path, ComponentRegisterName)(path.toUtf8().constData()))
        fail(u"The library %1 could not be registered: is the data folder writable?"_s.arg(path));
}

void unregisterComponent(const QString& libraryPath)
{
    if (!entry<ComponentUnregisterFunction>(QFileInfo(libraryPath).absoluteFilePath(), ComponentUnregisterName)())
        fail(u"The registration could not be removed: is the data folder writable?"_s);
}

}
