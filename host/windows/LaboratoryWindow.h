#pragma once

#include <QDialog>
#include <QPointer>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QSpinBox;

namespace health {

struct Disturbances;
class DisturbedTransport;

// The active disturbances in words, "normal" without any.
QString describe(const Disturbances& disturbances);

// Disturbs the connection to a server with sample data, for tests and support: delays, losses, garbled and refused
// replies, storms of events. Every change takes effect immediately.
class LaboratoryWindow : public QDialog {
    Q_OBJECT
public:
    LaboratoryWindow(DisturbedTransport& transport, QWidget* parent);

private:
    void setUpFields(QFormLayout& form);
    QSpinBox* makeNumber(int most, int step, const QString& unit);
    QWidget* makeButtons();
    void apply();
    void follow();

    QPointer<DisturbedTransport> m_transport;
    QSpinBox* m_delay;
    QSpinBox* m_loseEvery;
    QCheckBox* m_loseSave;
    QComboBox* m_garbled;
    QComboBox* m_refused;
    QSpinBox* m_events;
    QCheckBox* m_stopped;
    QLabel* m_state;
};

}
