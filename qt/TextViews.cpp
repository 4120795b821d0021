#include "qt/TextViews.h"

#include "qt/ControlViews.h"
#include "qt/QtText.h"

#include <QKeyEvent>

namespace health {

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

}
