#include "qt/ComboBoxView.h"

#include "qt/FieldButton.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"
#include "toolkit/WheelGuard.h"

#include <QKeyEvent>
#include <QStyleOptionComboBox>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

ComboBoxView::ComboBoxView(ComboBox& comboBox, QWidget* parent)
    : Mirror(comboBox, parent)
{
    ControlStyle::giveTo(*this);
    installEventFilter(new WheelGuard(this));
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    if (comboBox.isEmptiable())
        makeClearButton();
    mirrorItems();
    connect(this, &QComboBox::activated, this, &ComboBoxView::choose);
}

// A small cross beside the arrow; Delete does the same.
void ComboBoxView::makeClearButton()
{
    m_clear = new FieldButton(Symbol::Cross, this);
    m_clear->setToolTip(u"Clear this answer (Delete)"_s);
    m_clear->setAccessibleName(u"Clear this answer"_s);
    connect(m_clear, &FieldButton::clicked, this, [this] {
        setFocus(Qt::OtherFocusReason);
        if (hasFocus())
            choose(-1);
    });
    setAccessibleDescription(u"Delete clears the answer."_s);
}

void ComboBoxView::setSpokenName(const QString& name)
{
    setAccessibleName(name);
    m_isNamed = true;
    describe();
}

// Some screen readers speak the caption beside the list instead of the answer, so the answer is described too.
void ComboBoxView::describe()
{
    if (!m_isNamed)
        return;
    QString text = currentText();
    if (m_clear && !text.isEmpty())
        text += u". Delete clears the answer."_s;
    if (text != accessibleDescription())
        setAccessibleDescription(text);
}

// Leaves room for the cross beside the longest answer.
QSize ComboBoxView::sizeHint() const { return QComboBox::sizeHint() + QSize(m_clear ? Measures(*this).em() : 0, 0); }

QSize ComboBoxView::minimumSizeHint() const
{
    return QComboBox::minimumSizeHint() + QSize(m_clear ? Measures(*this).em() : 0, 0);
}

void ComboBoxView::choose(int index)
{
    m_control.choose(index);
    mirrorChoice();
}

void ComboBoxView::resizeEvent(QResizeEvent* event)
{
    QComboBox::resizeEvent(event);
    if (!m_clear)
        return;
    const int side = std::min(height() - 4, Measures(*this).em());
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect arrow = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
    m_clear->setGeometry(arrow.left() - side, (height() - side) / 2, side, side);
}

void ComboBoxView::mirror(Change change)
{
    if (change == Change::Items)
        mirrorItems();
    else if (change == Change::Selection)
        mirrorChoice();
}

void ComboBoxView::mirrorItems()
{
    clear();
    for (int i = 0; i < m_control.count(); ++i)
        addItem(toQString(m_control.itemText(i)));
    mirrorChoice();
}

void ComboBoxView::mirrorChoice()
{
    setCurrentIndex(m_control.listIndex());
    if (m_clear)
        m_clear->setVisible(m_control.listIndex() != -1);
    describe();
}

void ComboBoxView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        choose(-1);
        return;
    }
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QComboBox::keyPressEvent(event);
        return;
    }
    wchar_t key = EnterKey;
    m_control.pressKey(key);
    if (key != 0)
        event->ignore(); // for the form's default button
}

}
