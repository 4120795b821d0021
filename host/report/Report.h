#pragma once

#include <QString>
#include <QStringList>

namespace health {

// A report that the host is asked to show.
struct Report {
    QString text; // lines; a form feed begins a page
    QString title;
    QStringList subtitles;
    int lineWidth = 80; // characters
    bool pageNumbers = true;
    bool patientHeading = true;
};

}
