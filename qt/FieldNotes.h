#pragma once

#include "platform/Form.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <optional>

class QPushButton;

namespace health {

class ToneLabel;

// The texts about the fields of one row, as the form explains them: beside the row, and in a line below it. A fault
// takes the place of a note, which takes the place of what is allowed. All are the fields' accessible descriptions.
class FieldNotes : public QObject {
public:
    FieldNotes();

    void add(Control& control, QWidget& widget);
    bool isEmpty() const { return m_fields.isEmpty(); }

    // The layouts in which they stand own them.
    ToneLabel& beside() const { return *m_beside; }
    QWidget& below() const { return *m_below; }
    // The line below if the control stands in this row; else null.
    QWidget* belowOf(const Control* control) const;

    struct Refusal {
        const Control* control = nullptr;
        QString text; // why
    };
    // Of the first field whose entry was refused, or will be when the user leaves it.
    std::optional<Refusal> refusal() const;

    // Asks the form for the texts and changes what differs. Returns whether the row shows a suggestion.
    bool refresh(Form& form);
    // The caption of the suggestion's button, with or without an access key.
    void setUseCaption(const QString& caption);
    bool hasFocus(const Form& form) const { return belowOf(form.activeControl()); }

    // Rows side by side: where one keeps a line below, so does the other.
    static void pair(FieldNotes& one, FieldNotes& other);
    // After all rows have been refreshed.
    void followPair();

private:
    struct Field {
        Control* control = nullptr;
        QPointer<QWidget> widget; // takes the keyboard focus
        QString own; // its description without the form's texts
        QString described; // the whole, as set last
        Explanation explanation;
    };
    struct Line {
        QString text;
        Tone tone = Tone::Quiet;
        bool isNews = false; // to be spoken when it appears
    };

    Line lineFor(const Control* active) const;
    void showSuggestion();
    void describe(Field& field) const;

    QList<Field> m_fields;
    QList<FieldNotes*> m_pairs;
    ToneLabel* m_beside;
    QWidget* m_below;
    ToneLabel* m_line;
    ToneLabel* m_suggestion;
    QPushButton* m_use;
    std::function<void()> m_suggested; // enters the suggested value
};

}
