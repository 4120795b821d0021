#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

class QAbstractButton;

namespace health {

class MainWindow;

// Opens every dialog that the panels offer for some of the sample patients, saves a picture of each and closes it
// again: the pictures of the documentation, and a quick look at all windows after a change.
class Tour : public QObject {
    Q_OBJECT
public:
    Tour(MainWindow& window, const QString& folder);

    // Runs to the end; the number of pictures, -1 when one could not be saved.
    int run();

private:
    void visitPatient(long number);
    void openRows();
    void openTypes();
    void openEmergencyVisits(long patient);
    void openLookup();
    void addRecord(int type);
    bool searchProvider(const QWidget& dialog);
    void takeDialog();
    QAbstractButton* buttonToFollow(const QWidget& dialog);
    void save(QWidget& widget, const QString& name);

    MainWindow& m_window;
    QString m_folder;
    QString m_patient; // begins the names of the pictures being taken
    QString m_prefix; // the picture of the next dialog
    QTimer m_watch;
    QWidget* m_seen = nullptr; // a dialog seen once is taken the next time, when it has been laid out
    QHash<QWidget*, QString> m_names; // of the open dialogs' pictures
    bool m_searches = false; // the next dialog's provider is searched for
    QSet<QString> m_followed; // buttons that open further dialogs, by dialog and caption
    int m_pictures = 0;
    bool m_failed = false;
};

}
