#pragma once

#include <QLabel>

namespace health {

// The line under a field that explains what became of its value; takes no room while there is nothing to say.
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
