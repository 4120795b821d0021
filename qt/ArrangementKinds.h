// What a part of an arrangement is, for its distances and its notes.
#pragma once

#include "platform/Arrangement.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/UpDown.h"

namespace health {

// The part's control if it is a single one of this kind; else null.
template<typename Mirrored>
const Mirrored* controlOf(const Arrangement& part)
{
    return part.kind == Arrangement::Kind::Single ? dynamic_cast<const Mirrored*>(part.control) : nullptr;
}

inline bool isOption(const Arrangement& part)
{
    if (part.kind == Arrangement::Kind::Row || part.kind == Arrangement::Kind::Downwards)
        return !part.children.empty() && isOption(part.children.front());
    return controlOf<OptionButton>(part);
}

inline bool isBlock(const Arrangement& part)
{
    return part.kind == Arrangement::Kind::Column || part.kind == Arrangement::Kind::Frame
        || part.kind == Arrangement::Kind::Grid;
}

inline bool isEllipsis(const Arrangement& part)
{
    const auto* const button = controlOf<Button>(part);
    return button && button->caption() == L"...";
}

inline bool takesNotes(const Control& control)
{
    return !dynamic_cast<const Button*>(&control) && !dynamic_cast<const Label*>(&control)
        && !dynamic_cast<const UpDown*>(&control) && !dynamic_cast<const Image*>(&control);
}

// A layout without margins and gaps.
template<typename Layout>
Layout* bare()
{
    auto* const layout = new Layout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

}
