#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace health {

class ClinicalContext;

// The selected patient (name, number, sex, age) and visit, and the buttons that change them.
class PatientBanner : public QFrame {
    Q_OBJECT
public:
    PatientBanner(ClinicalContext& context, QWidget* parent);

Q_SIGNALS:
    void patientWanted();
    void visitWanted();

protected:
    void changeEvent(QEvent* event) override;

private:
    void refresh();

    ClinicalContext& m_context;
    QLabel* m_name;
    QLabel* m_details;
    QLabel* m_visit;
    QPushButton* m_visitButton;
};

}
