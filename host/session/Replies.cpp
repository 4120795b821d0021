#include "host/session/Replies.h"

#include "api/Failure.h"

using namespace Qt::StringLiterals;

namespace health {

QList<QStringList> linesOf(const Text& reply)
{
    const QString text = QString::fromStdWString(reply);
    if (text.startsWith(u'-'))
        throw Failure(text.section(u'^', 1, 1).toStdWString());
    QList<QStringList> lines;
    for (const QString& line : text.split(u"\r\n"_s, Qt::SkipEmptyParts))
        lines.append(line.split(u'^'));
    return lines;
}

}
