// The library's entry points. None of them throws.
#include "component/PanelClass.h"
#include "component/Registration.h"

#include <cstring>
#include <optional>

using namespace health;

#define COMPONENT_ENTRY extern "C" __attribute__((visibility("default")))

namespace {

// Created by the first ComponentGetClassObject: registering the library needs no QApplication.
std::optional<PanelClass>& panelClass()
{
    static std::optional<PanelClass> object;
    return object;
}

}

COMPONENT_ENTRY ComponentClass* ComponentGetClassObject(const char* progId)
{
    if (!progId || std::strcmp(progId, PanelProgId) != 0)
        return nullptr;
    try {
        auto& object = panelClass();
        if (!object)
            object.emplace();
        return &*object;
    } catch (...) {
        return nullptr;
    }
}

COMPONENT_ENTRY bool ComponentCanUnloadNow() { return !panelClass() || !panelClass()->hasInstances(); }

COMPONENT_ENTRY bool ComponentRegister(const char* libraryPath)
{
    try {
        return libraryPath
            && writeManifest(
                QString::fromLatin1(PanelProgId), QString::fromUtf8(libraryPath), QStringLiteral(COMPONENT_VERSION));
    } catch (...) {
        return false;
    }
}

COMPONENT_ENTRY bool ComponentUnregister()
{
    try {
        return removeManifest(QString::fromLatin1(PanelProgId));
    } catch (...) {
        return false;
    }
}
