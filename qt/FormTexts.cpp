#include "qt/FormTexts.h"

#include "qt/FieldViews.h"
#include "qt/FormBuilder.h"
#include "qt/HeadingStrip.h"
#include "qt/NoticeLine.h"
#include "qt/SummaryLine.h"
#include "toolkit/QtText.h"

#include <QAbstractButton>

#include <exception>

namespace health {

using namespace Qt::StringLiterals;

namespace {

// The letter after "&" in lower case; null without one.
QChar accessKey(const QString& caption)
{
    const qsizetype at = caption.indexOf(u'&');
    return at >= 0 && at + 1 < caption.size() ? caption[at + 1].toLower() : QChar();
}

}

FormTexts::FormTexts(Form& form, FormBuilder& builder, Places places, const std::function<void()>& changed)
    : m_form(form)
    , m_builder(builder)
    , m_places(places)
{
    for (auto entry = builder.widgets().begin(); entry != builder.widgets().end(); ++entry)
        entry.key()->setWatcher(changed);
}

FormTexts::~FormTexts()
{
    for (auto entry = m_builder.widgets().begin(); entry != m_builder.widgets().end(); ++entry)
        entry.key()->setWatcher({});
}

void FormTexts::refresh()
{
    m_places.heading.show(m_form.heading());
    refreshFields();
    refreshFrames();
    m_builder.alignCaptions();
    m_places.summary.show(m_form.summary(), firstRefusal());
    m_places.notice.show(m_form.notice(), usedKeys());
}

void FormTexts::refreshFields()
{
    QList<FieldNotes*> suggesting;
    for (const auto& notes : m_builder.notes()) {
        if (notes->refresh(m_form))
            suggesting.append(notes.get());
    }
    for (const auto& notes : m_builder.notes())
        notes->followPair();
    // Only one button gets an access key: that of the focused field, else the first one.
    FieldNotes* keyed = suggesting.value(0);
    for (FieldNotes* const notes : suggesting)
        keyed = notes->hasFocus(m_form) ? notes : keyed;
    const QString withKey = withFreeKey(u"&Use"_s, usedKeys());
    for (FieldNotes* const notes : suggesting)
        notes->setUseCaption(notes == keyed ? withKey : u"Use"_s);
}

void FormTexts::refreshFrames()
{
    for (auto entry = m_builder.frames().begin(); entry != m_builder.frames().end(); ++entry)
        entry.value()->setAside(toQString(m_form.explain(*entry.key()).beside));
}

// "CAPTION: message" of the first field with a refused entry, in the order of the form.
QString FormTexts::firstRefusal() const
{
    for (const auto& notes : m_builder.notes()) {
        const auto refusal = notes->refusal();
        if (!refusal)
            continue;
        const Label* const label = m_builder.captionOf(*refusal->control);
        const QString caption = label ? toQString(label->caption()).remove(u'&') : QString();
        return caption.isEmpty() ? refusal->text : caption + u": "_s + refusal->text;
    }
    return {};
}

QString FormTexts::usedKeys() const
{
    QString keys;
    for (auto entry = m_builder.widgets().begin(); entry != m_builder.widgets().end(); ++entry) {
        if (const Label* const label = m_builder.captionOf(*entry.key()))
            keys += accessKey(toQString(label->caption()));
        keys += accessKey(entry.value()->property("text").toString());
    }
    for (const FrameView* const frame : m_builder.frames())
        keys += accessKey(frame->title());
    return keys;
}

}
