#pragma once

#include "platform/Arrangement.h"
#include "platform/Form.h"
#include "qt/CaptionAxis.h"
#include "qt/FieldNotes.h"
#include "qt/ViewMaker.h"
#include "toolkit/Measures.h"

#include <QHash>
#include <QWidget>

#include <memory>
#include <vector>

class QBoxLayout;
class QGridLayout;
class QLabel;
class QLayout;
class QVBoxLayout;

namespace health {

class FrameView;
class LabelView;
class OptionButtonView;

// Turns a form's arrangement into widgets and layouts, so that forms need no view code.
class FormBuilder {
public:
    // `look` has the font of the form.
    FormBuilder(Form& form, ViewDesktop& desktop, const QWidget& look)
        : m_form(form)
        , m_maker(form, desktop)
        , m_measures(look)
    {
    }

    struct Parts {
        QLayout* body = nullptr;
        QLayout* buttons = nullptr; // null for a form without a row of buttons at its end
    };
    // The whole form as layouts. The caller owns them, and the widgets that get them own their widgets. Throws
    // std::logic_error for an arrangement with a menu.
    Parts build(const Arrangement& arrangement);

    // The widget of each control; frames are not included.
    const QHash<Control*, QWidget*>& widgets() const { return m_widgets; }
    // The widgets of the buttons among them.
    const QHash<const Control*, ButtonView*>& buttons() const { return m_maker.buttons(); }
    // The focusable widgets in the order of the arrangement.
    const QList<QWidget*>& inTabOrder() const { return m_inOrder; }
    const QHash<const Control*, FrameView*>& frames() const { return m_frames; }
    // The texts about the fields, a row each.
    const std::vector<std::unique_ptr<FieldNotes>>& notes() const { return m_notes; }
    const Label* captionOf(const Control& control) const { return m_captions.value(&control); }

    // Captions have changed: lines their columns up again.
    void alignCaptions();

    // Gives up the room that arrangements reserve for explanations, for a screen that is too narrow for it.
    void giveUpRooms();

private:
    void keepRoom(ToneLabel& words, int characters);
    QLayout* buildPart(const Arrangement& part);
    QVBoxLayout* buildColumn(const std::vector<Arrangement>& children);
    QLayout* buildRow(const Arrangement& row);
    QLayout* buildLine(const Arrangement& row);
    void addBeside(QBoxLayout& line, Control& control);
    QLayout* buildTable(const Arrangement& row);
    QLayout* buildDownwards(const Arrangement& part);
    QLayout* buildField(const Arrangement& field);
    QLayout* buildSingle(const Arrangement& single);
    QLayout* buildDetails(const Arrangement& details);
    QLayout* buildHelp(const Arrangement& help);
    QLayout* buildButtons(const Arrangement& row);
    QLayout* buildOnAxis(const Arrangement& part);
    QLayout* buildOnOwnAxis(const Arrangement& part);
    QWidget* buildFrame(const Arrangement& frame);
    void addControls(QBoxLayout& line, const Arrangement& field, FieldNotes& notes);
    QLayout* withNotes(QLayout* line, FieldNotes& notes);
    QGridLayout* axisRow(QWidget* caption);
    QLabel* captionFor(const Arrangement& field);
    QWidget* widgetFor(const Arrangement& single);
    void setWidth(QWidget& widget, int characters) const;
    FieldNotes& newNotes();
    int gapInColumn(const Arrangement& above, const Arrangement& below) const;
    int gapInRow(const Arrangement& left, const Arrangement& right) const;
    void takeAxis();

    static constexpr int ValueColumn = 2; // of a row at the axis; the gap after the caption is a column too

    Form& m_form;
    ViewMaker m_maker;
    Measures m_measures;
    QHash<Control*, QWidget*> m_widgets;
    QHash<const Control*, FrameView*> m_frames;
    QHash<const Control*, const Label*> m_captions;
    QList<QWidget*> m_inOrder;
    std::vector<std::unique_ptr<FieldNotes>> m_notes;
    std::vector<std::unique_ptr<CaptionAxis>> m_axes;
    CaptionAxis* m_axis = nullptr; // of the column that is being built
    FieldNotes* m_sharedNotes = nullptr; // of the row that is being built
    QList<ToneLabel*> m_rooms; // that an arrangement reserves
};

}
