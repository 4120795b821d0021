#include "toolkit/PrivateSave.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace health::test {
namespace {

int modeOf(const QString& path)
{
    struct stat status { };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 0777) : -1;
}

TEST(PrivateSave, ReplacesAFileThatOthersCouldRead)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("export.json");
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("a longer old content");
    old.close();
    ::chmod(QFile::encodeName(path).constData(), 0666);
    EXPECT_EQ(savePrivately(path, "new"), QString());
    EXPECT_EQ(modeOf(path), 0600);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "new");
    EXPECT_EQ(savePrivately(folder.filePath("other"), ""), QString());
    EXPECT_EQ(modeOf(folder.filePath("other")), 0600);
}

TEST(PrivateSave, RefusesWhatIsNotAFile)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_TRUE(savePrivately(pipe, "x").endsWith("is not a regular file."));
    EXPECT_TRUE(savePrivately("/dev/null", "x").endsWith("is not a regular file."));
    EXPECT_TRUE(savePrivately(folder.path(), "x").contains("is a folder."));
    EXPECT_TRUE(savePrivately(folder.filePath("none/x"), "x").endsWith("does not exist."));
    EXPECT_TRUE(QFileInfo::exists("/dev/null"));
}

}
}
