#include "qt/TakeAlong.h"

#include "api/Failure.h"
#include "control/kalmevRepHistCtrl.h"
#include "qt/ExportDialog.h"
#include "qt/PublishedAction.h"
#include "qt/RecordCopy.h"
#include "qt/ShownRecords.h"
#include "qt/print/FilterWords.h"
#include "records/ListExport.h"
#include "toolkit/Announcer.h"
#include "toolkit/PrivateSave.h"
#include "toolkit/QtText.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr TextView ExportTitle = L"Export";

QString records(int count) { return u"%1 record%2"_s.arg(count).arg(count == 1 ? QString() : u"s"_s); }

}

TakeAlong::TakeAlong(QWidget& panel, ShownRecords& records)
    : QObject(&panel)
    , m_panel(panel)
    , m_records(records)
    , m_copies { add(u"Copy with &Kind and Date"_s, "Edit", &TakeAlong::copySelected),
        add(u"Copy All &Shown"_s, "Edit", &TakeAlong::copyShown) }
    , m_exports { add(u"Export as &FHIR..."_s, "File", &TakeAlong::exportFhir),
        add(u"Export as &CSV..."_s, "File", &TakeAlong::exportCsv) }
{
    m_copies.front()->setShortcut(QKeySequence(u"Ctrl+Shift+C"_s));
    for (const auto signal : { &ShownRecords::reloaded, &ShownRecords::rearranged, &ShownRecords::selectionChanged })
        connect(&records, signal, this, &TakeAlong::enable);
    enable();
}

QAction* TakeAlong::add(const QString& caption, const char* menu, void (TakeAlong::*work)())
{
    auto* const action = new QAction(caption, this);
    connect(action, &QAction::triggered, this, work);
    publish(m_panel, *action, menu);
    return action;
}

void TakeAlong::enable()
{
    const bool shown = !m_records.rows().empty();
    m_copies.front()->setEnabled(m_records.selected() != -1);
    m_copies.back()->setEnabled(shown);
    for (QAction* const action : m_exports)
        action->setEnabled(shown);
}

// --- Copying ---

void TakeAlong::copySelected()
{
    if (const int count = copySelectedRecord(m_records))
        report(records(count) + u" copied."_s);
}

void TakeAlong::copyShown()
{
    if (const int count = copyShownRecords(m_records))
        report(records(count) + u" copied."_s);
}

// --- Exporting ---

ListExport TakeAlong::listExport() const { return { m_records.control(), m_records.all(), m_records.rows() }; }

// "12 records", or with a filter "3 of 12 records, filtered by Asthma Status".
QString TakeAlong::extent(const ListExport& exported) const
{
    const QString count = toQString(exported.records().extent());
    return m_records.isFiltered() ? count + u", filtered by "_s + filterInWords(m_records.filter()) : count;
}

std::vector<ExportedFile> TakeAlong::files(ExportFormat format) const
{
    const ListExport exported = listExport();
    if (!exported.records().remark.empty())
        throw Failure(L"Nothing was exported, because the list is incomplete. " + exported.records().remark);
    return exported.files(format);
}

// While the dialogs are open the list may be loaded again: what is saved is what the list shows afterwards, and the
// report says how many records these are.
void TakeAlong::exportAs(ExportFormat format)
{
    m_records.control().shared().trap(L"TakeAlong", L"Export", [&] {
        const ListExport before = listExport();
        if (!before.isPossible())
            return;
        ExportDialog dialog(format, extent(before), toQString(before.records().remark), m_panel.window());
        if (dialog.exec() != QDialog::Accepted)
            return;
        if (const QString chosen = place(format, listExport().files(format)); !chosen.isEmpty())
            save(format, dialog.choices(), chosen);
    });
}

// The file or folder that the user chooses; empty without one.
QString TakeAlong::place(ExportFormat format, const std::vector<ExportedFile>& files)
{
    if (files.empty())
        return {};
    if (format == ExportFormat::Fhir)
        return QFileDialog::getSaveFileName(m_panel.window(), u"Export as FHIR"_s,
            QDir::home().filePath(toQString(files.front().name)), u"FHIR in JSON (*.json)"_s);
    const QString folder =
        QFileDialog::getExistingDirectory(m_panel.window(), u"Export as CSV into a Folder"_s, QDir::homePath());
    return folder.isEmpty() || !mayReplace(folder, files) ? QString() : folder;
}

bool TakeAlong::mayReplace(const QString& folder, const std::vector<ExportedFile>& files)
{
    QStringList existing;
    for (const ExportedFile& file : files) {
        if (QDir(folder).exists(toQString(file.name)))
            existing.append(toQString(file.name));
    }
    Text title(ExportTitle);
    return existing.isEmpty()
        || m_records.control().shared().ConfirmBox(
            toText(u"These files exist already. Replace them?\r\n\r\n"_s + existing.join(u"\r\n"_s)), title);
}

void TakeAlong::save(ExportFormat format, FhirChoices choices, const QString& place)
{
    const ListExport exported = listExport();
    const std::vector<ExportedFile> files = exported.files(format, choices);
    if (files.empty())
        return refuse(u"Nothing was exported, because the list shows no records any more."_s);
    for (const ExportedFile& file : files) {
        const QString path = format == ExportFormat::Fhir ? place : QDir(place).filePath(toQString(file.name));
        if (const QString fault = savePrivately(path, file.bytes); !fault.isEmpty())
            return refuse(fault);
    }
    report(u"%1 exported to %2."_s.arg(extent(exported), QDir::toNativeSeparators(place)));
}

void TakeAlong::refuse(const QString& text) { m_records.control().shared().ErrorBox(toText(text), ExportTitle); }

// Success: in the status line, and spoken.
void TakeAlong::report(const QString& text)
{
    m_records.control().shared().SetStatusText(toText(text));
    announce(m_panel, text);
}

}
