// Conversions between the logic's texts and Qt's. The program is English only: texts are literals and never pass
// through tr().
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

// For widgets of several lines: replaces the logic's line ends, CR LF, by LF.
inline QString toLines(TextView text)
{
    using namespace Qt::StringLiterals;
    return toQString(text).replace("\r\n"_L1, "\n"_L1);
}

// For tool tips: escapes a text that Qt would interpret as HTML.
inline QString toToolTip(TextView text)
{
    using namespace Qt::StringLiterals;
    const QString lines = toLines(text);
    return Qt::mightBeRichText(lines) ? u"<p style='white-space:pre'>%1</p>"_s.arg(lines.toHtmlEscaped()) : lines;
}

}
