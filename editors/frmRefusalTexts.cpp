// What the refusal form says about its entries.
#include "editors/ExplanationTexts.h"
#include "editors/SummaryBuilder.h"
#include "editors/frmRefusal.h"
#include "text/Letters.h"

namespace health {

namespace {

constexpr PieceNumber TypePlace = 4;
constexpr PieceNumber ItemNumberPlace = 5;
constexpr PieceNumber ItemPlace = 6;
constexpr PieceNumber DatePlace = 9;
constexpr PieceNumber CommentPlace = 12;

// "BLOOD PRESSURE (Measurements)", as the list shows it; the type alone if the item has its name or is missing.
Text itemOfType(TextView item, TextView type)
{
    if (item.empty() || item == type)
        return Text(type);
    return Text(item) + L" (" + properCase(type) + L")";
}

}

Explanation frmRefusal::explainEntry(const Control& field)
{
    if (&field == &txtItem)
        return explainLookup(txtItem);
    if (&field != &txtRefComment)
        return {};
    const Text comment = savedComment();
    Explanation length = lengthOf(comment, LongestComment);
    if (comment.size() == 1)
        return besideField(L"1 character: at least 2 are needed", Tone::Error);
    return length;
}

// --- What will be saved ---

Text frmRefusal::savedType() const
{
    const int row = lstRefusals.listIndex();
    return row == -1 || !lstRefusals.isChecked(row) ? Text() : serverType(lstRefusals.itemText(row));
}

SaveSummary frmRefusal::summary()
{
    SummaryBuilder builder(m_stored);
    builder.addDate(L"Date Refused", dateEntered(datRefused), DatePlace);
    const bool isSameType = savedType() == serverType(m_stored[TypePlace]);
    builder.add(L"", itemOfType(pickedName(txtItem), savedType()),
        !isSameType || pickedId(txtItem) != m_stored[ItemNumberPlace]);
    builder.addText(L"Comment", savedComment(), m_stored[CommentPlace]);
    return builder.take();
}

// --- Refusals of the server ---

Control* frmRefusal::fieldOf(TextView refusal)
{
    return fieldNamedIn(refusal,
        { { L"type is not known", &lstRefusals }, { L"refused item", &txtItem }, { L"comment", &txtRefComment },
            { L"date of the refusal", &datRefused }, { L"cannot be in the future", &datRefused },
            { L"outside the years", &datRefused } });
}

}
