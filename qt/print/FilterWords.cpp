#include "qt/print/FilterWords.h"

#include "control/RecordTypes.h"
#include "toolkit/QtText.h"

#include <QStringList>

namespace health {

using namespace Qt::StringLiterals;

QString filterInWords(const RecordFilter& filter)
{
    QStringList parts;
    if (const QString words = toQString(filter.words).simplified(); !words.isEmpty())
        parts.append(u'"' + words + u'"');
    for (const RecordTypeNumber kind : filter.kinds)
        parts.append(toQString(recordType(kind).rowLabel));
    if (filter.year)
        parts.append(QString::number(*filter.year));
    return parts.join(u", "_s);
}

}
