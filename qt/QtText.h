// Texts of the logic as texts of the front end, and back.
#pragma once

#include "platform/Text.h"

#include <QString>

namespace health {

inline QString toQString(TextView text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

inline Text toText(const QString& text) { return text.toStdWString(); }

// For places that show several lines: the logic's lines end with CR LF.
inline QString toLines(TextView text) { return toQString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

}
