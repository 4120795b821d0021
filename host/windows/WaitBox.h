#pragma once

#include <QElapsedTimer>
#include <QFrame>

class QLabel;
class QProgressBar;
class QPushButton;

namespace health {

// Shows that the server is working, and lets the user stop waiting. While it is shown, only this box and the Escape key
// accept input; other keys and clicks are dropped, so that nothing starts inside the call. The main window can still be
// closed. The box does not take the focus: a key meant for a form must not press its button.
class WaitBox : public QFrame {
    Q_OBJECT
public:
    explicit WaitBox(QWidget& mainWindow)
        : WaitBox(mainWindow, ownerFor(mainWindow))
    {
    }
    ~WaitBox() override;

    // Shows the progress that the server reports.
    void showProgress(int percent, const QString& text);
    // Shows for how long the call has lasted. The user who stops waiting for a save keeps the entries.
    void showWaiting(bool saving, qint64 seconds);

Q_SIGNALS:
    void stopped();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    WaitBox(QWidget& mainWindow, QWidget* owner);
    static QWidget* ownerFor(QWidget& mainWindow);
    void appear();
    bool isOwn(const QObject* watched) const;

    QWidget& m_mainWindow;
    QLabel* m_text;
    QProgressBar* m_bar;
    QPushButton* m_stop;
    QElapsedTimer m_shown;
};

}
