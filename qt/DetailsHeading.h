#pragma once

#include <QAbstractButton>
#include <QLabel>

namespace health {

// What the heading of the details says.
struct HeadingTexts {
    QString kind;
    QString date;
    bool isOfCurrentVisit = false;
    QStringList remarks; // quiet, such as the place of the visit
    QStringList facts; // caption and value in turn, such as "Change in Status", "Decline"

    bool operator==(const HeadingTexts&) const = default;
};

// One paragraph that wraps; the user can select its text.
class DetailsHeading : public QLabel {
public:
    explicit DetailsHeading(QWidget* parent);

    void say(const HeadingTexts& texts);
    // Says quietly what to do.
    void hint(const QString& text);
    // What it shows, without formats.
    const QString& plainText() const { return m_plain; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void typeset();
    void show(const QString& html, const QString& plain);

    HeadingTexts m_texts;
    QString m_hint;
    QString m_plain;
};

// The arrow that folds the details.
class FoldButton : public QAbstractButton {
public:
    explicit FoldButton(QWidget* parent);

    void setFolded(bool folded);
    bool isFolded() const { return m_folded; }
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_folded = false;
};

}
