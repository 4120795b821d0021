#pragma once

#include <QString>

#include <string>

namespace health {

// Why bytes cannot be saved under a path that is not a regular file or lies in no folder: a sentence for the user;
// empty if nothing is wrong so far.
QString pathFault(const QString& path);

// Saves patients' data in a file that only the user can read, even if it replaces one that others could. The file is
// complete or unchanged. Returns a sentence for the user why it failed; empty if it succeeded.
QString savePrivately(const QString& path, const std::string& bytes);

}
