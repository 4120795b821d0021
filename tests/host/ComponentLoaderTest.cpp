#include "host/framework/ComponentLoader.h"
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

TEST(ComponentLoader, UnusableManifestsAreReported)
{
    const QByteArray good = R"({ "progId": "Test.Panel", "library": "/nowhere/panel.so", "interface": 4 })";
    EXPECT_EQ(refusal(good), L"The panel's library /nowhere/panel.so no longer exists. Register the panel again.");
    for (const QByteArray& old :
        { QByteArray(good).replace("4", "3"), QByteArray(good).replace(", \"interface\": 4", "") })
        EXPECT_NE(refusal(old).find(L" has another version (interface "), Text::npos) << old.toStdString();
    for (const QByteArray& garbled : { good.left(20), QByteArray(), QByteArray(good).replace("Test.Panel", "Other") })
        EXPECT_NE(refusal(garbled).find(L"cannot be read. Register the panel again."), Text::npos)
            << garbled.toStdString();
}

TEST(ComponentLoader, VariableMovesTheUsersRegistrations)
{
    const QTemporaryDir moved;
    const char* const manifest = R"({ "progId": "Test.Panel", "library": "/%1/panel.so", "interface": 4 })";
    refusal(QString(manifest).arg("home").toUtf8());
    qputenv("PERSONAL_HEALTH_COMPONENTS", moved.path().toUtf8());
    const Text failure = refusal(QString(manifest).arg("moved").toUtf8(), moved.path());
    qunsetenv("PERSONAL_HEALTH_COMPONENTS");
    EXPECT_EQ(failure, L"The panel's library /moved/panel.so no longer exists. Register the panel again.");
}

}
}
