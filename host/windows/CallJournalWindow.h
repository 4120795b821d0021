#pragma once

#include <QDialog>
#include <QPointer>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QPlainTextEdit;
class QTableView;

namespace health {

class CallJournal;
class JournalModel;
class SignLabel;

// Shows the session's calls to those who look after the program. Without patients' data, unless the user unlocks
// parameters and replies; closing the window locks them.
class CallJournalWindow : public QDialog {
    Q_OBJECT
public:
    CallJournalWindow(CallJournal& journal, QWidget* parent);
    ~CallJournalWindow() override;

    // Writes the table to a file that only the user can read, without patients' data. Throws Failure.
    void save(const QString& path) const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeLock();
    QWidget* makeButtons();
    void setUpTable();
    void setUpWarning();
    void setUpContent();
    void showLock();
    void showSums();
    void showContent();
    void unlock(bool wanted);
    void copy();
    void chooseFile();

    QPointer<CallJournal> m_journal;
    JournalModel* m_model;
    QTableView* m_table;
    QLabel* m_sums;
    SignLabel* m_warning; // while unlocked
    QCheckBox* m_lock;
    QPlainTextEdit* m_content; // parameter and reply of the current row, while unlocked
    QLabel* m_saved; // shows where
};

}
