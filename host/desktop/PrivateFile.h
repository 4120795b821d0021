#pragma once

#include <QFile>
#include <QFileInfo>

namespace health {

// Makes a file readable by the user only, before patient data are written to it. The umask and the permissions of an
// existing file do not matter. Leaves anything but a regular file, such as a pipe, unchanged.
// False if it cannot be written.
inline bool makePrivate(const QString& path)
{
    constexpr auto Own = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    const QFileInfo place(path);
    if (place.exists() && !place.isFile())
        return place.isWritable() && !place.isDir();
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly, Own))
        return false;
    file.setPermissions(Own); // the result is ignored: some file systems have no permissions
    return true;
}

}
