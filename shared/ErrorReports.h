#pragma once

#include "shared/Messages.h"
#include "shared/SharedObjects.h"

#include <functional>

namespace health {

// The title of boxes that report a failed call or an unexpected failure.
inline constexpr TextView SystemError = L"System Error";

// The one error trap, and the host's status line, which a report clears.
class ErrorReports {
public:
    // All three must outlive the object.
    ErrorReports(Desktop& desktop, Messages& messages, const SharedObjects& objects)
        : m_desktop(desktop)
        , m_messages(messages)
        , m_objects(objects)
    {
    }

    // Shows the failure that is being handled. Call it inside a catch block only.
    void ReportError(TextView module, TextView procedure);

    // Does the work and reports what it throws; false if it threw.
    bool trap(TextView module, TextView procedure, const std::function<void()>& work);

    // An event handler that does the work under the error trap. The texts must outlive the handler.
    template<typename Work>
    auto trapped(TextView module, TextView procedure, Work work)
    {
        return [this, module, procedure, work = std::move(work)](
                   auto&&... arguments) { trap(module, procedure, [&] { work(arguments...); }); };
    }

    // Shows a text in the host's status line; an empty one clears it.
    void SetStatusText(TextView text);

private:
    void raiseStatus(TextView text);

    Desktop& m_desktop;
    Messages& m_messages;
    const SharedObjects& m_objects;
};

}
