#pragma once

#include "api/Component.h"

#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

class QLabel;
class QPushButton;

namespace health {

class ClinicalContext;
class FlowLayout;
class SignLabel;

// The selected patient (name, sex, age, birth date, number), the visit, what the panel says about the patient, and the
// buttons that change patient and visit.
class PatientBanner : public QWidget {
    Q_OBJECT
public:
    // Returns what to show about the patient; called when the panels have loaded their lists and when a dialog is
    // closed.
    using ReadAlerts = std::function<std::vector<PatientAlert>()>;

    PatientBanner(ClinicalContext& context, ReadAlerts readAlerts);

Q_SIGNALS:
    void patientWanted();
    void visitWanted();

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeButtons();
    void layOut();
    void refresh();
    void showVisit();
    void showAlerts(const std::vector<PatientAlert>& alerts);

    ClinicalContext& m_context;
    ReadAlerts m_readAlerts;
    QTimer m_alertsDue;
    QLabel* m_name;
    SignLabel* m_visit;
    FlowLayout* m_remarks; // the visit and the alerts
    QList<SignLabel*> m_alerts;
    QPushButton* m_patientButton;
    QPushButton* m_visitButton;
};

}
