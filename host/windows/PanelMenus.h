#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QMenu;

namespace health {

class PanelPages;

// Shows the actions that a panel publishes (api/PanelActions.h) in the window's menus: those of the panel that had the
// focus last. A menu without other entries is hidden while the panel publishes nothing for it.
class PanelMenus : public QObject {
    Q_OBJECT
public:
    // The pages must outlive the object.
    explicit PanelMenus(PanelPages& pages);

    // Adds the menu that the actions name `name`. They stand above `before`, at the end without it, and are set off by
    // a separator.
    void add(QMenu& menu, const char* name, QAction* before = nullptr);

    // Shows the current panel's actions. Each menu does it when it opens.
    void refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Place {
        QMenu* menu;
        QString name;
        QAction* before;
        QAction* separator; // above or below the actions
        QList<QPointer<QAction>> shown;
    };

    void followPanel();
    void refresh(Place& place);

    PanelPages& m_pages;
    QPointer<QWidget> m_panel;
    QList<Place> m_places;
};

}
