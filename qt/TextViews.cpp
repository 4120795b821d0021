#include "qt/TextViews.h"

#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QKeyEvent>

namespace health {

using namespace Qt::StringLiterals;

TextBoxView::TextBoxView(TextBox& textBox)
    : Mirror(textBox, toQString(textBox.text()))
{
    setMouseTracking(true);
    setMaxLength(TextBox::LongestText);
    setSample(QString(textBox.columns(), u'0'));
    if (textBox.isAllSelected())
        selectAll();
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { m_control.edit(toText(text)); });
}

void TextBoxView::mirror(Change change)
{
    if (change == Change::AllSelected)
        selectAll();
    const QString text = toQString(m_control.text());
    if (change != Change::Entry || text == QLineEdit::text())
        return;
    setText(text);
    // Cursor to the end while typing; otherwise show the start of long texts.
    setCursorPosition(hasFocus() ? static_cast<int>(text.size()) : 0);
}

void TextBoxView::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QString text = event->text();
    const bool printable = !enter && text.size() == 1 && text[0].isPrint()
        && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (enter || printable) {
        if (m_control.pressKey(enter ? EnterKey : static_cast<wchar_t>(text[0].unicode())) == 0)
            return;
    }
    if (enter)
        event->ignore(); // for the form's default button
    else
        EntryLine::keyPressEvent(event);
}

void TextBoxView::mouseMoveEvent(QMouseEvent* event)
{
    health::raise(m_control.MouseMove);
    EntryLine::mouseMoveEvent(event);
}

// MouseMove sets the tool tip, which explains short labels to screen readers and must be present on focus.
void TextBoxView::focusInEvent(QFocusEvent* event)
{
    health::raise(m_control.MouseMove);
    EntryLine::focusInEvent(event);
}

namespace {

QString withLineFeeds(const Text& text) { return toQString(text).remove(u'\r'); }

// See TextBox::pressKeyDown.
int shiftState(const QKeyEvent& event)
{
    const auto held = event.modifiers();
    return (held & Qt::ShiftModifier ? 1 : 0) + (held & Qt::ControlModifier ? 2 : 0) + (held & Qt::AltModifier ? 4 : 0);
}

constexpr int AreaLines = 4;

}

TextAreaView::TextAreaView(TextBox& textBox)
    : Mirror(textBox)
{
    ControlStyle::giveTo(*this);
    alignText();
    setPlainText(withLineFeeds(textBox.text()));
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_control.setWindow(static_cast<QPlainTextEdit*>(this));
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (toPlainText().size() > TextBox::LongestText)
            undo();
        if (toPlainText() != withLineFeeds(m_control.text()))
            m_control.edit(toText(toPlainText().replace(u'\n', "\r\n"_L1)));
    });
}

TextAreaView::~TextAreaView() { m_control.setWindow(nullptr); }

// The first letter stands where it does in a line.
void TextAreaView::alignText() { document()->setDocumentMargin(Measures(*this).units(1.5) - frameWidth()); }

void TextAreaView::changeEvent(QEvent* event)
{
    FocusFramed::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        alignText();
}

void TextAreaView::mirror(Change change)
{
    if (change == Change::AllSelected)
        selectAll();
    if (change == Change::Entry && toPlainText() != withLineFeeds(m_control.text()))
        setPlainText(withLineFeeds(m_control.text()));
}

void TextAreaView::keyPressEvent(QKeyEvent* event)
{
    if (isStrayAccessKey(*event))
        return event->ignore();
    int keyCode = event->key();
    m_control.pressKeyDown(keyCode, shiftState(*event));
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
