#include "qt/DetailsPane.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/CourseView.h"
#include "qt/DetailsHeading.h"
#include "qt/DetailsTexts.h"
#include "qt/FieldList.h"
#include "qt/ShownRecords.h"
#include "qt/course/CourseOf.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>

#include <algorithm>
#include <utility>

namespace health {

using namespace Qt::StringLiterals;

namespace {

// In ems.
constexpr double NarrowPane = 50; // fields and picture stack
constexpr double LowWindow = 36; // only the heading is shown
constexpr double BetweenParts = 3;
constexpr double UsualHeight = 14.6;

}

DetailsPane::DetailsPane(ShownRecords& records, QWidget* parent)
    : QWidget(parent)
    , m_records(records)
    , m_action(new QAction(u"&Details"_s, this))
    , m_fold(new FoldButton(this))
    , m_heading(new DetailsHeading(this))
    , m_scroll(new QScrollArea(this))
    , m_body(new QWidget)
    , m_fields(new FieldList(m_body))
    , m_course(new CourseView(m_body))
{
    setAccessibleName(u"Details of the selected record"_s);
    m_action->setCheckable(true);
    m_action->setChecked(true);
    m_action->setShortcut(Qt::Key_F9);
    m_action->setToolTip(u"The selected record's fields and their course"_s);
    connect(m_action, &QAction::toggled, this, [this](bool open) { setVisible(open); });
    connect(m_fold, &QAbstractButton::clicked, this, [this] { setFolded(!isFolded()); });
    m_scroll->setWidget(m_body);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->viewport()->installEventFilter(this);
    m_scroll->viewport()->setAutoFillBackground(false);
    m_body->setAutoFillBackground(false);
    connect(&m_records, &ShownRecords::reloaded, this, &DetailsPane::refreshLater);
    connect(&m_records, &ShownRecords::selectionChanged, this, &DetailsPane::refreshLater);
    connect(m_course, &CourseView::recordChosen, this, &DetailsPane::chooseRecord);
    connect(m_course, &CourseView::heightChanged, this, &DetailsPane::arrangeBody);
    showNothing();
}

// --- Contents ---

// Coalesces the changes of a reload. Hidden panes follow when they are shown.
void DetailsPane::refreshLater()
{
    const Text patient = currentPatient(m_records.control());
    if (toQString(patient) != m_patient)
        showNothing(); // never shows one patient's record under another's name
    if (!isHidden() && !std::exchange(m_refreshing, true))
        QMetaObject::invokeMethod(this, &DetailsPane::refresh, Qt::QueuedConnection);
}

void DetailsPane::refresh()
{
    m_refreshing = false;
    if (!m_records.control().fgData.isDrawing())
        return; // the list is loading; the same record may come back
    if (const int selected = m_records.selected(); selected != -1)
        showRecord(selected);
    else
        showNothing();
}

void DetailsPane::showNothing()
{
    m_hasRecord = false;
    m_patient = toQString(currentPatient(m_records.control()));
    m_heading->hint(m_records.all().empty() ? QString() : u"Select a record to read its fields and their course."_s);
    m_fields->setFields({});
    m_course->setPicture(nullptr);
    arrange();
}

void DetailsPane::showRecord(int selected)
{
    kalmevRepHistCtrl& control = m_records.control();
    m_hasRecord = true;
    m_patient = toQString(currentPatient(control));
    const auto index = static_cast<std::size_t>(selected);
    const ListedRecord& record = m_records.all()[index];
    m_course->setPicture(courseOf(courseSource(m_records)));
    std::vector<RecordField> fields = recordFields(record, recordBefore(m_records.all(), index));
    HeadingTexts heading = headingOf(m_records.all(), index, placeOfVisit(control.services()));
    // The picture of functional status names its items itself.
    if (record.type->number == RecordTypeNumber::FunctionalStatus && m_course->picture())
        heading.facts = takeFacts(fields);
    m_heading->say(heading);
    m_fields->setFields(fields);
    arrange();
}

QString DetailsPane::headingText() const { return m_heading->plainText(); }

void DetailsPane::chooseRecord(int record)
{
    if (!m_records.isShown(record))
        return;
    m_records.control().fgData.choose(record);
    m_records.control().fgData.showRow(record);
}

// --- Places ---

int DetailsPane::headingHeight() const
{
    const Measures measures(*this);
    const int left = measures.windowMargin() + m_fold->sizeHint().width() + measures.u();
    const int text = m_heading->heightForWidth(std::max(1, width() - left - measures.windowMargin()));
    return std::max(text, m_fold->sizeHint().height()) + 2 * measures.units(1.5);
}

void DetailsPane::arrange()
{
    const Measures measures(*this);
    const int height = headingHeight();
    m_fold->setVisible(m_hasRecord);
    m_scroll->setVisible(m_hasRecord && !isFolded());
    const QSize fold = m_fold->sizeHint();
    const int foldLeft = measures.units(3.5);
    m_fold->setGeometry(QRect(QPoint(foldLeft, (height - fold.height()) / 2), fold));
    const int left = m_hasRecord ? foldLeft + fold.width() + measures.u() : measures.windowMargin();
    m_heading->setGeometry(left, 0, width() - left - measures.windowMargin(), height);
    setMaximumHeight(isFolded() ? height : QWIDGETSIZE_MAX);
    if (isFolded())
        settleLater();
    const int frame = measures.hairline();
    m_scroll->setGeometry(frame, height, width() - 2 * frame, std::max(0, this->height() - height - frame));
    arrangeBody();
}

// Fields and picture side by side, or below each other in a narrow pane. A picture that names its items itself takes
// the whole width.
void DetailsPane::arrangeBody()
{
    const Measures measures(*this);
    const int margin = measures.windowMargin();
    const int room = std::max(1, m_scroll->viewport()->width() - 2 * margin);
    const int view = m_scroll->viewport()->height() - measures.units(2);
    const bool hasFields = m_fields->model()->rowCount() > 0;
    const bool hasPicture = m_course->picture() != nullptr;
    const bool beside = hasFields && hasPicture && width() >= measures.ems(NarrowPane);
    m_fields->setVisible(hasFields);
    int width = hasFields ? std::min(m_fields->naturalWidth(), room) : 0;
    if (beside)
        width = std::min(width, room * 9 / 20);
    const int fieldsHeight = hasFields ? m_fields->fitTo(width) : 0;
    m_fields->setGeometry(margin, 0, width, fieldsHeight);
    int bottom = fieldsHeight;
    if (hasPicture) {
        const int left = beside ? margin + width + measures.ems(BetweenParts) : margin;
        const int top = beside || !hasFields ? 0 : fieldsHeight + measures.groupGap();
        const int wide = margin + room - left;
        const int height = std::max(m_course->heightFor(wide), top == 0 ? view : 0);
        m_course->setGeometry(left, top, wide, height);
        bottom = std::max(bottom, top + height);
    }
    m_body->resize(m_scroll->viewport()->width(), bottom);
    m_scroll->verticalScrollBar()->setSingleStep(measures.em());
}

// Later, because the splitter may be dividing its height now.
void DetailsPane::settleLater()
{
    const int usual = m_usualHeight > 0 ? m_usualHeight : sizeHint().height();
    QMetaObject::invokeMethod(
        this, [this, usual] { takeHeight(isFolded() ? headingHeight() : usual); }, Qt::QueuedConnection);
}

void DetailsPane::setFolded(bool folded)
{
    if (folded == isFolded())
        return;
    m_isFolded = folded;
    m_fold->setFolded(folded);
    arrange();
    settleLater();
}

// A splitter keeps the size of a widget whose largest size has become smaller.
void DetailsPane::takeHeight(int height)
{
    auto* const splitter = qobject_cast<QSplitter*>(parentWidget());
    if (!splitter || splitter->count() < 2 || isHidden())
        return;
    const QList<int> sizes = splitter->sizes();
    const int whole = sizes.first() + sizes.last();
    const int taken = isFolded() ? height : std::min(height, whole * 3 / 5);
    if (whole > 0 && sizes.last() != taken)
        splitter->setSizes({ whole - taken, taken });
}

// A window that becomes low folds the pane, one that becomes high unfolds it; in between the user decides.
void DetailsPane::followWindow()
{
    const bool low = isWindowLow();
    if (std::exchange(m_isLow, low) != low)
        setFolded(low);
}

bool DetailsPane::isWindowLow() const { return window()->height() < Measures(*this).ems(LowWindow); }

QSize DetailsPane::minimumSizeHint() const
{
    return { 0, isFolded() ? headingHeight() : headingHeight() + Measures(*this).ems(3) };
}

QSize DetailsPane::sizeHint() const { return { 0, Measures(*this).ems(UsualHeight) }; }

// --- Events ---

void DetailsPane::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    window()->installEventFilter(this);
    followWindow();
    refresh();
}

bool DetailsPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == m_scroll->viewport())
        arrangeBody();
    else if (event->type() == QEvent::Resize && watched == window() && isVisible())
        followWindow();
    return QWidget::eventFilter(watched, event);
}

bool DetailsPane::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        refreshLater(); // a form may have read the asthma registry
    else if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
        m_action->setChecked(!isHidden());
    return QWidget::event(event);
}

void DetailsPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!isFolded() && !isWindowLow())
        m_usualHeight = height();
    arrange();
}

void DetailsPane::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    if (isFolded())
        settleLater();
}

void DetailsPane::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && isVisible())
        followWindow(); // a larger text makes it low
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        refreshLater();
    else if (event->type() == QEvent::PaletteChange)
        update();
}

void DetailsPane::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Active, QPalette::Base));
    const int line = Measures(*this).hairline();
    painter.setPen(QPen(colourOf(Ink::FieldFrame, palette()), line));
    painter.drawRect(rect().adjusted(line / 2, -line, -(line + 1) / 2, -(line + 1) / 2)); // the list has the upper edge
}

}
