#pragma once

#include "api/Component.h"
#include "host/windows/ViewMemory.h"

#include <QPointer>
#include <QSplitter>

#include <vector>

namespace health {

class ClinicalContext;

// The panels of the window, up to four side by side; each is a separate instance.
class PanelPages : public QSplitter {
    Q_OBJECT
public:
    static constexpr std::size_t Most = 4;

    // The context must outlive the pages.
    PanelPages(ClinicalContext& context, ViewMemory memory);
    ~PanelPages() override;

    std::size_t count() const { return m_panels.size(); }
    bool mayAdd() const { return m_panels.size() < Most; }
    bool mayClose() const { return m_panels.size() > 1; }

    // Adds a panel. If the component cannot be loaded, its page shows the error and the remedy.
    void add();
    // Closes the panel with the focus, else the last one.
    void closeCurrent();
    // Moves the focus to the record list of the panel that had it last, else of the first panel.
    void focusRecords();
    // Remembers how the panels are arranged, for the next ones in their places.
    void saveViews();
    // Closes all panels.
    void dropAll();

    // The page of the panel that had the focus last, else of the first panel; null without panels.
    QWidget* current() const;

    // The first panel; null if it could not be loaded.
    ComponentInstance* first() const { return m_panels.empty() ? nullptr : m_panels.front().component.get(); }

    // The rows of the first panel's grid as lines, their cells separated by tabs.
    QString gridText() const;
    // Why a panel could not be loaded; empty if all were.
    QString failure() const { return m_failure; }

Q_SIGNALS:
    void countChanged();
    // Another panel has the focus.
    void currentChanged();

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Panel {
        std::unique_ptr<ComponentInstance> component; // null: the page is a message
        QPointer<QWidget> page;
    };

    QWidget* load(Panel& panel);
    QWidget* messagePage(const QString& text);
    void drop(Panel& panel);
    void saveView(std::size_t position);
    void noteFocus(QWidget* focused);
    void showPages();

    ClinicalContext& m_context;
    ViewMemory m_memory;
    std::vector<Panel> m_panels;
    QPointer<QWidget> m_lastFocused; // the page that had the focus last
    QString m_failure;
};

}
