#include "qt/QtDesktop.h"

#include "platform/Form.h"
#include "platform/Menu.h"
#include "qt/FormDialog.h"
#include "toolkit/QtText.h"

#include <QApplication>
#include <QDateTime>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

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

// A box over the form's buttons or above the form, so that it does not cover the field in question.
class FormBox final : public QMessageBox {
public:
    using QMessageBox::QMessageBox;

protected:
    // The box gets its size only here.
    void showEvent(QShowEvent* event) override
    {
        QMessageBox::showEvent(event);
        if (const auto* const form = dynamic_cast<FormDialog*>(parentWidget()))
            placeBeside(*form);
    }

private:
    void placeBeside(const FormDialog& form)
    {
        const QRect around = form.frameGeometry();
        const QRect screen = form.screen()->availableGeometry();
        const QSize outer = size() + form.frameSize() - form.size();
        const int left = std::clamp(around.center().x() - outer.width() / 2, screen.left(),
            std::max(screen.left(), screen.right() - outer.width()));
        const int below = form.mapToGlobal(QPoint(0, form.topOfButtons())).y();
        if (below + outer.height() <= screen.bottom())
            move(left, below);
        else if (around.top() - outer.height() >= screen.top())
            move(left, around.top() - outer.height());
    }
};

QString plainCaption(const MenuItem& item) { return toQString(item.caption()).remove(u'&'); }

// Says below the entries why some are disabled, a line for each reason. The lines are enabled, so that keys reach them.
void addRefusals(QMenu& window, const Menu& menu)
{
    QStringList reasons;
    QHash<QString, QStringList> captions;
    for (const MenuItem* const item : menu.items()) {
        if (!item || item->refusal().empty() || !item->isVisible())
            continue;
        const QString reason = toQString(item->refusal());
        if (!reasons.contains(reason))
            reasons.append(reason);
        captions[reason].append(plainCaption(*item));
    }
    window.addSeparator();
    for (const QString& reason : std::as_const(reasons))
        window.addAction(u"%1: %2"_s.arg(captions[reason].join(u", "_s), reason).replace(u'&', u"&&"_s));
}

// Window messages of an edit box.
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
    // During a long call no window may be active.
    QWidget* const form = QApplication::activeModalWidget();
    FormBox box(iconOf(style), toQString(title), toLines(text),
        question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, form ? form : QApplication::activeWindow());
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
    // A hidden window performs the set-up that Qt does with its first window.
    QWidget window;
    window.setWindowTitle(toQString(form.name()));
    window.ensurePolished();
}

void QtDesktop::unload(Form&) { }

void QtDesktop::showModal(Form& form)
{
    form.load();
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const parent = modal ? modal : QApplication::activeWindow();
    FormDialog(form, *this, parent).run();
    // A window manager loses the focus if a box and its form close at the same time.
    if (parent)
        parent->activateWindow();
    if (auto* const caller = dynamic_cast<FormDialog*>(modal))
        caller->activateAgain();
}

void QtDesktop::offerWithNextMenu(QString caption, std::function<void()> work, std::function<bool()> isUsable)
{
    m_offered.push_back({ std::move(caption), std::move(work), std::move(isUsable) });
}

void QtDesktop::popUp(Menu& menu)
{
    // Run the action after the menu is destroyed, because it may open a form.
    if (const auto work = askMenu(menu, std::exchange(m_offered, {})))
        work();
}

// Returns the action of the chosen entry; empty if the user chooses nothing.
std::function<void()> QtDesktop::askMenu(Menu& menu, const std::vector<OfferedEntry>& offered)
{
    QMenu window;
    window.setAccessibleName(toQString(menu.caption()));
    QHash<QAction*, std::function<void()>> works;
    for (MenuItem* item : menu.items()) {
        if (!item) {
            window.addSeparator();
            continue;
        }
        const QString detail = item->detail().empty() ? QString() : u'\t' + toQString(item->detail());
        QAction* const action = window.addAction(toQString(item->caption()) + detail);
        action->setEnabled(item->isEnabled());
        action->setVisible(item->isVisible());
        works.insert(action, [item] { item->choose(); });
    }
    for (const OfferedEntry& entry : offered) {
        QAction* const own = window.addAction(entry.caption);
        own->setEnabled(entry.isUsable());
        works.insert(own, entry.work);
    }
    addRefusals(window, menu);
    return works.value(window.exec(m_popUpPlace));
}

}
