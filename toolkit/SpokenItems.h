#pragma once

#include <QObject>

class QAbstractItemView;

namespace health {

// Event filter that makes screen readers speak the current item of a list or table when it gets the focus. Qt itself
// reports only later moves within the list.
class SpokenItems : public QObject {
public:
    // Installs itself on the view, which owns it.
    explicit SpokenItems(QAbstractItemView& view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void speakCurrent();

    QAbstractItemView& m_view;
};

}
