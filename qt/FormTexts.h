#pragma once

#include "platform/Form.h"

#include <QHash>
#include <QString>

class QWidget;

namespace health {

class FormBuilder;
class HeadingStrip;
class NoticeLine;
class SummaryLine;

// Shows what a form says about itself and its fields.
class FormTexts {
public:
    struct Places {
        HeadingStrip& heading;
        NoticeLine& notice;
        SummaryLine& summary;
    };

    // `changed` is called after each change of a control. All must outlive this object.
    FormTexts(Form& form, FormBuilder& builder, Places places, const std::function<void()>& changed);
    ~FormTexts();
    FormTexts(const FormTexts&) = delete;
    FormTexts& operator=(const FormTexts&) = delete;

    // Asks the form for its texts and changes what differs.
    void refresh();

private:
    void refreshFields();
    void refreshFrames();
    QString firstRefusal() const;
    QString usedKeys() const;

    Form& m_form;
    FormBuilder& m_builder;
    Places m_places;
};

}
