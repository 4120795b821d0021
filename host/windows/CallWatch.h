#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace health {

class HostSession;
class WaitBox;

// What the user sees of calls that take long or fail: a box with the progress that offers to stop, and a question
// whether to try again. When no user is present, lines on standard error instead.
class CallWatch : public QObject {
    Q_OBJECT
public:
    enum class Audience { User, Nobody };

    // Both must outlive the object.
    CallWatch(HostSession& session, QWidget& window, Audience audience);

    // Asks whether to try the failed call again; false when no user is present.
    bool asksToRetry(const QString& reason);
    // Closes the box.
    void endWaiting();

private:
    void showProgress(int percent, const QString& text);
    void printProgress(const QString& line);
    bool showWaiting(qint64 milliseconds);
    WaitBox& waitBox();

    HostSession& m_session;
    QWidget& m_window;
    const Audience m_audience;
    QPointer<WaitBox> m_box; // while a call takes long
    QString m_printed; // the last line on standard error
};

}
