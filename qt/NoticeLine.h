#pragma once

#include "platform/Explanation.h"

#include <QWidget>

class QPushButton;

namespace health {

class ToneLabel;

// A line that offers something, with a button for it; hidden while there is nothing to offer.
class NoticeLine : public QWidget {
public:
    explicit NoticeLine(std::function<void()> follow);

    // `usedKeys`: the access keys of the form, in lower case. The button gets another one.
    void show(const FormNotice& notice, const QString& usedKeys);

    QPushButton& button() { return *m_button; }

private:
    ToneLabel* m_text;
    QPushButton* m_button;
};

// The caption with an access key that is not in use; unchanged if all its letters are.
QString withFreeKey(const QString& caption, const QString& usedKeys);

}
