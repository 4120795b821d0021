#pragma once

#include <QFile>
#include <QFileInfo>

namespace health {

// Makes a file that will contain patient data readable by the user only, before anything is written to it and whatever
// the umask or the permissions of an existing file are. Leaves anything but a regular file, such as a pipe, unchanged.
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
