#include "host/windows/HelpBoxes.h"

#include "host/desktop/ProgramIcon.h"
#include "host/windows/ListPicker.h"
#include "host/windows/WindowOptions.h"
#include "toolkit/ControlStyle.h"

#include <QDialogButtonBox>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTextBrowser>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace health {

namespace {

QString row(const QString& keys, const QString& what)
{
    // Keys end where their meanings begin, as captions and values do.
    return u"<tr><td align='right'>%1</td><td>&nbsp;&nbsp;</td><td>%2</td></tr>"_s.arg(
        keys.toHtmlEscaped(), what.toHtmlEscaped());
}

void giveLook(QMessageBox& box)
{
    for (QAbstractButton* const button : box.buttons())
        ControlStyle::giveTo(*button);
}

QString menuRows(const QMenu& menu)
{
    QString rows;
    for (const QAction* const action : menu.actions()) {
        if (!action->shortcut().isEmpty())
            rows += row(
                action->shortcut().toString(QKeySequence::NativeText), action->text().remove(u'&').remove(u"..."_s));
    }
    return rows;
}

QString shortcutRows(const QMainWindow& window)
{
    QString rows;
    for (const QAction* const menu : window.menuBar()->actions())
        rows += menuRows(*menu->menu());
    rows += row(u"Enter"_s, u"Edit the selected record"_s);
    rows += row(u"Alt+A, Alt+E, Alt+D"_s, u"Add a record, edit or delete the selected one"_s);
    rows += row(u"Ctrl+C"_s, u"Copy the selected record's text"_s);
    rows += row(u"Shift+F10, Menu"_s, u"Menu of the selected record"_s);
    rows += row(u"Home, End"_s, u"First, last row of a list"_s);
    rows += row(u"Alt+underlined letter"_s, u"Press a button, go to a field"_s);
    rows += row(u"F2"_s, u"In a form: show every value that will be saved"_s);
    rows += row(u"Alt+Down"_s, u"In a date: open the calendar"_s);
    rows += row(u"Escape"_s, u"In the list or its search: show all records"_s);
    rows += row(u"Escape"_s, u"In a dialog: close it without saving"_s);
    return rows;
}

// As large as its text, so that it scrolls only where the screen is too small.
QSize sizeOf(const QTextBrowser& text)
{
    const int margin = 2 * text.fontMetrics().height();
    text.document()->setTextWidth(-1);
    text.document()->setTextWidth(text.document()->idealWidth());
    return text.document()->size().toSize() + QSize(margin, margin);
}

}

void showShortcuts(QMainWindow& window)
{
    QDialog box(&window);
    box.setWindowTitle(u"Keyboard Shortcuts"_s);
    auto* const text = new QTextBrowser;
    text->setAccessibleName(box.windowTitle());
    text->setFrameShape(QFrame::NoFrame);
    text->viewport()->setAutoFillBackground(false);
    text->setHtml(u"<table>%1</table>"_s.arg(shortcutRows(window)));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &box, &QDialog::reject);
    for (QAbstractButton* const button : buttons->buttons())
        ControlStyle::giveTo(*button);
    auto* const layout = new QVBoxLayout(&box);
    layout->addWidget(text);
    layout->addWidget(buttons);
    resizeToScreen(box, sizeOf(*text) + QSize(0, 2 * buttons->sizeHint().height()));
    box.exec();
}

void showAbout(QMainWindow& window, const WindowOptions& options, const QString& user)
{
    const QString server = options.server ? u"%1, port %2"_s.arg(options.server->host).arg(options.server->port)
                                          : u"local program %1"_s.arg(options.serverProgram);
    const QStringList lines { u"Reference host %1 of the Personal Health panel."_s.arg(QLatin1String(HOST_VERSION)), {},
        u"Server: %1"_s.arg(server), user, {},
        u"MIT License. Copyright (c) 2026 The Personal Health panel's authors. It comes without warranty of any "
        "kind."_s };
    QMessageBox box(QMessageBox::NoIcon, u"About"_s, lines.join(u'\n'), QMessageBox::Ok, &window);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    giveLook(box);
    box.setIconPixmap(programIcon().pixmap(box.fontMetrics().height() * 3));
    box.exec();
}

}
