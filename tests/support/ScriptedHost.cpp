#include "tests/support/ScriptedHost.h"

#include <algorithm>
#include <iterator>

namespace health::test {

BoxAnswer ScriptedDesktop::messageBox(TextView text, int style, TextView title)
{
    m_transcript.push_back(L"box [" + Text(title) + L"] " + Text(text));
    styles.push_back(style);
    if (whileBoxIsOpen)
        std::exchange(whileBoxIsOpen, nullptr)();
    if (answers.empty())
        return style & BoxStyle::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
    const BoxAnswer answer = answers.front();
    answers.pop_front();
    return answer;
}

void ScriptedDesktop::setPointer(Pointer pointer)
{
    m_transcript.push_back(L"pointer " + std::to_wstring(static_cast<int>(pointer)));
}

void ScriptedDesktop::sendEditMessage(EditHandle edit, int message, long first, const int* value)
{
    lastEdited = edit;
    m_transcript.push_back(
        L"edit " + std::to_wstring(message) + L" " + std::to_wstring(first) + L" " + std::to_wstring(*value));
}

void ScriptedDesktop::load(Form& form) { m_transcript.push_back(L"load " + form.name()); }

void ScriptedDesktop::unload(Form& form) { m_transcript.push_back(L"unload " + form.name()); }

void ScriptedDesktop::showModal(Form& form)
{
    m_transcript.push_back(L"show " + form.name());
    form.load();
    form.open();
    form.Form_Activate();
    if (!inForms.empty()) {
        const auto act = std::move(inForms.front());
        inForms.pop_front();
        act(form);
    }
    m_transcript.push_back((form.isOpen() ? L"left open " : L"closed ") + form.name());
    form.close();
}

Text ScriptedUser::hasKeys(TextView keyNames) const
{
    if (fails)
        throw Failure(L"The user object is gone.");
    Text answer;
    for (const Text& key : SplitPieces(keyNames, L"^", 0))
        answer += (answer.empty() ? L"" : L"^") + Text(keys.contains(key) ? L"1" : L"0");
    return answer;
}

void ScriptedPrint::preview(TextView report, TextView title, TextView subtitle1, TextView subtitle2, TextView subtitle3,
    int lineWidth, bool pageNumbers, bool patientHeading)
{
    if (fails)
        throw Failure(L"No printer object.");
    transcript.push_back(L"preview [" + Text(title) + L"|" + Text(subtitle1) + L"|" + Text(subtitle2) + L"|"
        + Text(subtitle3) + L"|" + std::to_wstring(lineWidth) + L"|" + std::to_wstring(pageNumbers)
        + std::to_wstring(patientHeading) + L"] " + Text(report));
}

Text ScriptedSession::call(TextView name, TextView parameter, TextView kind)
{
    const Text line = Text(name) + L"(" + Text(parameter) + L")";
    m_transcript.push_back(Text(kind) + line);
    if (duringCalls)
        duringCalls();
    if (name == losesServerAt)
        throw ConnectionGone(L"The server is gone.");
    if (const auto failure = m_failures.find(Text(name)); failure != m_failures.end())
        throw Failure(failure->second);
    for (const Text& key : { line, Text(name) }) {
        if (const auto found = m_replies.find(key); found != m_replies.end())
            return found->second;
    }
    return {};
}

void ScriptedSession::push(TextView name, TextView data)
{
    for (const auto& [subscribed, sink] : std::set(m_sinks)) {
        if (name == subscribed || name.starts_with(subscribed + L"."))
            sink->EventCallback(name, data);
    }
}

void ScriptedSession::pushToAll(TextView name)
{
    for (const auto& [subscribed, sink] : std::set(m_sinks))
        sink->EventCallback(name, L"");
}

Text ScriptedSession::subscriptions() const
{
    Text names;
    for (const auto& [name, sink] : m_sinks)
        names += name + L" ";
    return names;
}

void ScriptedSession::registerEvent(TextView name, ICSS_SessionEvents& sink)
{
    if (failsSubscriptions)
        throw Failure(L"No subscriptions today.");
    m_transcript.push_back(L"register " + Text(name));
    m_sinks.insert({ Text(name), &sink });
}

void ScriptedSession::unregisterEvent(TextView name, ICSS_SessionEvents& sink)
{
    m_transcript.push_back(L"unregister " + Text(name));
    if (failsSubscriptions)
        throw Failure(L"No subscriptions today.");
    m_sinks.erase({ Text(name), &sink });
}

void ScriptedSession::raiseEvent(TextView name, TextView data)
{
    if (failsEvents)
        throw Failure(L"No events today.");
    m_transcript.push_back((name == L"STATUS" ? L"status " : L"event " + Text(name) + L" ") + Text(data));
}

std::optional<Text> ScriptedSession::value(TextView key) const
{
    const auto found = values.find(Text(key));
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

void ScriptedSession::connect(TextView server)
{
    m_transcript.push_back(L"connect '" + Text(server) + L"'");
    connected = true;
}

std::shared_ptr<HostObject> ScriptedSession::object(TextView progId)
{
    m_transcript.push_back(L"object " + Text(progId));
    const auto found = objects.find(Text(progId));
    return found == objects.end() ? nullptr : found->second;
}

ScriptedHost::ScriptedHost()
{
    session->objects = {
        { L"DRN_VIM.VIM", std::make_shared<HostApplication>() },
        { L"CSS_Patient.Patient", patient },
        { L"CSS_User.User", user },
        { L"CSS_Site.Site", site },
        { L"CSS_Encounter.Encounter", encounter },
        { L"zvPrint.zvPrintX", print },
    };
    session->reply(L"MEVUTL CHKSEC", L"1|0|0|0^0~");
}

std::unique_ptr<HostManager> ScriptedHost::createManager()
{
    struct Manager : HostManager {
        std::shared_ptr<Session> session() override { return opened; }
        std::shared_ptr<Session> opened;
    };
    ++managers;
    auto manager = std::make_unique<Manager>();
    manager->opened = given ? given : session;
    return manager;
}

Transcript ScriptedHost::lines(TextView beginnings) const
{
    const auto words = SplitPieces(beginnings, L"|", 0);
    Transcript found;
    std::ranges::copy_if(transcript, std::back_inserter(found), [&](const Text& line) {
        return std::ranges::any_of(words, [&](const Text& word) { return line.starts_with(word); });
    });
    return found;
}

}
