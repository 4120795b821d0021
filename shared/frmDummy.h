#pragma once

#include "platform/Form.h"

namespace health {

// An empty form; loading it once initializes the front end before the first real form.
class frmDummy : public Form {
public:
    frmDummy()
        : Form(L"frmDummy")
    {
    }
};

}
