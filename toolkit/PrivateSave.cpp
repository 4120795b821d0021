#include "toolkit/PrivateSave.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace health {

using namespace Qt::StringLiterals;

QString pathFault(const QString& path)
{
    const QFileInfo place(path);
    const QString shown = QDir::toNativeSeparators(path);
    if (place.isDir())
        return u"%1 is a folder. Name a file in it."_s.arg(shown);
    if (place.exists() && !place.isFile())
        return u"%1 is not a regular file."_s.arg(shown);
    if (!place.dir().exists())
        return u"The folder %1 does not exist."_s.arg(QDir::toNativeSeparators(place.absolutePath()));
    return {};
}

QString savePrivately(const QString& path, const std::string& bytes)
{
    if (const QString fault = pathFault(path); !fault.isEmpty())
        return fault;
    QSaveFile file(path);
    const auto size = static_cast<qint64>(bytes.size());
    const auto failed = [&] { return u"%1 cannot be written: %2."_s.arg(path, file.errorString()); };
    if (!file.open(QIODevice::WriteOnly))
        return failed();
    // Before there is any content; a replaced file's permissions do not count. Some file systems have none.
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(bytes.data(), size) != size || !file.commit())
        return failed();
    return {};
}

}
