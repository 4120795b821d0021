#pragma once

#include "platform/Form.h"
#include "qt/FormBuilder.h"

#include <QDialog>

#include <memory>

namespace health {

class BodyArea;
class FormTexts;
class HeadingStrip;
class NoticeLine;
class SummaryLine;
class ViewDesktop;

// Shows a form as a modal window. Form and window agree on the focus: the window reports every move of the keyboard
// focus to the form and carries out the form's decision.
class FormDialog : public QDialog, public FormObserver {
public:
    FormDialog(Form& form, ViewDesktop& desktop, QWidget* parent);
    ~FormDialog() override;

    // Runs until the form is closed.
    void run();
    // The upper edge of the row of buttons, in pixels from the window's top.
    int topOfButtons() const;
    Form& form() const { return m_form; }
    // The widget of each control.
    const QHash<Control*, QWidget*>& widgets() const { return m_builder.widgets(); }
    // The user returns from another form.
    void activateAgain();

    void captionChanged(Form& form) override;
    void focusMoved(Form& form) override;
    void focusSettled(Form& form) override;
    void defaultChanged(Form& form) override;
    void textsChanged(Form& form) override;
    void closed(Form& form) override;

    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void build();
    QWidget* buildFoot(QLayout* buttons);
    void watchControls();
    void findUnlabelled();
    void nameUnlabelled();
    void setOrder();
    // Changes of the form are shown together in the event loop's next turn.
    void askRefresh();
    void refresh();
    int neededWidth() const;
    void fit();
    void place();
    void grow();
    void makeRoomForList(bool isOpen);
    static void settleLayouts();
    int neededHeight(int width) const;
    QRect room() const;
    void showFocused();
    void activate();
    void focusFirst();
    QWidget* activeWidget() const;
    void giveFocus(QWidget& widget);
    void followFocus(Control& control);
    void speakFocus();
    static bool isRefusedPress(const QWidget& widget);

    Form& m_form;
    FormBuilder m_builder;
    QHash<QObject*, Control*> m_controls; // by the widget that takes the keyboard focus
    QList<QWidget*> m_unlabelled;
    HeadingStrip* m_heading;
    BodyArea* m_body = nullptr;
    QWidget* m_foot = nullptr; // notice, summary, buttons
    NoticeLine* m_notice;
    SummaryLine* m_summary;
    std::unique_ptr<FormTexts> m_texts;
    bool m_started = false;
    bool m_isFitted = false; // to the loaded form; from now on only its height changes
    int m_closedHeight = 0; // before the list of what will be saved was opened
    bool m_refreshAsked = false;
};

}
