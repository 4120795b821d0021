#pragma once

#include "platform/Text.h"

namespace health {

// A window of the program: its controls are members of the class that derives from it.
class Form {
public:
    explicit Form(TextView name)
        : m_name(name)
    {
    }
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    // The form's own name, as error reports give it.
    const Text& name() const { return m_name; }

private:
    Text m_name;
};

}
