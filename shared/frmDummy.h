#pragma once

#include "platform/Form.h"

namespace health {

// A form without contents; loading it once makes the front end ready before the first real one.
class frmDummy : public Form {
public:
    frmDummy()
        : Form(L"frmDummy")
    {
    }
};

}
