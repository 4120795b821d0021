#include "qt/QtDesktop.h"

#include "platform/Form.h"
#include "platform/Menu.h"
#include "qt/FormDialog.h"
#include "qt/QtText.h"

#include <QApplication>
#include <QDateTime>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>

namespace health {

namespace {

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case BoxStyle::Critical:
        return QMessageBox::Critical;
    case BoxStyle::Question:
        return QMessageBox::Question;
    case BoxStyle::Exclamation:
        return QMessageBox::Warning;
    case BoxStyle::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// Messages of an edit box, by their numbers.
enum EditMessage {
    SelectRange = 177,
    Undo = 199,
    Cut = 768,
    Copy = 769,
    Paste = 770,
    Redo = 1108,
};

}

QtDesktop::~QtDesktop() { setPointer(Pointer::Default); }

BoxAnswer QtDesktop::messageBox(TextView text, int style, TextView title)
{
    const bool question = (style & 0xF) == BoxStyle::YesNo;
    QMessageBox box(iconOf(style), toQString(title), toLines(text),
        question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (question) {
        box.setDefaultButton(style & BoxStyle::SecondButtonDefault ? QMessageBox::No : QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
    }
    switch (box.exec()) {
    case QMessageBox::Yes:
        return BoxAnswer::Yes;
    case QMessageBox::Ok:
        return BoxAnswer::Ok;
    default:
        return BoxAnswer::No;
    }
}

void QtDesktop::setPointer(Pointer pointer)
{
    const bool hourglass = pointer == Pointer::Hourglass;
    if (hourglass == m_hourglass)
        return;
    m_hourglass = hourglass;
    if (hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtDesktop::processPendingEvents() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void QtDesktop::sendEditMessage(EditHandle edit, int message, long, const int*)
{
    auto* const box = static_cast<QPlainTextEdit*>(edit);
    switch (message) {
    case SelectRange:
        box->selectAll();
        break;
    case Undo:
        box->undo();
        break;
    case Cut:
        box->cut();
        break;
    case Copy:
        box->copy();
        break;
    case Paste:
        box->paste();
        break;
    case Redo:
        box->redo();
        break;
    default:
        break;
    }
}

Moment QtDesktop::now() const
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    return momentOf(date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second());
}

void QtDesktop::load(Form& form)
{
    // A hidden window of the form's name: what the toolkit sets up with its first window is done here.
    QWidget window;
    window.setWindowTitle(toQString(form.name()));
    window.ensurePolished();
}

void QtDesktop::unload(Form&) { }

void QtDesktop::showModal(Form& form)
{
    form.load();
    FormDialog(form, *this, QApplication::activeWindow()).run();
}

void QtDesktop::popUp(Menu& menu)
{
    QMenu window;
    window.setAccessibleName(toQString(menu.caption()));
    QHash<QAction*, MenuItem*> items;
    for (MenuItem* item : menu.items()) {
        if (!item) {
            window.addSeparator();
            continue;
        }
        QAction* const action = window.addAction(toQString(item->caption()));
        action->setEnabled(item->isEnabled());
        action->setVisible(item->isVisible());
        items.insert(action, item);
    }
    if (MenuItem* const chosen = items.value(window.exec(m_popUpPlace)))
        chosen->choose();
}

}
