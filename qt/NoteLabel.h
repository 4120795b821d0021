#pragma once

#include <QLabel>

namespace health {

// The line under a field that explains how its value was changed; hidden while the note is empty.
class NoteLabel : public QLabel {
public:
    explicit NoteLabel(QWidget& field);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showNote();
    void makeRoom();

    QWidget& m_field;
};

}
