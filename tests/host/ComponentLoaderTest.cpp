#include "host/framework/ComponentLoader.h"
#include "api/Component.h"
#include "api/Failure.h"
#include "tests/support/ScriptedHost.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace health::test {
namespace {

QString usersFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/personal-health/components");
}

// The failure to load a panel with this manifest. The library itself is not looked at.
Text refusal(const QByteArray& manifest, const QString& folder = usersFolder())
{
    QDir().mkpath(folder);
    QFile file(folder + "/Test.Panel.json");
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(manifest) == manifest.size());
    file.close();
    try {
        loadComponentClass("Test.Panel");
    } catch (const Failure& failure) {
        return failure.description();
    }
    return L"loaded";
}

// A manifest of a library with an interface of this number.
QByteArray manifest(const QByteArray& library, int number)
{
    return QByteArray(R"({ "progId": "Test.Panel", "library": ")") + library + R"(", "interface": )"
        + QByteArray::number(number) + " }";
}

TEST(ComponentLoader, UnusableManifestsAreReported)
{
    const QByteArray good = manifest("/nowhere/panel.so", ComponentInterface);
    EXPECT_EQ(refusal(good), L"The panel's library /nowhere/panel.so no longer exists. Register the panel again.");
    const QByteArray withoutNumber = R"({ "progId": "Test.Panel", "library": "/nowhere/panel.so" })";
    for (const QByteArray& old : { manifest("/nowhere/panel.so", ComponentInterface - 1), withoutNumber })
        EXPECT_NE(refusal(old).find(L" has another version (interface "), Text::npos) << old.toStdString();
    for (const QByteArray& garbled : { good.left(20), QByteArray(), QByteArray(good).replace("Test.Panel", "Other") })
        EXPECT_NE(refusal(garbled).find(L"cannot be read. Register the panel again."), Text::npos)
            << garbled.toStdString();
}

TEST(ComponentLoader, VariableMovesTheUsersRegistrations)
{
    const QTemporaryDir moved;
    refusal(manifest("/home/panel.so", ComponentInterface));
    qputenv("PERSONAL_HEALTH_COMPONENTS", moved.path().toUtf8());
    const Text failure = refusal(manifest("/moved/panel.so", ComponentInterface), moved.path());
    qunsetenv("PERSONAL_HEALTH_COMPONENTS");
    EXPECT_EQ(failure, L"The panel's library /moved/panel.so no longer exists. Register the panel again.");
}

}
}
