#include "qt/ChoiceViews.h"

#include "qt/ControlViews.h"
#include "qt/IndicatorStyle.h"
#include "qt/QtText.h"

#include <QScopedValueRollback>

namespace health {

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

}
