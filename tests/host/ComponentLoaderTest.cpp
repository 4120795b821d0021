#include "host/framework/ComponentLoader.h"
#include "api/Failure.h"
#include "tests/support/ScriptedHost.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace health::test {
namespace {

// The error for a manifest; the library itself is not read.
Text refusal(const QByteArray& manifest)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/personal-health/components");
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
    const QByteArray good = R"({ "progId": "Test.Panel", "library": "/nowhere/panel.so", "interface": 2 })";
    EXPECT_EQ(refusal(good), L"The panel's library /nowhere/panel.so is not there any more. Register the panel again.");
    for (const QByteArray& old :
        { QByteArray(good).replace("2", "3"), QByteArray(good).replace(", \"interface\": 2", "") })
        EXPECT_NE(refusal(old).find(L" is of another version (interface "), Text::npos) << old.toStdString();
    for (const QByteArray& garbled : { good.left(20), QByteArray(), QByteArray(good).replace("Test.Panel", "Other") })
        EXPECT_NE(refusal(garbled).find(L"cannot be read. Register the panel again."), Text::npos)
            << garbled.toStdString();
}

}
}
