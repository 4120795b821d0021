#pragma once

#include <QMessageBox>

namespace health {

// Tells the user what went wrong, as it is: a text of the server is no page with tags.
inline void showFailure(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

}
