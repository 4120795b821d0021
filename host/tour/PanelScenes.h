#pragma once

#include <QString>

#include <functional>

class QAction;
class QTableView;

namespace health {

class MainWindow;

// What the panel itself shows: the details of each kind of record, a search, the states without records.
class PanelScenes {
public:
    // Both must outlive the object. `save` saves a picture of the window under a name.
    PanelScenes(MainWindow& window, std::function<void(const QString& name)> save)
        : m_window(window)
        , m_save(std::move(save))
    {
    }

    void run();

private:
    void showDetails(long patient, const QString& kind, const QString& name);
    void search(long patient, const QString& text, const QString& name);
    void showPatient(long patient, const QString& name);
    QTableView* list() const;
    QAction* action(const QString& caption) const;

    MainWindow& m_window;
    std::function<void(const QString& name)> m_save;
};

}
