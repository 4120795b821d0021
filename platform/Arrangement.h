#pragma once

#include "platform/controls/Button.h"

#include <vector>

namespace health {

// The layout of a form, as a tree that the renderer turns into Qt layouts. The tab order follows the tree. All fields
// of a column share one axis: their labels end left of it, their values begin right of it.
struct Arrangement {
    enum class Kind {
        Nothing,
        Column, // children below each other
        Row, // children side by side; columns among them share their rows
        Frame, // `control` (a mevContainer) around the only child, its caption as a heading
        Field, // `label` beside its controls, the children
        Single, // `control`, `characters` wide
        Buttons, // a row of children, aligned to the right
        Grid, // children of the kind Field, below each other
        Line, // a separator between groups
        Space, // between groups
        Stretch, // in Buttons: the children before it stand left
        OnAxis, // the only child begins where the values begin
        OwnAxis, // the only child does not share the axis of the column around it
        Help, // `control`, a label with a help text; with `label`, it begins below what follows the label's colon
        Downwards, // children in two columns, read downwards
        Beside, // in Field: keeps room for an explanation of so many `characters`
    };

    Kind kind = Kind::Nothing;
    Control* control = nullptr;
    Label* label = nullptr;
    std::vector<Arrangement> children;
    int characters = 0; // 0: as wide as its content

    Arrangement() = default;
    Arrangement(Control& single, int itsCharacters = 0)
        : kind(Kind::Single)
        , control(&single)
        , characters(itsCharacters)
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
inline Arrangement space() { return { Arrangement::Kind::Space, {} }; }
inline Arrangement stretch() { return { Arrangement::Kind::Stretch, {} }; }
inline Arrangement frame(Control& container, Arrangement child)
{
    return { Arrangement::Kind::Frame, { std::move(child) }, &container };
}
inline Arrangement field(Label& label, std::vector<Arrangement> controls)
{
    return { Arrangement::Kind::Field, std::move(controls), nullptr, &label };
}
inline Arrangement onAxis(Arrangement child) { return { Arrangement::Kind::OnAxis, { std::move(child) } }; }
inline Arrangement ownAxis(Arrangement child) { return { Arrangement::Kind::OwnAxis, { std::move(child) } }; }
inline Arrangement help(Label& text) { return { Arrangement::Kind::Help, {}, &text }; }
inline Arrangement help(Label& text, Label& above) { return { Arrangement::Kind::Help, {}, &text, &above }; }
inline Arrangement downwards(std::vector<Arrangement> children)
{
    return { Arrangement::Kind::Downwards, std::move(children) };
}
// A control of a width in characters.
inline Arrangement wide(Control& control, int characters) { return { control, characters }; }
// In a row: what the form says beside the control, at the right edge.
inline Arrangement beside(Control& control) { return { Arrangement::Kind::Beside, {}, &control }; }
inline Arrangement beside(int characters)
{
    Arrangement room { Arrangement::Kind::Beside, {} };
    room.characters = characters;
    return room;
}

}
