#include "qt/FieldViews.h"

#include "qt/ControlViews.h"
#include "qt/IndicatorStyle.h"
#include "qt/QtDesktop.h"
#include "qt/QtText.h"

#include <QCalendarWidget>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QTableView>
#include <QVBoxLayout>
#include <QWidgetAction>

namespace health {

void nameControl(QWidget& control, QString words)
{
    words.remove(u'&');
    if (auto* const arrows = dynamic_cast<UpDownView*>(&control))
        arrows->setSpokenName(words);
    else if (auto* const date = dynamic_cast<DateView*>(&control))
        date->setSpokenName(words);
    else if (auto* const button = dynamic_cast<QAbstractButton*>(&control); !button)
        control.setAccessibleName(words);
    else if (button->text() == QStringLiteral("..."))
        button->setAccessibleName(QCoreApplication::translate("FormBuilder", "Find %1").arg(words));
}

// --- Label and frame ---

LabelView::LabelView(Label& label)
    : m_label(label)
{
    mirrorCommon(*this, label);
    mirrorCaption();
    mirrorColour();
    m_label.setObserver(this);
}

void LabelView::controlChanged(Control& control, Change change)
{
    if (change == Change::Caption)
        mirrorCaption();
    else if (change == Change::ForeColour)
        mirrorColour();
    else
        mirrorCommon(*this, control, change);
}

void LabelView::mirrorCaption()
{
    setText(toQString(m_label.caption()));
    speakCaption();
    // Help texts run over several lines.
    const bool isLong = m_label.caption().size() > 60;
    setWordWrap(isLong);
    setMinimumWidth(isLong ? fontMetrics().averageCharWidth() * 60 : 0);
}

void LabelView::speakFor(const QList<QWidget*>& controls)
{
    m_spokenFor.clear();
    for (QWidget* const control : controls) {
        if (!qobject_cast<QLabel*>(control))
            m_spokenFor.append(control);
    }
    speakCaption();
}

void LabelView::speakCaption()
{
    for (const QPointer<QWidget>& control : m_spokenFor) {
        if (control)
            nameControl(*control, text());
    }
}

// Grey is what the palette shows for it; other numbers would not be readable on every ground. That of a hint can be
// read; that of a disabled control cannot.
void LabelView::mirrorColour()
{
    setForegroundRole(m_label.foreColour() == GreyText ? QPalette::PlaceholderText : QPalette::WindowText);
}

FrameView::FrameView(mevContainer& container)
    : QGroupBox(toQString(container.caption()))
    , m_container(container)
{
    mirrorCommon(*this, container);
    m_container.setObserver(this);
}

void FrameView::controlChanged(Control& control, Change change)
{
    if (change == Change::Caption)
        setTitle(toQString(m_container.caption()));
    else
        mirrorCommon(*this, control, change);
}

// --- Text ---

TextBoxView::TextBoxView(TextBox& textBox)
    : QLineEdit(toQString(textBox.text()))
    , m_textBox(textBox)
{
    setMouseTracking(true);
    mirrorCommon(*this, textBox);
    m_textBox.setObserver(this);
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { m_textBox.edit(toText(text)); });
}

void TextBoxView::controlChanged(Control& control, Change change)
{
    if (change == Change::Text) {
        const QString text = toQString(m_textBox.text());
        if (text != QLineEdit::text()) {
            setText(text);
            setCursorPosition(0); // of a long name the beginning is seen
        }
    } else if (change == Change::AllSelected) {
        selectAll();
    } else {
        mirrorCommon(*this, control, change);
    }
}

void TextBoxView::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QString text = event->text();
    const bool printable = !enter && text.size() == 1 && text[0].isPrint()
        && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (enter || printable) {
        if (m_textBox.pressKey(enter ? EnterKey : static_cast<wchar_t>(text[0].unicode())) == 0)
            return;
    }
    if (enter)
        event->ignore(); // for the form's default button
    else
        QLineEdit::keyPressEvent(event);
}

void TextBoxView::mouseMoveEvent(QMouseEvent* event)
{
    health::raise(m_textBox.MouseMove);
    QLineEdit::mouseMoveEvent(event);
}

// The tool tip tells a screen reader what a short label means, and is there no later than the focus.
void TextBoxView::focusInEvent(QFocusEvent* event)
{
    health::raise(m_textBox.MouseMove);
    QLineEdit::focusInEvent(event);
}

namespace {

QString withLineFeeds(const Text& text) { return toQString(text).remove(u'\r'); }

// The shift state as the logic counts it.
int shiftState(const QKeyEvent& event)
{
    const auto held = event.modifiers();
    return (held & Qt::ShiftModifier ? 1 : 0) + (held & Qt::ControlModifier ? 2 : 0) + (held & Qt::AltModifier ? 4 : 0);
}

constexpr int AreaLines = 4;

}

TextAreaView::TextAreaView(TextBox& textBox)
    : m_textBox(textBox)
{
    setPlainText(withLineFeeds(textBox.text()));
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mirrorCommon(*this, textBox);
    m_textBox.setWindow(static_cast<QPlainTextEdit*>(this));
    m_textBox.setObserver(this);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (toPlainText() != withLineFeeds(m_textBox.text()))
            m_textBox.edit(toText(toPlainText().replace(u'\n', QStringLiteral("\r\n"))));
    });
}

TextAreaView::~TextAreaView()
{
    m_textBox.setObserver(nullptr);
    m_textBox.setWindow(nullptr);
}

void TextAreaView::controlChanged(Control& control, Change change)
{
    if (change == Change::Text) {
        if (toPlainText() != withLineFeeds(m_textBox.text()))
            setPlainText(withLineFeeds(m_textBox.text()));
    } else if (change == Change::AllSelected) {
        selectAll();
    } else {
        mirrorCommon(*this, control, change);
    }
}

void TextAreaView::keyPressEvent(QKeyEvent* event)
{
    int keyCode = event->key();
    m_textBox.pressKeyDown(keyCode, shiftState(*event));
    if (keyCode != 0)
        QPlainTextEdit::keyPressEvent(event);
}

QSize TextAreaView::sizeHint() const
{
    const int width = fontMetrics().averageCharWidth() * 50;
    return { width,
        fontMetrics().lineSpacing() * AreaLines + 2 * (frameWidth() + static_cast<int>(document()->documentMargin())) };
}

// --- Check box and checked list ---

CheckBoxView::CheckBoxView(CheckBox& checkBox)
    : QCheckBox(toQString(checkBox.caption()))
    , m_checkBox(checkBox)
{
    IndicatorStyle::giveTo(*this);
    setChecked(checkBox.isChecked());
    mirrorCommon(*this, checkBox);
    m_checkBox.setObserver(this);
    connect(this, &QCheckBox::toggled, this, [this](bool checked) {
        if (checked != m_checkBox.isChecked())
            m_checkBox.click();
    });
}

void CheckBoxView::controlChanged(Control& control, Change change)
{
    if (change == Change::Value)
        setChecked(m_checkBox.isChecked());
    else if (change == Change::Caption)
        setText(toQString(m_checkBox.caption()));
    else
        mirrorCommon(*this, control, change);
}

OptionButtonView::OptionButtonView(OptionButton& option)
    : QRadioButton(toQString(option.caption()))
    , m_option(option)
{
    IndicatorStyle::giveTo(*this);
    // Those of one frame belong together, so that the arrow keys go from one to the next.
    setChecked(option.isChosen());
    mirrorCommon(*this, option);
    m_option.setObserver(this);
    connect(this, &QRadioButton::clicked, this, [this] {
        m_option.click();
        mirrorChoice();
    });
}

void OptionButtonView::controlChanged(Control& control, Change change)
{
    if (change == Change::Value)
        mirrorChoice();
    else if (change == Change::Caption)
        setText(toQString(m_option.caption()));
    else
        mirrorCommon(*this, control, change);
}

void OptionButtonView::mirrorChoice()
{
    setAutoExclusive(m_option.isChosen()); // an exclusive button cannot be taken back
    setChecked(m_option.isChosen());
    setAutoExclusive(true);
}

CheckListView::CheckListView(CheckList& list)
    : m_list(list)
{
    IndicatorStyle::giveTo(*this);
    mirrorCommon(*this, list);
    mirrorItems();
    m_list.setObserver(this);
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (m_mirroring)
            return;
        m_list.click(row(item));
        mirrorChecks();
    });
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!m_mirroring)
            m_list.setListIndex(row);
    });
}

void CheckListView::controlChanged(Control& control, Change change)
{
    const QScopedValueRollback guard(m_mirroring, true);
    if (change == Change::Items)
        mirrorItems();
    else if (change == Change::Value)
        mirrorChecks();
    else if (change == Change::Selection)
        setCurrentRow(m_list.listIndex());
    else
        mirrorCommon(*this, control, change);
}

void CheckListView::mirrorItems()
{
    const QScopedValueRollback guard(m_mirroring, true);
    clear();
    for (int i = 0; i < m_list.count(); ++i)
        addItem(toQString(m_list.itemText(i)));
    mirrorChecks();
}

void CheckListView::mirrorChecks()
{
    const QScopedValueRollback guard(m_mirroring, true);
    for (int i = 0; i < count(); ++i)
        item(i)->setCheckState(m_list.isChecked(i) ? Qt::Checked : Qt::Unchecked);
}

// Getting the focus selects nothing by itself; an arrow key does.
void CheckListView::focusInEvent(QFocusEvent* event)
{
    const QScopedValueRollback guard(m_mirroring, true);
    QListWidget::focusInEvent(event);
    setCurrentRow(m_list.listIndex());
}

QSize CheckListView::sizeHint() const
{
    const int rows = std::max(1, count()) * std::max(sizeHintForRow(0), fontMetrics().height());
    return { sizeHintForColumn(0) + fontMetrics().height() * 4, rows + 2 * frameWidth() + fontMetrics().height() / 2 };
}

// --- Arrows ---

UpDownView::UpDownView(UpDown& upDown)
    : m_upDown(upDown)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const int step : { 1, -1 }) {
        auto* const arrow = new QToolButton;
        m_arrows.append(arrow);
        arrow->setArrowType(step > 0 ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAutoRepeat(true);
        arrow->setFocusPolicy(Qt::NoFocus); // the field beside it can be typed in
        arrow->setFixedHeight(fontMetrics().height() * 3 / 4);
        connect(arrow, &QToolButton::clicked, this, [this, step] { m_upDown.step(step); });
        layout->addWidget(arrow);
    }
    setSpokenName({});
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    mirrorCommon(*this, upDown);
    m_upDown.setObserver(this);
}

void UpDownView::controlChanged(Control& control, Change change) { mirrorCommon(*this, control, change); }

void UpDownView::setSpokenName(const QString& name)
{
    m_arrows[0]->setAccessibleName(tr("%1 one more").arg(name).trimmed());
    m_arrows[1]->setAccessibleName(tr("%1 one less").arg(name).trimmed());
}

// --- Date ---

DateView::DateView(mevZvDate& date, QtDesktop& desktop)
    : m_date(date)
    , m_desktop(desktop)
    , m_line(new QLineEdit(toQString(date.value())))
    , m_button(new QToolButton)
{
    mirrorOptions();
    m_line->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
    m_button->setArrowType(Qt::DownArrow);
    setSpokenName({});
    m_button->setToolTip(tr("Calendar"));
    m_button->setFocusPolicy(Qt::NoFocus); // Alt+Down in the field opens it too
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_line);
    layout->addWidget(m_button);
    setFocusPolicy(Qt::StrongFocus); // or the label's key would pass it over
    setFocusProxy(m_line);
    mirrorCommon(*this, date);
    m_date.setObserver(this);
    connect(m_button, &QToolButton::clicked, this, &DateView::openCalendar);
    auto* const key = new QAction(this);
    key->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Down));
    key->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(key);
    connect(key, &QAction::triggered, this, &DateView::openCalendar);
}

void DateView::controlChanged(Control& control, Change change)
{
    if (change == Change::Text)
        m_line->setText(toQString(m_date.value()));
    else if (change == Change::Options)
        mirrorOptions();
    else
        mirrorCommon(*this, control, change);
}

void DateView::mirrorOptions()
{
    m_line->setPlaceholderText(m_date.requiresTime() ? tr("mm/dd/yyyy hh:mm, N") : tr("mm/dd/yyyy, T, T-3"));
}

void DateView::setSpokenName(const QString& name)
{
    m_line->setAccessibleName(name);
    m_button->setAccessibleName(tr("%1 calendar").arg(name).trimmed());
}

bool DateView::commit()
{
    const Text typed = toText(m_line->text());
    if (typed == m_date.value())
        return true;
    const Text expected = m_date.understood(typed, m_desktop.now());
    m_date.enter(typed, m_desktop.now());
    m_line->setText(toQString(m_date.value()));
    return m_date.value() == expected;
}

void DateView::openCalendar()
{
    QMenu popup(this);
    auto* const calendar = new QCalendarWidget;
    calendar->setAccessibleName(m_button->accessibleName());
    if (auto* const days = calendar->findChild<QTableView*>())
        days->setAccessibleName(m_button->accessibleName());
    const std::pair<const char*, QString> arrows[] = { { "qt_calendar_prevmonth", tr("Previous month") },
        { "qt_calendar_nextmonth", tr("Next month") } };
    for (const auto& [object, name] : arrows) {
        if (auto* const arrow = calendar->findChild<QToolButton*>(QLatin1String(object)))
            arrow->setAccessibleName(name);
    }
    if (const auto moment = m_date.moment()) {
        const std::chrono::year_month_day date { std::chrono::floor<std::chrono::days>(*moment) };
        calendar->setSelectedDate(QDate(int(date.year()), int(unsigned(date.month())), int(unsigned(date.day()))));
    }
    auto* const action = new QWidgetAction(&popup);
    action->setDefaultWidget(calendar);
    popup.addAction(action);
    QString picked;
    connect(calendar, &QCalendarWidget::activated, &popup, [&](const QDate& date) {
        picked = date.toString(QStringLiteral("MM/dd/yyyy"));
        popup.close();
    });
    connect(calendar, &QCalendarWidget::clicked, &popup, [&](const QDate& date) {
        picked = date.toString(QStringLiteral("MM/dd/yyyy"));
        popup.close();
    });
    calendar->setFocus();
    popup.exec(m_line->mapToGlobal(QPoint(0, m_line->height())));
    if (picked.isEmpty())
        return;
    m_line->setFocus();
    if (m_date.requiresTime()) {
        // The time that is there stays; without one the user goes on with it.
        const QString time = m_line->text().section(u' ', 1);
        m_line->setText(picked + u' ' + time);
        if (time.isEmpty())
            return;
    } else {
        m_line->setText(picked);
    }
    commit();
}

}
