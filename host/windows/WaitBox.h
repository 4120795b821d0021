#pragma once

#include <QElapsedTimer>
#include <QFrame>

class QLabel;
class QProgressBar;
class QPushButton;

namespace health {

// Says that the server is at work, and lets the user stop waiting. While it is shown it alone takes input, and a press
// of Escape: what is typed or clicked elsewhere is dropped, so that nothing begins inside the call. Only the main
// window may be closed. It takes the keyboard from nobody: a key that was meant for a form must not press its button.
class WaitBox : public QFrame {
    Q_OBJECT
public:
    explicit WaitBox(QWidget& mainWindow)
        : WaitBox(mainWindow, ownerBy(mainWindow))
    {
    }
    ~WaitBox() override;

    // Shows how far the server is; it came by itself.
    void showProgress(int percent, const QString& text);
    void showWaiting();

Q_SIGNALS:
    void stopped();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    WaitBox(QWidget& mainWindow, QWidget* owner);
    static QWidget* ownerBy(QWidget& mainWindow);
    void appear();
    bool isOwn(const QObject* watched) const;

    QWidget& m_mainWindow;
    QLabel* m_text;
    QProgressBar* m_bar;
    QPushButton* m_stop;
    QElapsedTimer m_shown;
};

}
