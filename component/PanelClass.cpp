#include "component/PanelClass.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/PanelView.h"
#include "qt/QtDesktop.h"
#include "qt/TakeAlong.h"
#include "records/PatientAlerts.h"

namespace health {

class PanelClass::Instance : public ComponentInstance {
public:
    Instance(PanelClass& panelClass, Host& host)
        : m_class(panelClass)
        , m_control(*panelClass.m_shared, host)
    {
        ++m_class.m_instances;
        m_control.UserControl_Initialize();
        m_view = std::make_unique<PanelView>(m_control, *panelClass.m_desktop);
    }

    ~Instance() override
    {
        m_control.UserControl_Terminate();
        m_view.reset();
        --m_class.m_instances;
    }

    QWidget* widget() override { return m_view.get(); }
    ICSS_PatientEvents& patientEvents() override { return m_control.patientEvents(); }
    ICSS_EncounterEvents& encounterEvents() override { return m_control.encounterEvents(); }
    void openRecord(int type, const Text& record, const Text& visit) override
    {
        m_control.OpenRecord(type, record, visit);
    }
    void reopenEntry() override { m_class.m_shared->reopenEntry(); }
    Text viewState() const override { return viewStateText(m_view->viewState()); }
    void setViewState(const Text& state) override { m_view->setViewState(viewStateOf(state, m_view->viewState())); }
    std::vector<PatientAlert> alerts() const override
    {
        if (!m_control.fgData.isDrawing()) // the list is loading
            return {};
        const Text patient = std::to_wstring(m_control.listedPatient());
        return patientAlerts(
            listedRecords(m_control), m_class.m_desktop->now(), m_class.m_shared->registryDue(patient));
    }
    std::vector<ExportedFile> exportRecords(ExportFormat format) const override
    {
        return m_view->takeAlong().files(format);
    }
    std::vector<std::vector<Text>> rows() const override;

private:
    PanelClass& m_class;
    kalmevRepHistCtrl m_control;
    std::unique_ptr<PanelView> m_view;
};

std::vector<std::vector<Text>> PanelClass::Instance::rows() const
{
    const Grid& grid = m_control.fgData;
    std::vector<std::vector<Text>> rows;
    for (int row = 0; grid.isDrawing() && row < grid.rowCount(); ++row) {
        auto& texts = rows.emplace_back();
        for (int column = 0; column < grid.columnCount(); ++column) {
            if (!grid.column(column).hidden)
                texts.emplace_back(grid.text(row, column));
        }
    }
    return rows;
}

PanelClass::PanelClass()
    : m_desktop(std::make_unique<QtDesktop>())
    , m_shared(std::make_unique<modShared>(*m_desktop))
{
}

PanelClass::~PanelClass() = default;

std::unique_ptr<ComponentInstance> PanelClass::create(Host& host) { return std::make_unique<Instance>(*this, host); }

}
