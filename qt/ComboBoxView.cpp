#include "qt/ComboBoxView.h"

#include "qt/QtText.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace health {

ComboBoxView::ComboBoxView(ComboBox& comboBox, QWidget* parent)
    : Mirror(comboBox, parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    mirrorItems();
    connect(this, &QComboBox::activated, this, [this](int index) { m_control.choose(index); });
}

void ComboBoxView::mirror(Change change)
{
    if (change == Change::Items)
        mirrorItems();
    else if (change == Change::Selection)
        setCurrentIndex(m_control.listIndex());
}

void ComboBoxView::mirrorItems()
{
    clear();
    for (int i = 0; i < m_control.count(); ++i)
        addItem(toQString(m_control.itemText(i)));
    setCurrentIndex(m_control.listIndex());
}

void ComboBoxView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        m_control.choose(-1);
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

void ComboBoxView::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

}
