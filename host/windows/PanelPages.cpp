#include "host/windows/PanelPages.h"

#include "api/Failure.h"
#include "api/ProgIds.h"
#include "host/framework/ClinicalContext.h"
#include "host/framework/ComponentLoader.h"

#include <QApplication>
#include <QLabel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace health {

namespace {

QString oneLine(QString text) { return text.replace(u'\n', u' ').replace(u'\r', u' ').replace(u'\t', u' '); }

}

PanelPages::PanelPages(ClinicalContext& context, ViewMemory memory)
    : m_context(context)
    , m_memory(memory)
{
    setChildrenCollapsible(false);
    setAccessibleName(u"Panels"_s);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focused) { noteFocus(focused); });
    connect(&context, &ClinicalContext::patientCommitted, this, &PanelPages::focusRecords);
}

PanelPages::~PanelPages() { dropAll(); }

void PanelPages::add()
{
    if (!mayAdd())
        return;
    Panel panel;
    panel.page = load(panel);
    QWidget* const page = panel.page;
    m_panels.push_back(std::move(panel));
    page->hide();
    addWidget(page);
    Q_EMIT countChanged();
    if (isVisible())
        showPages();
}

// A panel starts to work when it is first shown, and may show a box then. The box must not run an event loop inside the
// window's own show event, so the pages are shown later, from the event loop.
void PanelPages::showEvent(QShowEvent* event)
{
    QSplitter::showEvent(event);
    QMetaObject::invokeMethod(this, &PanelPages::showPages, Qt::QueuedConnection);
}

void PanelPages::showPages()
{
    QList<QPointer<QWidget>> pages;
    for (const Panel& panel : m_panels)
        pages.append(panel.page);
    for (const QPointer<QWidget>& page : pages) {
        if (page)
            page->show();
    }
    refresh(); // synchronously, not in the next turn of the event loop
    if (m_context.patient().number != 0 && !isAncestorOf(window()->focusWidget()))
        focusRecords();
}

void PanelPages::noteFocus(QWidget* focused)
{
    for (const Panel& panel : m_panels) {
        if (!panel.page || !panel.page->isAncestorOf(focused) || m_lastFocused == panel.page)
            continue;
        m_lastFocused = panel.page;
        Q_EMIT currentChanged();
    }
}

QWidget* PanelPages::current() const
{
    if (m_lastFocused && isAncestorOf(m_lastFocused))
        return m_lastFocused;
    return m_panels.empty() ? nullptr : m_panels.front().page.data();
}

void PanelPages::focusRecords()
{
    if (QWidget* const page = current())
        page->setFocus();
}

QWidget* PanelPages::load(Panel& panel)
{
    try {
        panel.component = loadComponentClass(QString::fromLatin1(PanelProgId)).create(m_context);
        if (!panel.component || !panel.component->widget())
            throw Failure(L"The panel library did not create a panel. Reinstall it.");
        panel.component->setViewState(m_memory.viewAt(m_panels.size()));
        m_context.add(*panel.component);
        return panel.component->widget();
    } catch (...) {
        panel.component.reset();
        m_failure = QString::fromStdWString(describeCurrentFailure());
        return messagePage(m_failure);
    }
}

QWidget* PanelPages::messagePage(const QString& text)
{
    auto* const message = new QLabel(text);
    message->setTextFormat(Qt::PlainText);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    message->setWordWrap(true);
    message->setAlignment(Qt::AlignCenter);
    message->setMargin(message->fontMetrics().height());
    return message;
}

void PanelPages::drop(Panel& panel)
{
    if (panel.page)
        panel.page->setParent(nullptr); // before its instance is destroyed
    if (panel.component)
        m_context.remove(*panel.component);
    else
        delete panel.page;
}

void PanelPages::closeCurrent()
{
    if (!mayClose())
        return;
    const auto focused = std::find_if(m_panels.begin(), m_panels.end(),
        [](const Panel& panel) { return panel.page && panel.page->isAncestorOf(QApplication::focusWidget()); });
    const auto closed = focused == m_panels.end() ? m_panels.end() - 1 : focused;
    saveView(static_cast<std::size_t>(closed - m_panels.begin()));
    Panel panel = std::move(*closed);
    m_panels.erase(closed);
    drop(panel);
    Q_EMIT countChanged();
}

void PanelPages::saveView(std::size_t position)
{
    if (const auto& component = m_panels[position].component)
        m_memory.keep(position, component->viewState());
}

void PanelPages::saveViews()
{
    for (std::size_t position = 0; position < m_panels.size(); ++position)
        saveView(position);
}

void PanelPages::dropAll()
{
    for (Panel& panel : std::exchange(m_panels, {}))
        drop(panel);
    m_failure.clear();
}

QString PanelPages::gridText() const
{
    const ComponentInstance* const panel = first();
    if (!panel)
        return {};
    QString text;
    for (const std::vector<Text>& row : panel->rows()) {
        QStringList cells;
        for (const Text& cell : row)
            cells.append(oneLine(QString::fromStdWString(cell)));
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

}
