// A small host of the Personal Health panel, with one invented patient and a "server" of canned replies. Prints the
// rows of the panel's list: minimal-host [MANIFEST]. host-guide.md explains it.
#include "api/Component.h"
#include "api/Events.h"
#include "api/Failure.h"
#include "api/ProgIds.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QStandardPaths>
#include <QWidget>

#include <iostream>
#include <map>
#include <set>

using namespace health;

namespace {

// --- The objects that the session hands out ---

struct MinimalPatient : Patient {
    long selected = 0;
    long number() const override { return selected; }
    Text sex() const override { return selected ? L"F" : L""; }
    Text age() const override { return selected ? L"34" : L""; }
    bool isSelected() const override { return selected != 0; }
    void select() override { }
};

struct MinimalUser : User {
    long number() const override { return 1; }
    Text name() const override { return L"EXAMPLE,ERNESTINE"; }
    // Holds every key.
    Text hasKeys(TextView keyNames) const override
    {
        Text held = L"1";
        for (const wchar_t letter : keyNames)
            held += letter == L'^' ? L"^1" : L"";
        return held;
    }
};

struct MinimalSite : Site {
    long number() const override { return 1; }
    Text name() const override { return L"EXAMPLE CLINIC"; }
};

struct MinimalEncounter : Encounter {
    long visitNumber() const override { return 0; }
    bool isValid() const override { return false; }
    bool prepare(int) override { return false; }
    void prompt(int) override { }
};

struct MinimalPreview : PrintPreview {
    void preview(TextView report, TextView, TextView, TextView, TextView, int, bool, bool) override
    {
        std::cout << narrow(report);
    }
};

// --- The session ---

struct MinimalSession : Session {
    std::map<Text, Text> replies; // by the name of the call; other calls get an empty reply
    std::map<Text, std::shared_ptr<HostObject>> objects; // by ProgID
    std::set<std::pair<Text, ICSS_SessionEvents*>> sinks; // with the names of their events
    std::map<Text, Text> values;

    Text callText(TextView name, TextView) override { return replies[Text(name)]; }
    Text callList(TextView name, TextView) override { return replies[Text(name)]; }
    void abortRequest(long) override { }

    void registerEvent(TextView name, ICSS_SessionEvents& sink) override { sinks.emplace(name, &sink); }
    void unregisterEvent(TextView name, ICSS_SessionEvents& sink) override { sinks.erase({ Text(name), &sink }); }
    void raiseEvent(TextView name, TextView data) override
    {
        if (name == StatusEvent && !data.empty())
            std::cerr << narrow(data) << '\n';
        for (const auto& entry : std::set(sinks)) { // a copy: an EventCallback may unregister sinks
            const auto& [registered, sink] = entry;
            if (sinks.contains(entry) && (name == registered || name.starts_with(registered + L".")))
                sink->EventCallback(name, data);
        }
    }

    std::optional<Text> value(TextView key) const override
    {
        const auto found = values.find(Text(key));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void setValue(TextView key, TextView value) override { values[Text(key)] = value; }

    bool isConnected() const override { return true; }
    void connect(TextView) override { }
    std::shared_ptr<HostObject> object(TextView progId) override { return objects[Text(progId)]; }
};

struct MinimalManager : HostManager {
    std::shared_ptr<Session> handedOut;
    std::shared_ptr<Session> session() override { return handedOut; }
};

struct MinimalHost : Host {
    std::shared_ptr<MinimalSession> session = std::make_shared<MinimalSession>();
    std::shared_ptr<MinimalPatient> patient = std::make_shared<MinimalPatient>();

    MinimalHost()
    {
        session->objects[Text(ApplicationProgId)] = std::make_shared<HostApplication>();
        session->objects[Text(PatientProgId)] = patient;
        session->objects[Text(UserProgId)] = std::make_shared<MinimalUser>();
        session->objects[Text(SiteProgId)] = std::make_shared<MinimalSite>();
        session->objects[Text(EncounterProgId)] = std::make_shared<MinimalEncounter>();
        session->objects[Text(PrintProgId)] = std::make_shared<MinimalPreview>();
        session->replies = {
            { L"MEVUTL CHKSEC", L"1|0|0|1^0~" },
            { L"MEVREP GET", L"G2P1LC1SA0TA0^03/01/2026^CONDOMS^02/14/2025^^" },
            { L"MEVVTXC GET", L"4^0^03/10/2026@09:30|88^PAIN|1^03/10/2026^EXAMPLE,ERNESTINE|1\r\n" },
        };
    }
    std::unique_ptr<HostManager> createManager() override
    {
        auto manager = std::make_unique<MinimalManager>();
        manager->handedOut = session;
        return manager;
    }
};

// --- Loading and showing the panel ---

ComponentClass& loadPanel(const QString& manifestPath)
{
    QFile file(manifestPath);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(L"Cannot read the manifest " + manifestPath.toStdWString());
    const QJsonObject manifest = QJsonDocument::fromJson(file.readAll()).object();
    if (manifest["interface"].toInt(1) != ComponentInterface)
        throw Failure(L"The panel was built for another interface than this host.");
    QLibrary library(QFileInfo(manifestPath).dir().absoluteFilePath(manifest["library"].toString()));
    const auto classObject =
        reinterpret_cast<ComponentGetClassObjectFunction*>(library.resolve(ComponentGetClassObjectName));
    ComponentClass* const panel = classObject ? classObject(PanelProgId) : nullptr;
    if (!panel)
        throw Failure(L"Cannot load the panel: " + library.errorString().toStdWString());
    return *panel;
}

void selectPatient(MinimalHost& host, ComponentInstance& panel, long number)
{
    if (panel.patientEvents().Pending())
        return panel.patientEvents().Canceled();
    host.patient->selected = number;
    panel.patientEvents().Committed();
    panel.encounterEvents().Committed();
}

void printRows(const ComponentInstance& panel)
{
    for (const std::vector<Text>& row : panel.rows()) {
        for (const Text& text : row)
            std::cout << narrow(text) << '\t';
        std::cout << '\n';
    }
}

}

int main(int argc, char** argv)
try {
    const QApplication application(argc, argv);
    const QString installed = QStandardPaths::locate(
        QStandardPaths::GenericDataLocation, QString("personal-health/components/%1.json").arg(PanelProgId));
    MinimalHost host;
    const auto panel = loadPanel(argc > 1 ? QString::fromLocal8Bit(argv[1]) : installed).create(host);
    panel->widget()->show(); // as a window of its own
    selectPatient(host, *panel, 12);
    printRows(*panel);

    // Another session records a refusal of patient 12, and the server raises the event.
    host.session->replies[L"MEVREF GET"] = L"9^^^IMMUNIZATION^5^INFLUENZA^^^3260312^0^^Next week\r\n";
    host.session->raiseEvent(Text(RefusalsEventPrefix) + L"12.REF", L"");
    printRows(*panel);
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
