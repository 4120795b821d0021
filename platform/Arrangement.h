#pragma once

#include "platform/controls/Button.h"

#include <vector>

namespace health {

// The layout of a form, as a tree that the renderer turns into Qt layouts. The tab order follows the tree.
struct Arrangement {
    enum class Kind {
        Nothing,
        Column, // children below each other
        Row, // children side by side
        Frame, // `control` (a mevContainer) around the only child
        Field, // `label` beside its controls, the children
        Single, // `control`
        Buttons, // a row of children, aligned to the right
        Grid, // children of the kind Field, labels in one column
        Line, // a separator
    };

    Kind kind = Kind::Nothing;
    Control* control = nullptr;
    Label* label = nullptr;
    std::vector<Arrangement> children;

    Arrangement() = default;
    Arrangement(Control& single)
        : kind(Kind::Single)
        , control(&single)
    {
    }
    Arrangement(Kind whole, std::vector<Arrangement> parts, Control* itsControl = nullptr, Label* itsLabel = nullptr)
        : kind(whole)
        , control(itsControl)
        , label(itsLabel)
        , children(std::move(parts))
    {
    }
};

inline Arrangement column(std::vector<Arrangement> children)
{
    return { Arrangement::Kind::Column, std::move(children) };
}
inline Arrangement row(std::vector<Arrangement> children) { return { Arrangement::Kind::Row, std::move(children) }; }
inline Arrangement buttons(std::vector<Arrangement> children)
{
    return { Arrangement::Kind::Buttons, std::move(children) };
}
inline Arrangement fields(std::vector<Arrangement> children)
{
    return { Arrangement::Kind::Grid, std::move(children) };
}
inline Arrangement line() { return { Arrangement::Kind::Line, {} }; }
inline Arrangement frame(Control& container, Arrangement child)
{
    return { Arrangement::Kind::Frame, { std::move(child) }, &container };
}
inline Arrangement field(Label& label, std::vector<Arrangement> controls)
{
    return { Arrangement::Kind::Field, std::move(controls), nullptr, &label };
}

}
