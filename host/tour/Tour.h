#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

class QAbstractButton;

namespace health {

class MainWindow;
enum class RecordTypeNumber;

// Opens every editor for some of the sample patients, saves a picture of each and closes it again: the pictures of the
// documentation, and a quick look at all windows after a change.
class Tour : public QObject {
    Q_OBJECT
public:
    Tour(MainWindow& window, const QString& folder);

    // Returns the number of pictures; -1 if one could not be saved.
    int run();

private:
    struct Editor;
    static const Editor Editors[];

    void visitPatient(long number);
    void openEditors(const Editor& editor);
    void openEmergencyVisits();
    void openLookup();
    void open(RecordTypeNumber type, const QStringList& record, const QString& picture);
    QList<QStringList> records(const wchar_t* call);
    bool searchProvider(const QWidget& dialog);
    void drawDialog();
    QAbstractButton* buttonToFollow(const QWidget& dialog);
    void save(QWidget& widget, const QString& name);

    MainWindow& m_window;
    QString m_folder;
    QString m_patient; // the prefix of all picture names
    QString m_picture; // the name for the next dialog
    QTimer m_watch;
    QWidget* m_seen = nullptr; // a dialog is drawn when it is seen again, after its layout
    QHash<QWidget*, QString> m_names; // of the pictures of the open dialogs
    bool m_searches = false; // search for the provider in the next dialog
    QSet<QString> m_followed; // pressed buttons that open further dialogs, by title and caption
    int m_pictures = 0;
    bool m_failed = false;
};

}
