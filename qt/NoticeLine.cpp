#include "qt/NoticeLine.h"

#include "qt/PressedAtOnce.h"
#include "qt/ToneLabel.h"
#include "toolkit/Announcer.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace health {

NoticeLine::NoticeLine(std::function<void()> follow)
    : m_text(new ToneLabel(TypeSize::Saved))
    , m_button(new PressedAtOnce<QPushButton>)
{
    m_button->setFont(scaled(font(), TypeSize::Saved));
    m_button->setAutoDefault(false);
    m_button->setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the field
    connect(m_button, &QPushButton::clicked, this, std::move(follow));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Measures(*this).explanationGap());
    layout->addWidget(m_text);
    layout->addWidget(m_button);
    layout->addStretch();
    hide();
}

void NoticeLine::show(const FormNotice& notice, const QString& usedKeys)
{
    const QString text = toQString(notice.text);
    if (text != m_text->text())
        announce(*this, text);
    m_text->say(text, Tone::Quiet);
    const QString caption = toQString(notice.action);
    QString shown = m_button->text();
    if (shown.remove(u'&') != QString(caption).remove(u'&'))
        m_button->setText(withFreeKey(caption, usedKeys));
    m_button->setVisible(!caption.isEmpty());
    setVisible(!notice.text.empty());
}

QString withFreeKey(const QString& caption, const QString& usedKeys)
{
    const QString plain = QString(caption).remove(u'&');
    const auto isFree = [&](QChar letter) { return letter.isLetter() && !usedKeys.contains(letter.toLower()); };
    const qsizetype chosen = caption.indexOf(u'&');
    if (chosen >= 0 && chosen < plain.size() && isFree(plain[chosen]))
        return caption;
    for (qsizetype i = 0; i < plain.size(); ++i) {
        if (isFree(plain[i]))
            return QString(plain).insert(i, u'&');
    }
    return plain;
}

}
