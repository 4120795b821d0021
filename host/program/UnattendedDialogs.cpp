#include "host/program/UnattendedDialogs.h"

#include <QDialog>
#include <QEvent>
#include <QMessageBox>

#include <cstdio>

namespace health {

bool UnattendedDialogs::eventFilter(QObject* watched, QEvent* event)
{
    auto* const dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
    if (!dialog)
        return false;
    m_seen = true;
    const auto* const box = qobject_cast<QMessageBox*>(dialog);
    std::fprintf(stderr, "%s\n", qPrintable(box ? box->text() : dialog->windowTitle()));
    QMetaObject::invokeMethod(dialog, &QDialog::reject, Qt::QueuedConnection);
    return false;
}

}
