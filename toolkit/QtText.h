// Texts of the logic as texts of the front end, and back.
#pragma once

#include "api/Text.h"

#include <QString>
#include <QTextDocument>

namespace health {

inline QString toQString(TextView text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

inline Text toText(const QString& text) { return text.toStdWString(); }

// For places that show several lines: the logic's lines end with CR LF.
inline QString toLines(TextView text) { return toQString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

// For tool tips, which would take a text with tags for a page of their own.
inline QString toToolTip(TextView text)
{
    const QString lines = toLines(text);
    return Qt::mightBeRichText(lines) ? QStringLiteral("<p style='white-space:pre'>%1</p>").arg(lines.toHtmlEscaped())
                                      : lines;
}

}
