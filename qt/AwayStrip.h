#pragma once

#include <QTime>
#include <QTimer>
#include <QWidget>

class QPushButton;

namespace health {

class RunFlow;

// Above the list while the server is not connected: how old the rows are, and when the host tries again.
class AwayStrip : public QWidget {
    Q_OBJECT
public:
    AwayStrip();

    // `seconds` until the host tries again; 0 while it does. The rows were read at `loaded`, which may be null.
    void show(int seconds, QTime loaded);
    void setLoaded(QTime loaded);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return { 0, heightForWidth(width()) }; }

Q_SIGNALS:
    void tryNow();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    RunFlow content() const;
    QString state() const;
    QString pause() const;
    int textLeft() const;
    int textWidth(int width) const;
    void placeButton();
    void countDown();

    QPushButton* m_button;
    QTimer m_second;
    int m_seconds = 0;
    QTime m_loaded;
};

}
