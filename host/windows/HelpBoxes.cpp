#include "host/windows/HelpBoxes.h"

#include "host/program/Options.h"
#include "host/desktop/ProgramIcon.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

namespace health {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("HelpBoxes", text); }

QString row(const QString& keys, const QString& what)
{
    return QStringLiteral("<tr><td>%1</td><td>&nbsp;&nbsp;</td><td>%2</td></tr>")
        .arg(keys.toHtmlEscaped(), what.toHtmlEscaped());
}

QString menuRows(const QMenu& menu)
{
    QString rows;
    for (const QAction* const action : menu.actions()) {
        if (!action->shortcut().isEmpty())
            rows += row(action->shortcut().toString(QKeySequence::NativeText),
                action->text().remove(u'&').remove(QStringLiteral("...")));
    }
    return rows;
}

}

void showShortcuts(QMainWindow& window)
{
    QString rows;
    for (const QAction* const menu : window.menuBar()->actions())
        rows += menuRows(*menu->menu());
    rows += row(tr("Enter"), tr("Edit the selected record"));
    rows += row(tr("Alt+A, Alt+E, Alt+D"), tr("Add a record, edit or delete the selected one"));
    rows += row(tr("Shift+F10, Menu"), tr("Menu of the selected record"));
    rows += row(tr("Home, End"), tr("First, last row of a list"));
    rows += row(tr("Alt+underlined letter"), tr("Press a button, go to a field"));
    rows += row(tr("Escape"), tr("Close a dialog without saving"));
    QMessageBox box(QMessageBox::NoIcon, tr("Keyboard Shortcuts"), QStringLiteral("<table>%1</table>").arg(rows),
        QMessageBox::Close, &window);
    box.setTextFormat(Qt::RichText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}

void showAbout(QMainWindow& window, const Options& options, const QString& user)
{
    const QString server = options.server.port != 0
        ? tr("%1, port %2").arg(options.server.host).arg(options.server.port)
        : tr("local program %1").arg(options.serverProgram);
    const QStringList lines { tr("Reference host %1 of the Personal Health panel.").arg(QStringLiteral(HOST_VERSION)),
        {}, tr("Server: %1").arg(server), user, {},
        tr("MIT License. Copyright (c) 2026 The Personal Health panel's authors. It comes without warranty of any "
           "kind.") };
    QMessageBox box(QMessageBox::NoIcon, tr("About"), lines.join(u'\n'), QMessageBox::Ok, &window);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.setIconPixmap(programIcon().pixmap(box.fontMetrics().height() * 3));
    box.exec();
}

}
