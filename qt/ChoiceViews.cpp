#include "qt/ChoiceViews.h"

#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"
#include "toolkit/SpokenItems.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace health {

CheckBoxView::CheckBoxView(CheckBox& checkBox)
    : Mirror(checkBox, toQString(checkBox.caption()))
{
    ControlStyle::giveTo(*this);
    setChecked(checkBox.isChecked());
    connect(this, &QCheckBox::toggled, this, [this](bool checked) {
        if (checked != m_control.isChecked())
            m_control.click();
        setChecked(m_control.isChecked());
    });
}

void CheckBoxView::mirror(Change change)
{
    if (change == Change::Value)
        setChecked(m_control.isChecked());
    else if (change == Change::Caption)
        setText(toQString(m_control.caption()));
}

OptionButtonView::OptionButtonView(OptionButton& option)
    : Mirror(option, toQString(option.caption()))
{
    ControlStyle::giveTo(*this);
    // Auto-exclusive within its frame, so that the arrow keys move between the options.
    setChecked(option.isChosen());
    connect(this, &QRadioButton::clicked, this, [this] {
        m_control.click();
        mirrorChoice();
    });
}

void OptionButtonView::mirror(Change change)
{
    if (change == Change::Value)
        mirrorChoice();
    else if (change == Change::Caption)
        setText(toQString(m_control.caption()));
}

void OptionButtonView::mirrorChoice()
{
    setAutoExclusive(m_control.isChosen()); // Qt does not let an exclusive button be unchecked
    setChecked(m_control.isChosen());
    setAutoExclusive(true);
}

CheckListView::CheckListView(CheckList& list)
    : Mirror(list)
{
    ControlStyle::giveTo(*this);
    setHorizontalScrollMode(ScrollPerPixel);
    new SpokenItems(*this);
    mirrorItems();
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (m_mirroring)
            return;
        m_control.click(row(item));
        mirrorChecks();
    });
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!m_mirroring)
            m_control.choose(row);
        update(); // the frame shows the focus if no row does
    });
}

void CheckListView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->ignore(); // for the form's default button
    else
        QListWidget::keyPressEvent(event);
}

// A click on a row's text checks the row; only a click on the box itself unchecks it.
void CheckListView::mouseReleaseEvent(QMouseEvent* event)
{
    const QModelIndex under = indexAt(event->position().toPoint());
    const bool checkedBefore = under.isValid() && m_control.isChecked(under.row());
    const bool onRow = event->button() == Qt::LeftButton && under.isValid() && under.row() == currentRow();
    QListWidget::mouseReleaseEvent(event);
    if (onRow && !checkedBefore && !m_control.isChecked(under.row()))
        m_control.click(under.row());
}

void CheckListView::mirror(Change change)
{
    const QScopedValueRollback guard(m_mirroring, true);
    if (change == Change::Items)
        mirrorItems();
    else if (change == Change::Value)
        mirrorChecks();
    else if (change == Change::Selection)
        setCurrentRow(m_control.listIndex());
}

// Keeps the boxes apart, so that users do not hit the wrong one.
int CheckListView::rowHeight() const { return Measures(*this).checkRow(); }

void CheckListView::mirrorItems()
{
    const QScopedValueRollback guard(m_mirroring, true);
    clear();
    const Measures measures(*this);
    const QFontMetrics checkedText(semibold(font()));
    for (int i = 0; i < m_control.count(); ++i) {
        addItem(toQString(m_control.itemText(i)));
        const int text = checkedText.horizontalAdvance(item(i)->text());
        item(i)->setSizeHint({ text + measures.units(6.5) + measures.em(), rowHeight() });
    }
    setCurrentRow(m_control.listIndex());
    mirrorChecks();
}

void CheckListView::mirrorChecks()
{
    const QScopedValueRollback guard(m_mirroring, true);
    for (int i = 0; i < count(); ++i)
        item(i)->setCheckState(m_control.isChecked(i) ? Qt::Checked : Qt::Unchecked);
}

void CheckListView::changeEvent(QEvent* event)
{
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        mirrorItems();
}

// Unlike Qt's list, does not select a row on focus; an arrow key does.
void CheckListView::focusInEvent(QFocusEvent* event)
{
    const QScopedValueRollback guard(m_mirroring, true);
    QListWidget::focusInEvent(event);
    setCurrentRow(m_control.listIndex());
}

QSize CheckListView::sizeHint() const
{
    const int rows = std::max(1, count()) * std::max(sizeHintForRow(0), rowHeight());
    return { sizeHintForColumn(0) + fontMetrics().height() * 4, rows + 2 * frameWidth() + fontMetrics().height() / 2 };
}

bool isPassedOver(const QWidget& widget)
{
    const auto* const option = qobject_cast<const QRadioButton*>(&widget);
    if (!option || option->isChecked())
        return false;
    const auto group = widget.parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(group.begin(), group.end(), [](const QRadioButton* other) { return other->isChecked(); });
}

}
