#include "qt/ComboBoxView.h"

#include "qt/ControlViews.h"
#include "qt/QtText.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace health {

ComboBoxView::ComboBoxView(ComboBox& comboBox, QWidget* parent)
    : QComboBox(parent)
    , m_comboBox(comboBox)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    mirrorCommon(*this, comboBox);
    mirrorItems();
    m_comboBox.setObserver(this);
    connect(this, &QComboBox::activated, this, [this](int index) { m_comboBox.choose(index); });
}

ComboBoxView::~ComboBoxView() { m_comboBox.setObserver(nullptr); }

void ComboBoxView::controlChanged(Control& control, Change change)
{
    if (change == Change::Items)
        mirrorItems();
    else if (change == Change::Selection)
        setCurrentIndex(m_comboBox.listIndex());
    else
        mirrorCommon(*this, control, change);
}

void ComboBoxView::mirrorItems()
{
    clear();
    for (int i = 0; i < m_comboBox.count(); ++i)
        addItem(toQString(m_comboBox.itemText(i)));
    setCurrentIndex(m_comboBox.listIndex());
}

void ComboBoxView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        m_comboBox.choose(-1);
        return;
    }
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QComboBox::keyPressEvent(event);
        return;
    }
    wchar_t key = L'\r';
    m_comboBox.pressKey(key);
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
