#pragma once

#include "api/Component.h"
#include "host/windows/ListPicker.h"

#include <functional>
#include <map>

class QLabel;
class QPushButton;

namespace health {

class ClinicalContext;

// The host's page for the records that the panel never lists: the current patient's emergency visits. Opens them in the
// panel's form. Follows the patient and the server's events while it is open.
class EmergencyVisits : public QDialog, private ICSS_SessionEvents {
    Q_OBJECT
public:
    // Opens the form of a record of the given visit; an empty record adds one. Returns when the form is closed.
    using Open = std::function<void(const Text& record, const Text& visit)>;

    // The context must outlive the page.
    EmergencyVisits(ClinicalContext& context, Open open, QWidget* parent);
    ~EmergencyVisits() override;

    // Shows the page, or brings it to the front, with the current records. Throws Failure.
    void present();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Record {
        Text number;
        Text visit;
        bool isLocked = false;
    };

    QWidget* makeButtons();
    void EventCallback(TextView name, TextView data) override;
    void RPCCallback(long, TextView) override { }
    void RPCCallbackError(long, long, TextView) override { }
    void followPatient();
    void load();
    void reload();
    void add();
    void edit();
    void openForm(const Record& record);
    void updateButtons();
    Record selected() const;

    ClinicalContext& m_context;
    Open m_open;
    RowList* m_list;
    QLabel* m_patient;
    QLabel* m_remark;
    QPushButton* m_add;
    QPushButton* m_edit;
    std::map<QString, Record> m_records; // by the rows' keys
    Text m_followed; // the event to which the page subscribes
};

}
