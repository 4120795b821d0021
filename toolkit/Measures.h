#pragma once

class QFont;
class QWidget;

namespace health {

// Lengths in pixels that follow a widget's font, so that windows grow with the user's text. Cheap to make: ask again
// after a change of the font.
class Measures {
public:
    // Of the widget's own font. The rows of a form use the form's font, whatever the size of a note below a field.
    explicit Measures(const QWidget& widget);
    // For pictures that are also printed. On paper, the font's size must be in pixels.
    explicit Measures(const QFont& font);

    // The larger of the line height and 1.3 times the font's pixel size.
    int em() const { return m_em; }
    // The unit of all distances: 4 pixels at 10 points and 96 dots to the inch.
    int u() const { return units(1); }
    int units(double number) const;
    int ems(double number) const;

    int fieldHeight() const { return ems(1.5); } // of buttons and drop-down lists too
    int optionRow() const { return ems(1.36); }
    int checkRow() const { return ems(1.42); }
    int buttonPadding() const { return units(6); } // both sides together
    int ellipsisWidth() const { return ems(1.9); } // of a button "..."

    int windowMargin() const { return units(4); }
    int formMargin() const { return units(5); }
    int captionGap() const { return units(2.5); } // from a caption to its field
    int ellipsisGap() const { return units(1); } // from a field to its button "..."
    int explanationGap() const { return units(2); } // from a field to the words beside it
    int rowGap() const { return units(1.5); }
    int noteGap() const { return units(1.1); } // below a field's note
    int groupGap() const { return units(4); }

    int hairline() const; // at least a pixel
    int focusFrame() const { return 2 * hairline(); }
    double cornerRadius() const { return 0.24 * m_em; }

private:
    int m_em;
};

// Sizes of text relative to the desktop's font.
namespace TypeSize {
inline constexpr double Name = 1.5;
inline constexpr double StateTitle = 1.22;
inline constexpr double DetailsHeading = 1.12;
inline constexpr double Saved = 0.92; // "Will be saved"
inline constexpr double Note = 0.88;
inline constexpr double ChartNumber = 0.84;
inline constexpr double ChartDate = 0.78;
}

// The font enlarged or reduced.
QFont scaled(const QFont& font, double factor);

// The font in semibold; in bold where the family has no semibold.
QFont semibold(const QFont& font);

}
