// The selected patient and visit.
#pragma once

#include <QDate>
#include <QString>

namespace health {

struct PatientData {
    long number = 0; // 0: none is selected
    QString name; // as stored
    QString sex;
    QString birthDate; // FileMan
    QDate birth; // the earliest date that an inexact birth date can mean
};

struct VisitData {
    long number = 0; // 0: none is selected
    QString date; // FileMan
    QString location;
};

}
