#pragma once

#include <QMessageBox>

namespace health {

// Shows an error as plain text: tags in a server's text must not be interpreted.
inline void showFailure(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

}
