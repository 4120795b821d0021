#pragma once

#include "platform/EntryTexts.h"
#include "platform/Form.h"
#include "platform/controls/Grid.h"

namespace health {

// Compares the entries of an open form with its record, which has changed meanwhile: one row for each field that
// differs.
class frmCompare final : public Form {
public:
    // The heading of that form. The fields as the form read them, as they are stored now, and as the user has entered
    // them; the same captions in all three.
    frmCompare(FormHeading heading, const std::vector<EntryText>& before, const std::vector<EntryText>& theirs,
        const std::vector<EntryText>& yours);

    Arrangement arrangement() override;
    FormHeading heading() override { return m_heading; }

    Grid fg; // field, before, theirs, yours
    Button cmdClose;

private:
    const FormHeading m_heading;
};

}
