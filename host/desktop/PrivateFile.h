#pragma once

#include <QFile>
#include <QFileInfo>

namespace health {

// What the host writes shows patients: the file is the user's alone before anything is in it, whatever the umask says
// and whoever could read a file that stood there before. What is no file, such as a pipe, stays as it is. False when it
// cannot be written.
inline bool makePrivate(const QString& path)
{
    constexpr auto Own = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    const QFileInfo place(path);
    if (place.exists() && !place.isFile())
        return place.isWritable() && !place.isDir();
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly, Own))
        return false;
    file.setPermissions(Own); // some file systems know no permissions
    return true;
}

}
