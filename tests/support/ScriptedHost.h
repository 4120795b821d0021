// A host without screen and server. Tests script its replies and read which calls were made and what was shown.
#pragma once

#include "api/Failure.h"
#include "api/host.h"
#include "platform/Desktop.h"
#include "platform/Form.h"
#include "platform/Menu.h"
#include "shared/modShared.h"

#include <deque>
#include <functional>
#include <map>
#include <ostream>
#include <set>
#include <vector>

// GoogleTest prints wide texts with this.
namespace std {
inline ostream& operator<<(ostream& out, const wstring& text) { return out << health::narrow(text); }
}

namespace health::test {

// What happened, in order, one line each: "call NAME(PARAMETER)", "box [TITLE] TEXT", "status TEXT", ...
using Transcript = std::vector<Text>;

// For tests with a ScriptedHost `host`: the lines that begin with these words are exactly those that follow.
#define EXPECT_LINES(beginnings, ...) EXPECT_EQ(host.lines(beginnings), (health::test::Transcript { __VA_ARGS__ }))
#define EXPECT_CALLS(...) EXPECT_LINES(L"call |list ", __VA_ARGS__)
#define EXPECT_BOXES(...) EXPECT_LINES(L"box ", __VA_ARGS__)

// The box that reports a failure in a module's procedure, such as L"frmTxc at LoadTXC".
inline Text failureBox(TextView place, TextView description)
{
    return L"box [System Error] Error in module " + Text(place) + L"\r\n\r\n" + Text(description);
}

class ScriptedDesktop : public Desktop {
public:
    explicit ScriptedDesktop(Transcript& transcript)
        : m_transcript(transcript)
    {
    }

    std::deque<BoxAnswer> answers; // for the next boxes; afterwards Ok, or No to a question
    std::vector<int> styles; // of the boxes shown
    EditHandle lastEdited = nullptr; // got the latest edit message
    std::function<void()> whileBoxIsOpen;
    Moment today = momentOf(2026, 3, 15, 9, 30);
    Menu* lastMenu = nullptr;

    BoxAnswer messageBox(TextView text, int style, TextView title) override;
    void setPointer(Pointer pointer) override;
    void processPendingEvents() override { m_transcript.push_back(L"pending events"); }
    void sendEditMessage(EditHandle edit, int message, long first, const int* value) override;
    Moment now() const override { return today; }
    void load(Form& form) override;
    void unload(Form& form) override;
    void popUp(Menu& menu) override { lastMenu = &menu; }
    void showModal(Form& form) override;

    // What the user does in the next forms, one function a form; a form without one is closed immediately.
    std::deque<std::function<void(Form&)>> inForms;

private:
    Transcript& m_transcript;
};

struct ScriptedPatient : Patient {
    long patientNumber = 0;
    Text patientSex = L"F";
    Text patientAge = L"30";
    Text shownName; // as a form's heading has it
    int prompts = 0;
    bool fails = false;
    bool failsSex = false;

    long number() const override
    {
        if (fails)
            throw Failure(L"The host is gone.");
        return patientNumber;
    }
    Text sex() const override { return failsSex ? throw Failure(L"The sex is not known.") : patientSex; }
    Text age() const override { return patientAge; }
    Text displayName() const override { return shownName; }
    Text born;
    Text birthDate() const override { return born; }
    bool isSelected() const override { return patientNumber != 0; }
    void select() override { ++prompts; }
};

struct ScriptedUser : User {
    std::set<Text> keys;
    bool fails = false;

    long number() const override { return 71; }
    Text name() const override { return L"SORREL,ADA"; }
    Text hasKeys(TextView keyNames) const override;
};

struct ScriptedSite : Site {
    long number() const override { return 5; }
    Text name() const override { return L"WILLOW CREEK"; }
    Text zone; // of all times
    Text url;
    Text identifiers() const override { return url; }
    Text zoneOffset(Moment) const override { return zone; }
};

struct ScriptedEncounter : Encounter {
    long visit = 0;
    bool usable = true;
    std::vector<int> preparations; // flags asked for
    std::vector<int> promptKinds;
    bool fails = false;
    Text shown; // as a form's heading has it
    bool opensVisit = true; // lets the user pick a visit when none is active

    long visitNumber() const override
    {
        if (fails)
            throw Failure(L"The host is gone.");
        return visit;
    }
    bool isValid() const override { return visit != 0; }
    Text displayText() const override { return shown; }
    bool prepare(int flags) override
    {
        preparations.push_back(flags);
        return usable && (opensVisit || flags != 44);
    }
    void prompt(int kind) override { promptKinds.push_back(kind); }
};

struct ScriptedPrint : PrintPreview {
    explicit ScriptedPrint(Transcript& shared)
        : transcript(shared)
    {
    }
    Transcript& transcript;
    bool fails = false;

    std::function<void(Printout& pages)> onPages; // empty: a host that cannot show pages

    void preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2, TextView subtitle3,
        int lineWidth, bool pageNumbers, bool patientHeading) override;
    bool previewPages(Printout& pages) override
    {
        if (onPages)
            onPages(pages);
        return onPages != nullptr;
    }
};

// Answers each call from its script. A call without a reply in the script gets an empty one.
class ScriptedSession : public Session {
public:
    explicit ScriptedSession(Transcript& transcript)
        : m_transcript(transcript)
    {
    }

    // The reply to the next and all later calls of a name, for one parameter or for any.
    void reply(TextView name, TextView text) { m_replies[Text(name)] = text; }
    void reply(TextView name, TextView parameter, TextView text)
    {
        m_replies[Text(name) + L"(" + Text(parameter) + L")"] = text;
    }
    // Calls of this name fail with this description.
    void failCall(TextView name, TextView description) { m_failures[Text(name)] = description; }
    // Calls of this name lose the server.
    Text losesServerAt;

    // Notifies the subscribers by name, as a server does.
    void push(TextView name, TextView data = {});
    // Called inside each call.
    std::function<void()> duringCalls;
    // Notifies every subscriber, once for each of its subscriptions, whatever their names.
    void pushToAll(TextView name);
    // Subscribed names in their order, each followed by a blank, once for each sink.
    Text subscriptions() const;

    std::map<Text, std::shared_ptr<HostObject>> objects;
    std::map<Text, Text> values;
    bool connected = true;
    bool failsEvents = false;
    bool failsSubscriptions = false;

    // The calls announced by the latest hint.
    Transcript expected;

    void expectCalls(std::span<const ExpectedCall> calls) override
    {
        if (calls.empty())
            return;
        expected.clear();
        for (const ExpectedCall& c : calls)
            expected.push_back(
                (c.form == ExpectedCall::Form::OneText ? L"call " : L"list ") + c.name + L"(" + c.parameter + L")");
    }
    Text callText(TextView name, TextView parameter) override { return call(name, parameter, L"call "); }
    Text callList(TextView name, TextView parameter) override { return call(name, parameter, L"list "); }
    void abortRequest(long handle) override { m_transcript.push_back(L"abort " + std::to_wstring(handle)); }
    void registerEvent(TextView name, ICSS_SessionEvents& sink) override;
    void unregisterEvent(TextView name, ICSS_SessionEvents& sink) override;
    void raiseEvent(TextView name, TextView data) override;
    std::optional<Text> value(TextView key) const override;
    void setValue(TextView key, TextView value) override { values[Text(key)] = value; }
    bool isConnected() const override { return connected; }
    void connect(TextView server) override;
    std::shared_ptr<HostObject> object(TextView progId) override;

private:
    Text call(TextView name, TextView parameter, TextView kind);

    Transcript& m_transcript;
    std::map<Text, Text> m_replies;
    std::map<Text, Text> m_failures;
    std::set<std::pair<Text, ICSS_SessionEvents*>> m_sinks;
};

// All of them, with a patient of 30 years and a provider signed on.
class ScriptedHost : public Host {
public:
    ScriptedHost();

    Transcript transcript;
    ScriptedDesktop desktop { transcript };
    std::shared_ptr<ScriptedSession> session = std::make_shared<ScriptedSession>(transcript);
    std::shared_ptr<Session> given; // to the panel, instead of the scripted session
    std::shared_ptr<ScriptedPatient> patient = std::make_shared<ScriptedPatient>();
    std::shared_ptr<ScriptedUser> user = std::make_shared<ScriptedUser>();
    std::shared_ptr<ScriptedSite> site = std::make_shared<ScriptedSite>();
    std::shared_ptr<ScriptedEncounter> encounter = std::make_shared<ScriptedEncounter>();
    std::shared_ptr<ScriptedPrint> print = std::make_shared<ScriptedPrint>(transcript);
    int managers = 0; // made so far

    std::unique_ptr<HostManager> createManager() override;

    // The lines of the transcript that begin with one of the words, such as L"box|show".
    Transcript lines(TextView beginnings) const;
    Transcript calls() const { return lines(L"call |list "); }
    Transcript boxes() const { return lines(L"box "); }
};

}
