#pragma once

#include "api/Component.h"

#include <QPointer>
#include <QSplitter>

#include <vector>

namespace health {

class ClinicalContext;

// The panels of the window, up to four side by side, each an instance of its own.
class PanelPages : public QSplitter {
    Q_OBJECT
public:
    static constexpr std::size_t Most = 4;

    // The context must outlive the pages.
    explicit PanelPages(ClinicalContext& context);
    ~PanelPages() override;

    std::size_t count() const { return m_panels.size(); }
    bool mayAdd() const { return m_panels.size() < Most; }
    bool mayClose() const { return m_panels.size() > 1; }

    // Adds a panel. Without a component its page says why, and what to do.
    void add();
    // Closes the panel that has the focus, else the last.
    void closeCurrent();
    // Gives the keyboard to the record list of the panel that had it last, else of the first.
    void focusRecords();
    // Takes all panels off.
    void dropAll();

    // The first panel, null when it could not be loaded.
    ComponentInstance* first() const { return m_panels.empty() ? nullptr : m_panels.front().component.get(); }

    // The rows of the first panel's grid as text, texts parted by tabs.
    QString gridText() const;
    // Why a panel could not be loaded; empty when all could.
    QString failure() const { return m_failure; }

Q_SIGNALS:
    void countChanged();

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
    void noteFocus(QWidget* focused);
    void showPages();

    ClinicalContext& m_context;
    std::vector<Panel> m_panels;
    QPointer<QWidget> m_lastFocused; // the page that had the keyboard last
    QString m_failure;
};

}
